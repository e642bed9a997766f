// SPDX-License-Identifier: GPL-3.0-or-later
#include "RenderOptions.h"

#include "engine/ParameterLayout.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iostream>

namespace quorel
{

namespace
{
constexpr int usageError = 2;

juce::File absoluteFile(const std::string& path)
{
    return path.empty()
               ? juce::File()
               : juce::File::getCurrentWorkingDirectory().getChildFile(juce::String::fromUTF8(path.c_str()));
}

/** A finite decimal number and nothing else, whatever the user's language. */
std::optional<double> parseNumber(const juce::String& text)
{
    const auto digits = text.trim().toStdString();
    const auto* last = digits.data() + digits.size();
    double number = 0.0;
    const auto [end, error] = std::from_chars(digits.data(), last, number);
    if (error != std::errc() || end != last || !std::isfinite(number))
        return {};
    return number;
}

std::optional<double> parseQuotient(const juce::String& text)
{
    if (!text.containsChar('/'))
        return parseNumber(text);
    const auto numerator = parseNumber(text.upToFirstOccurrenceOf("/", false, false));
    const auto denominator = parseNumber(text.fromFirstOccurrenceOf("/", false, false));
    if (!numerator.has_value() || !denominator.has_value() || *denominator <= 0.0)
        return {};
    return *numerator / *denominator;
}

/** The arguments after the program's name, with each "@FILE" replaced by the lines of that file. */
std::vector<std::string> expandArgumentFiles(int argc, const char* const* argv)
{
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i)
    {
        const std::string argument = argv[i];
        if (argument.size() < 2 || argument[0] != '@')
        {
            arguments.push_back(argument);
            continue;
        }
        const auto file = absoluteFile(argument.substr(1));
        if (!file.existsAsFile())
            throw CLI::FileError("cannot read " + file.getFullPathName().toStdString());
        juce::StringArray lines;
        file.readLines(lines);
        for (const auto& line : lines)
            if (line.trim().isNotEmpty() && !line.trimStart().startsWithChar('#'))
                arguments.push_back(line.trim().toStdString());
    }
    return arguments;
}

/** CLI11's check of an option's own syntax. */
template <typename Choice>
std::string problemOf(juce::Result (*parse)(const juce::String&, Choice&), const std::string& text)
{
    Choice ignored;
    return parse(juce::String::fromUTF8(text.c_str()), ignored).getErrorMessage().toStdString();
}

template <typename Choice>
std::vector<Choice> parseAll(juce::Result (*parse)(const juce::String&, Choice&),
                             const std::vector<std::string>& texts)
{
    std::vector<Choice> choices(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i)
        parse(juce::String::fromUTF8(texts[i].c_str()), choices[i]);
    return choices;
}

/** What no option can check by itself; empty if all is well. */
juce::String problemOf(const RenderOptions& options)
{
    if (options.midiFile == juce::File())
    {
        if (options.output != juce::File())
            return "nothing to render: no MIDI file given";
        return options.listInstruments || options.savePreset != juce::File()
                   ? juce::String()
                   : "no MIDI file given; try --help";
    }
    if (options.output == juce::File())
        return "no output given: use -o FILE.wav or -o FILE.flac";
    if (!options.output.hasFileExtension("wav;flac"))
        return "the output must end in .wav or .flac: " + options.output.getFullPathName();
    if (options.output.hasFileExtension("flac") && options.bits == 32)
        return "FLAC holds 16 or 24 bits, not 32";
    return {};
}
} // namespace

juce::Result parseLayerChoice(const juce::String& text, LayerChoice& choice)
{
    const auto number = text.upToFirstOccurrenceOf("=", false, false).trim();
    const auto rest = text.fromFirstOccurrenceOf("=", false, false);
    choice.layer = number.getIntValue() - 1;
    choice.instrument = rest.upToFirstOccurrenceOf(":", false, false).trim();
    choice.program = rest.fromFirstOccurrenceOf(":", false, false).trim();
    if (number.length() != 1 || choice.layer < 0 || choice.layer >= numLayers || choice.instrument.isEmpty())
        return juce::Result::fail(
            "a layer is given as N=INSTRUMENT or N=INSTRUMENT:PROGRAM with N from 1 to " +
            juce::String(numLayers) + ", not as \"" + text + "\"");
    return juce::Result::ok();
}

juce::Result parseParameterChoice(const juce::String& text, ParameterChoice& choice)
{
    choice.parameter = text.upToLastOccurrenceOf("=", false, false).trim();
    const auto value = parseQuotient(text.fromLastOccurrenceOf("=", false, false));
    if (!text.containsChar('=') || choice.parameter.isEmpty() || !value.has_value() || !(*value >= 0.0) ||
        !(*value <= 1.0))
        return juce::Result::fail("a parameter is given as NAME=VALUE with a value from 0 to 1, not as \"" +
                                  text + "\"");
    choice.value = static_cast<float>(*value);
    return juce::Result::ok();
}

bool parseCommandLine(int argc, const char* const* argv, RenderOptions& options, int& exitCode)
{
    CLI::App app{"Renders a Standard MIDI File through a Quorel sound.", "quorel-render"};
    std::string midiFile, output, preset, savePreset, prefix;
    std::vector<std::string> layers, parameters;
    double tempo = 0.0;

    app.add_option("midi", midiFile, "Standard MIDI File, type 0 or 1");
    app.add_option("-o,--output", output,
                   "Sound file to write; its ending, .wav or .flac, chooses the format");
    app.add_option("--preset", preset,
                   "Sound to play: a state as a preset file or a host's project holds it");
    app.add_option("--layer", layers,
                   "Instrument of a layer: N=INSTRUMENT or N=INSTRUMENT:PROGRAM, N from 1, the\n"
                   "program by number from 1 or by name; may be repeated")
        ->allow_extra_args(false)
        ->check([](const std::string& text) { return problemOf(parseLayerChoice, text); });
    app.add_option("--param", parameters,
                   "Parameter value: NAME=VALUE or INDEX=VALUE, the value from 0 to 1 or a\n"
                   "quotient such as 60.5/127; may be repeated, applied in order")
        ->allow_extra_args(false)
        ->check([](const std::string& text) { return problemOf(parseParameterChoice, text); });
    app.add_option("--save-preset", savePreset, "Writes the sound to this file");
    app.add_option("--rate", options.rate, "Sample rate in Hz")
        ->check(CLI::Range(8000.0, 384000.0))
        ->capture_default_str();
    app.add_option("--block", options.block, "Samples to a block")
        ->check(CLI::Range(1, 65536))
        ->capture_default_str();
    auto* tempoOption =
        app.add_option("--tempo", tempo, "Quarter notes a minute, in place of the file's own tempi")
            ->check(CLI::Range(1.0, 1000.0));
    app.add_option("--tail", options.tail, "Seconds to render after the song's end")
        ->check(CLI::Range(0.0, 3600.0))
        ->capture_default_str();
    app.add_option("--bits", options.bits, "Bits to a sample: 16, 24, or 32 (floating point, WAV alone)")
        ->check(CLI::IsMember({16, 24, 32}))
        ->capture_default_str();
    app.add_option("--prefix", prefix, "Uses the settings below this folder instead of the user's own");
    app.add_flag("--list-instruments", options.listInstruments,
                 "Lists the instruments that a layer can hold");
    app.footer(
        "@FILE stands for the arguments in a file, one to a line; lines that start with # don't count.");

    try
    {
        auto arguments = expandArgumentFiles(argc, argv);
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
    }
    catch (const CLI::Success& help)
    {
        exitCode = app.exit(help);
        return false;
    }
    catch (const CLI::Error& error)
    {
        std::cerr << "quorel-render: " << error.what() << '\n';
        exitCode = usageError;
        return false;
    }

    options.midiFile = absoluteFile(midiFile);
    options.output = absoluteFile(output);
    options.preset = absoluteFile(preset);
    options.savePreset = absoluteFile(savePreset);
    options.prefix = absoluteFile(prefix);
    options.layers = parseAll(parseLayerChoice, layers);
    options.parameters = parseAll(parseParameterChoice, parameters);
    if (tempoOption->count() > 0)
        options.tempo = tempo;

    const auto problem = problemOf(options);
    if (problem.isNotEmpty())
    {
        std::cerr << "quorel-render: " << problem << '\n';
        exitCode = usageError;
    }
    return problem.isEmpty();
}

} // namespace quorel
