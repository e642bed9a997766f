// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-render: a Standard MIDI File or a sound file through a sound, as fast as the machine can, to WAV or
// FLAC.
#include "CommandLine.h"
#include "OfflineRender.h"
#include "SoundSetup.h"

#include "common/ConsoleInteraction.h"
#include "common/Tool.h"
#include "platform/PlatformSeam.h"

#include <iostream>

namespace quorel
{
namespace
{
constexpr const char* toolName = "quorel-render";

/** The user's settings, or those below the prefix, for this process and all that it hosts. */
std::unique_ptr<UserStore> storeFor(const RenderOptions& options)
{
    if (options.prefix != juce::File())
        adoptUserPlaces(options.prefix);
    return options.prefix == juce::File() ? makeUserStore() : makeUserStore(userPlaces(options.prefix));
}

/** Draws only on a terminal. */
class ProgressBar
{
public:
    void show(double done)
    {
        if (!isTerminal)
            return;
        constexpr int width = 50;
        const int filled = juce::roundToInt(done * width);
        std::cerr << "\r[" << std::string(static_cast<std::size_t>(filled), '#')
                  << std::string(static_cast<std::size_t>(width - filled), '.') << "] "
                  << juce::roundToInt(done * 100.0) << " %" << std::flush;
        drawn = true;
    }

    ~ProgressBar()
    {
        if (drawn)
            std::cerr << std::endl;
    }

private:
    const bool isTerminal = standardErrorIsTerminal();
    bool drawn = false;
};

juce::String decibels(double level)
{
    return level > 0.0 ? juce::String(juce::Decibels::gainToDecibels(level, -200.0), 1) + " dBFS" : "silence";
}

void printReport(const RenderReport& report, const RenderOptions& options)
{
    std::cout << options.output.getFullPathName() << '\n'
              << "length " << juce::String(report.seconds, 2) << " s, peak "
              << decibels(static_cast<double>(report.peak)) << ", RMS " << decibels(report.rms) << ", "
              << juce::String(report.seconds / juce::jmax(report.wallSeconds, 1.0e-6), 1)
              << " times real time" << std::endl;
    if (report.hadBadSamples)
        std::cerr << toolName
                  << ": the sound held samples that are no numbers; they were written as silence\n";
    if (report.peak > 1.0f && options.bits < 32)
        std::cerr << toolName << ": the sound is clipped: lower the master volume or write 32 bits\n";
}

juce::Result render(PluginProcessor& processor, const RenderOptions& options, const MidiSong& song,
                    std::unique_ptr<SoundInput> input, SoundFile& file)
{
    OfflineRender offline(processor, song, input.get(), options.rate, options.block);
    if (const auto result = setUpSound(processor, offline, options); result.failed())
        return result;
    offline.settle();
    if (options.savePreset != juce::File())
        if (const auto result = saveSound(processor, options.savePreset); result.failed())
            return result;

    RenderReport report;
    {
        ProgressBar bar;
        if (const auto result = offline.run(
                file, options.tail, [&](double done) { bar.show(done); }, report);
            result.failed())
            return result;
    }
    if (const auto result = file.finish(); result.failed())
        return result;
    printReport(report, options);
    return juce::Result::ok();
}

/** Puts a sound together and saves it, without playing anything. */
juce::Result saveOnly(PluginProcessor& processor, const RenderOptions& options, const MidiSong& silence)
{
    OfflineRender offline(processor, silence, nullptr, options.rate, options.block);
    if (const auto result = setUpSound(processor, offline, options); result.failed())
        return result;
    return saveSound(processor, options.savePreset);
}

juce::Result work(const RenderOptions& options)
{
    // All that can fail without the processor comes first: making one may scan for instruments.
    MidiSong song;
    std::unique_ptr<SoundFile> file;
    std::unique_ptr<SoundInput> input;
    const bool hasSong = options.midiFile != juce::File();
    const bool hasInput = options.input != juce::File();
    if (hasSong)
    {
        if (const auto result = MidiSong::read(options.midiFile, options.tempo, song); result.failed())
            return result;
    }
    else
    {
        song = MidiSong::silence(options.tempo);
    }
    if (hasInput)
        if (const auto result = SoundInput::open(options.input, options.rate, input); result.failed())
            return result;
    if (hasSong || hasInput)
    {
        if (const auto result = SoundFile::create(options.output, options.rate, 2, options.bits, file);
            result.failed())
            return result;
    }

    if (options.listEffects)
        std::cout << effectList() << std::flush;
    if (!hasSong && !hasInput && !options.listInstruments && options.savePreset == juce::File())
        return juce::Result::ok();

    ConsoleInteraction interaction(toolName);
    // Too large for the stack.
    const auto processor = std::make_unique<PluginProcessor>(storeFor(options), interaction);
    if (options.listInstruments)
        for (const auto& type : processor->getKnownPlugins().getTypes())
            std::cout << type.name << std::endl;
    if (hasSong || hasInput)
        return render(*processor, options, song, std::move(input), *file);
    return options.savePreset != juce::File() ? saveOnly(*processor, options, song) : juce::Result::ok();
}
} // namespace
} // namespace quorel

int main(int argc, char** argv)
{
    using namespace quorel;

    CommandLine commandLine;
    RenderOptions options;
    return runTool(
        commandLine.parser(), [&] { options = commandLine.parse(argc, argv); },
        [&options]
        {
            if (const auto result = work(options); result.failed())
                throw ToolFailure(result.getErrorMessage());
            return exitFine;
        });
}
