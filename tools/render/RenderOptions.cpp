// SPDX-License-Identifier: GPL-3.0-or-later
#include "RenderOptions.h"

#include "parameters/ParameterLayout.h"
#include "presets/PresetFiles.h"

#include <CLI/CLI.hpp>

#include <algorithm>
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
    if (options.midiFile == juce::File() && options.input == juce::File())
    {
        if (options.output != juce::File())
            return "nothing to render: no MIDI file and no --input given";
        return options.listInstruments || options.listEffects || options.savePreset != juce::File()
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

juce::Result parsePresetChoice(const juce::String& text, PresetChoice& choice)
{
    choice = {};
    const auto file = absoluteFile(text.toStdString());
    if (file.existsAsFile() || juce::File::isAbsolutePath(text) || text.endsWithIgnoreCase(presetFileEnding))
    {
        choice.file = file;
        return juce::Result::ok();
    }
    choice.folder = text.upToFirstOccurrenceOf("/", false, false);
    choice.name = text.fromFirstOccurrenceOf("/", false, false);
    const bool isPreset =
        choice.folder.isNotEmpty() && choice.name.isNotEmpty() && !choice.name.containsChar('/');
    return isPreset ? juce::Result::ok()
                    : juce::Result::fail("a preset is given as FOLDER/NAME or as a file, not as \"" + text +
                                         "\", which is none of both");
}

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
    const auto value = parseUnitValue(text.fromLastOccurrenceOf("=", false, false));
    if (!text.containsChar('=') || choice.parameter.isEmpty() || !value.has_value())
        return juce::Result::fail("a parameter is given as NAME=VALUE with a value from 0 to 1, not as \"" +
                                  text + "\"");
    choice.value = *value;
    return juce::Result::ok();
}

bool parseCommandLine(int argc, const char* const* argv, RenderOptions& options, int& exitCode)
{
    CLI::App app{"Renders a Standard MIDI File, or a sound file, through a Quorel sound.", "quorel-render"};
    std::string midiFile, input, output, preset, savePreset, prefix;
    std::vector<std::string> layers, effects, sends, parameters;
    double tempo = 0.0;

    app.add_option("midi", midiFile, "Standard MIDI File, type 0 or 1");
    app.add_option("-o,--output", output,
                   "Sound file to write; its ending, .wav or .flac, chooses the format");
    app.add_option("--preset", preset,
                   "Sound to play: \"FOLDER/NAME\" of a preset in the banks folder, or a file with a state\n"
                   "as a preset file or a host's project holds it")
        ->check([](const std::string& text) { return problemOf(parsePresetChoice, text); });
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
    app.add_option("--fx", effects,
                   "Effect of block N, 1 to 4: N=TYPE[:VALUE,VALUE,...][:mix=..,pan=..,level=..],\n"
                   "the type by name or number, all values from 0 to 1; may be repeated")
        ->allow_extra_args(false)
        ->check([](const std::string& text) { return problemOf(parseEffectChoice, text); });
    app.add_option("--send", sends,
                   "Send of a layer to an effect block: LAYER:N=LEVEL, with \"pre\" behind the level to\n"
                   "take it before the fader; may be repeated")
        ->allow_extra_args(false)
        ->check([](const std::string& text) { return problemOf(parseSendChoice, text); });
    app.add_option("--input", input,
                   "Sound file (WAV, AIFF, FLAC) that goes into the effects in place of the layers");
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
    app.add_option("--tail", options.tail, "Seconds to render after the end of the song or input")
        ->check(CLI::Range(0.0, 3600.0))
        ->capture_default_str();
    app.add_option("--bits", options.bits, "Bits to a sample: 16, 24, or 32 (floating point, WAV alone)")
        ->check(CLI::IsMember({16, 24, 32}))
        ->capture_default_str();
    app.add_option("--prefix", prefix, "Uses the settings below this folder instead of the user's own");
    app.add_flag("--list-instruments", options.listInstruments,
                 "Lists the instruments that a layer can hold");
    app.add_flag("--list-effects", options.listEffects,
                 "Lists the effects: number, name, and the parameters in the order of --fx");
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
    options.input = absoluteFile(input);
    options.output = absoluteFile(output);
    parsePresetChoice(juce::String::fromUTF8(preset.c_str()), options.preset);
    options.savePreset = absoluteFile(savePreset);
    options.prefix = absoluteFile(prefix);
    options.layers = parseAll(parseLayerChoice, layers);
    options.effects = parseAll(parseEffectChoice, effects);
    options.sends = parseAll(parseSendChoice, sends);
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
