// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-render: a Standard MIDI File or a sound file through a sound, as fast as the machine can, to WAV or
// FLAC.
#include "CommandLine.h"
#include "OfflineRender.h"
#include "SoundLists.h"
#include "SoundSetup.h"

#include "common/ConsoleInteraction.h"
#include "common/Tool.h"
#include "platform/PlatformSeam.h"
#include "platform/PlatformSeamFiles.h"
#include "platform/UserPaths.h"
#include "setup/FirstStart.h"

#include <filesystem>
#include <fstream>
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

/** To the standard error stream where the standard output has the sound, or a pipe may be it. */
void printReport(const RenderReport& report, const RenderOptions& options, bool isStream)
{
    (isStream ? std::cerr : std::cout)
        << (options.toStandardOutput ? juce::String("standard output") : options.output.getFullPathName())
        << '\n'
        << "length " << juce::String(report.seconds, 2) << " s, peak "
        << decibels(static_cast<double>(report.peak)) << ", RMS " << decibels(report.rms) << ", "
        << juce::String(report.seconds / juce::jmax(report.wallSeconds, 1.0e-6), 1) << " times real time"
        << std::endl;
    if (report.hadBadSamples)
        std::cerr << toolName
                  << ": the sound held samples that are no numbers; they were written as silence\n";
    if (report.peak > 1.0f && options.bits < 32)
        std::cerr << toolName << ": the sound is clipped: lower the master volume or write 32 bits\n";
}

bool hasLayer(PluginProcessor& processor)
{
    for (int layer = 0; layer < numLayers; ++layer)
        if (processor.getLayer(layer).hasInstance())
            return true;
    return false;
}

/** What goes into a render, and where it goes to. */
struct Job
{
    MidiSong song;
    /** Null without one. */
    std::unique_ptr<SoundInput> input;
    std::unique_ptr<SoundFile> file;
    bool isStream = false;
};

juce::Result openOutput(const RenderOptions& options, Job& job)
{
    std::error_code ignored;
    job.isStream = options.toStandardOutput || kindOf(options.output, ignored) == PathKind::other;
    if (!job.isStream)
        return SoundFile::create(options.output, options.rate, 2, options.bits, job.file);

    std::shared_ptr<std::ostream> stream(&std::cout, [](std::ostream*) {});
    auto name = juce::String("to the standard output");
    if (options.toStandardOutput)
    {
        keepBytesOfStandardOutput();
    }
    else
    {
        name = options.output.getFullPathName();
        stream =
            std::make_shared<std::ofstream>(std::filesystem::u8path(name.toStdString()), std::ios::binary);
        if (!stream->good())
            return juce::Result::fail("cannot write " + name);
    }
    const auto length = OfflineRender::numSamples(job.song, job.input.get(), options.tail, options.rate);
    return SoundFile::createStream(stream, name, options.rate, 2, options.bits, length, job.file);
}

/** All that can fail without the processor: making one may scan for instruments. */
juce::Result openJob(const RenderOptions& options, Job& job)
{
    if (options.midiFile == juce::File())
        job.song = MidiSong::silence(options.tempo);
    else if (const auto result = MidiSong::read(options.midiFile, options.tempo, job.song); result.failed())
        return result;
    if (options.input != juce::File())
        if (const auto result = SoundInput::open(options.input, options.rate, job.input); result.failed())
            return result;
    const bool hasSound = options.midiFile != juce::File() || job.input != nullptr;
    return hasSound ? openOutput(options, job) : juce::Result::ok();
}

juce::Result listSound(PluginProcessor& processor, const RenderOptions& options)
{
    if (options.listPrograms)
        if (const auto result = listPrograms(processor); result.failed())
            return result;
    if (options.listParameters)
        listParameters(processor);
    return juce::Result::ok();
}

/** Puts the sound together, lists and saves what is asked for, and plays it if it is to go anywhere. */
juce::Result perform(PluginProcessor& processor, const RenderOptions& options, Job& job)
{
    OfflineRender offline(processor, job.song, job.input.get(), options.rate, options.block);
    if (const auto result = setUpSound(processor, offline, options); result.failed())
        return result;
    if (const auto result = listSound(processor, options); result.failed())
        return result;
    if (job.file != nullptr)
        offline.settle();
    if (options.savePreset != juce::File())
        if (const auto result = saveSound(processor, options.savePreset); result.failed())
            return result;
    if (job.file == nullptr)
        return juce::Result::ok();

    if (job.input == nullptr && !hasLayer(processor))
        std::cerr << toolName
                  << ": no layer has an instrument, so this is silence: give --layer or --preset\n";
    RenderReport report;
    {
        ProgressBar bar;
        if (const auto result = offline.run(
                *job.file, options.tail, [&](double done) { bar.show(done); }, report);
            result.failed())
            return result;
    }
    if (const auto result = job.file->finish(); result.failed())
        return result;
    printReport(report, options, job.isStream);
    return juce::Result::ok();
}

juce::Result work(const RenderOptions& options)
{
    checkPrefix(options.prefix);
    if (options.prefix != juce::File() && !options.prefix.isDirectory())
        return juce::Result::fail("there is no folder " + options.prefix.getFullPathName());
    Job job;
    if (const auto result = openJob(options, job); result.failed())
        return result;

    if (options.listEffects)
        std::cout << effectList() << std::flush;
    if (options.prefix == juce::File())
        setUpAtFirstStart();
    if (options.listPresets)
        if (const auto result = listPresetNames(readPaths(*storeFor(options)).banksFolder); result.failed())
            return result;
    const bool needsSound = job.file != nullptr || options.savePreset != juce::File() ||
                            options.listPrograms || options.listParameters;
    if (!needsSound && !options.listInstruments)
        return juce::Result::ok();

    ConsoleInteraction interaction(toolName);
    // Too large for the stack.
    const auto processor = std::make_unique<PluginProcessor>(storeFor(options), interaction);
    if (options.listInstruments)
        for (const auto& type : processor->getKnownPlugins().getTypes())
            std::cout << type.name << std::endl;
    return needsSound ? perform(*processor, options, job) : juce::Result::ok();
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
