// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine.h"

#include "common/Tool.h"
#include "platform/PlatformSeam.h"
#include "platform/PlatformSeamFiles.h"

#include <algorithm>
#include <cmath>

namespace quorel
{

namespace
{
template <typename Choice>
using Parser = juce::Result (*)(const juce::String&, Choice&);

/** A check of an option's syntax. */
template <typename Choice>
std::function<std::string(const std::string&)> checkedBy(Parser<Choice> parse)
{
    return [parse](const std::string& text)
    {
        Choice ignored;
        return parse(textOf(text), ignored).getErrorMessage().toStdString();
    };
}

template <typename Choice>
std::vector<Choice> parseAll(Parser<Choice> parse, const std::vector<std::string>& texts)
{
    std::vector<Choice> choices(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i)
        parse(textOf(texts[i]), choices[i]);
    return choices;
}

/** CLI11's ranges let NaN pass, which no comparison refuses. */
std::string problemOfNumber(const std::string& text)
{
    double number = 0.0;
    return CLI::detail::lexical_cast(text, number) && std::isnan(number) ? "\"" + text + "\" is no number"
                                                                         : std::string();
}

/** No file where none is given. */
juce::File givenFile(const std::string& path)
{
    return path.empty() ? juce::File() : fileOf(path);
}

/** The arguments after the program's name, with each "@FILE" replaced by the lines of that file. */
std::vector<std::string> expandArgumentFiles(int argc, const char* const* argv)
{
    std::vector<std::string> arguments;
    for (const auto& argument : checkedArguments(argc, argv))
    {
        if (argument.size() < 2 || argument[0] != '@')
        {
            arguments.push_back(argument);
            continue;
        }
        const auto file = fileOf(argument.substr(1));
        if (!file.existsAsFile())
            throw UsageFailure(cannotRead(file).getErrorMessage());
        juce::StringArray lines;
        file.readLines(lines);
        for (const auto& line : lines)
            if (line.trim().isNotEmpty() && !line.trimStart().startsWithChar('#'))
                arguments.push_back(line.trim().toStdString());
    }
    return arguments;
}

bool listsAnything(const RenderOptions& options)
{
    return options.listInstruments || options.listEffects || options.listPresets || options.listPrograms ||
           options.listParameters;
}

/** A place that takes the sound as it comes, and no file. */
bool isPipe(const juce::File& file)
{
    std::error_code ignored;
    return kindOf(file, ignored) == PathKind::other;
}

bool isGivenTwice(const juce::File& one, const juce::File& other)
{
    return one != juce::File() && other != juce::File() && isSamePlace(one, other);
}

/** What no option can check by itself; empty if all is well. */
juce::String problemOf(const RenderOptions& options)
{
    const bool hasOutput = options.toStandardOutput || options.output != juce::File();
    for (const auto& source : {options.midiFile, options.input})
        if (isGivenTwice(options.savePreset, source))
            return "the preset can't go to the file that is to sound: " + source.getFullPathName();
    if (options.midiFile == juce::File() && options.input == juce::File())
    {
        if (hasOutput)
            return "nothing to render: no MIDI file and no --input given";
        return listsAnything(options) || options.savePreset != juce::File()
                   ? juce::String()
                   : "no MIDI file given; try --help";
    }
    if (!hasOutput)
        return "no output given: use -o FILE.wav or -o FILE.flac, or -o - for the standard output";
    if (options.toStandardOutput)
        return listsAnything(options) ? "the standard output is for the sound: list by a run of its own"
                                      : juce::String();
    if (isPipe(options.output))
        return {};
    if (isGivenTwice(options.savePreset, options.output))
        return "the sound and the preset can't go to the same file: " + options.output.getFullPathName();
    if (isGivenTwice(options.input, options.output))
        return "the sound can't go to the file that it is made of: " + options.output.getFullPathName();
    if (options.output.isDirectory())
        return "the output is a folder, and has to be a file: " + options.output.getFullPathName();
    if (!options.output.hasFileExtension("wav;flac"))
        return "the output must end in .wav or .flac: " + options.output.getFullPathName();
    if (options.output.hasFileExtension("flac") && options.bits == 32)
        return "FLAC holds 16 or 24 bits, not 32";
    return {};
}
} // namespace

CommandLine::CommandLine()
{
    addFiles();
    addSound();
    addRendering();
    addUserAndLists();
    app.footer(
        "@FILE stands for the arguments in a file, one to a line; lines that start with # don't count.");
}

void CommandLine::addFiles()
{
    app.add_option("midi", midiFile, "Standard MIDI File, type 0 or 1");
    app.add_option("-o,--output", output,
                   "Sound file to write; its ending, .wav or .flac, chooses the format. A pipe, or - for\n"
                   "the standard output, gets WAV");
}

void CommandLine::addSound()
{
    app.add_option("--preset", preset,
                   "Sound to play: \"FOLDER/NAME\" of a preset in the banks folder, or a file with a state\n"
                   "as a preset file or a host's project holds it")
        ->check(checkedBy(parsePresetChoice));
    app.add_option("--layer", layers,
                   "Instrument of a layer: N=INSTRUMENT or N=INSTRUMENT:PROGRAM, N from 1, the\n"
                   "program by number from 1 or by name; may be repeated")
        ->allow_extra_args(false)
        ->check(checkedBy(parseLayerChoice));
    app.add_option("--param", parameters,
                   "Parameter value: NAME=VALUE or INDEX=VALUE, the value from 0 to 1 or a\n"
                   "quotient such as 60.5/127; may be repeated, applied in order")
        ->allow_extra_args(false)
        ->check(checkedBy(parseParameterChoice));
    app.add_option("--fx", effects,
                   "Effect of block N, 1 to 4: N=TYPE[:VALUE,VALUE,...][:mix=..,pan=..,level=..],\n"
                   "the type by name or number, all values from 0 to 1; may be repeated")
        ->allow_extra_args(false)
        ->check(checkedBy(parseEffectChoice));
    app.add_option("--send", sends,
                   "Send of a layer to an effect block: LAYER:N=LEVEL, with \"pre\" behind the level to\n"
                   "take it before the fader; may be repeated")
        ->allow_extra_args(false)
        ->check(checkedBy(parseSendChoice));
    app.add_option("--input", input,
                   "Sound file (WAV, AIFF, FLAC) that goes into the effects in place of the layers");
    app.add_option("--save-preset", savePreset, "Writes the sound to this file");
}

void CommandLine::addRendering()
{
    app.add_option("--rate", options.rate, "Sample rate in Hz")
        ->check(CLI::Range(8000.0, 384000.0))
        ->check(problemOfNumber)
        ->capture_default_str();
    app.add_option("--block", options.block, "Samples per block")
        ->check(CLI::Range(1, 65536))
        ->capture_default_str();
    tempoOption =
        app.add_option("--tempo", tempo, "Quarter notes per minute, in place of the file's own tempi")
            ->check(CLI::Range(1.0, 1000.0))
            ->check(problemOfNumber);
    app.add_option("--tail", options.tail, "Seconds to render after the end of the song or input")
        ->check(CLI::Range(0.0, 3600.0))
        ->check(problemOfNumber)
        ->capture_default_str();
    app.add_option("--bits", options.bits, "Bits per sample: 16, 24, or 32 (floating point, WAV only)")
        ->check(CLI::IsMember({16, 24, 32}))
        ->capture_default_str();
}

void CommandLine::addUserAndLists()
{
    app.add_option("--prefix", prefix, "Uses the settings below this folder instead of the user's own")
        ->check(problemOfPath);
    app.add_flag("--list-instruments", options.listInstruments,
                 "Lists the instruments that a layer can hold");
    app.add_flag("--list-effects", options.listEffects,
                 "Lists the effects: number, name, and the parameters in the order of --fx");
    app.add_flag("--list-presets", options.listPresets, "Lists the presets in the banks folder");
    app.add_flag("--list-programs", options.listPrograms,
                 "Lists the programs of each layer's instrument; give the layers with --layer or --preset");
    app.add_flag("--list-parameters", options.listParameters,
                 "Lists the parameters that have names: number, name, value from 0 to 1, the text that it\n"
                 "shows, and the texts at 0 and 1; of the sound that the other options give");
}

RenderOptions CommandLine::parse(int argc, const char* const* argv)
{
    try
    {
        auto arguments = expandArgumentFiles(argc, argv);
        std::reverse(arguments.begin(), arguments.end()); // as CLI11 wants them
        app.parse(std::move(arguments));
    }
    catch (const CLI::Success&)
    {
        throw;
    }
    catch (const CLI::ParseError& error)
    {
        throw UsageFailure(textOf(error.what()));
    }

    auto result = choices();
    if (const auto problem = problemOf(result); problem.isNotEmpty())
        throw UsageFailure(problem);
    return result;
}

RenderOptions CommandLine::choices() const
{
    auto result = options;
    result.midiFile = givenFile(midiFile);
    result.input = givenFile(input);
    result.toStandardOutput = output == "-" || output == "/dev/stdout";
    result.output = result.toStandardOutput ? juce::File() : givenFile(output);
    parsePresetChoice(textOf(preset), result.preset);
    result.savePreset = givenFile(savePreset);
    result.prefix = givenFile(prefix);
    result.layers = parseAll(parseLayerChoice, layers);
    result.effects = parseAll(parseEffectChoice, effects);
    result.sends = parseAll(parseSendChoice, sends);
    result.parameters = parseAll(parseParameterChoice, parameters);
    if (tempoOption->count() > 0)
        result.tempo = tempo;
    return result;
}

} // namespace quorel
