// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-tour: plays one preset after the other, as a player would choose them, into one sound file.
#include "OfflineRender.h"
#include "SoundSetup.h"
#include "TourScore.h"

#include "common/ConsoleInteraction.h"
#include "common/Tool.h"
#include "parameters/ParameterCodings.h"
#include "platform/PlatformSeam.h"
#include "presets/PresetFiles.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace quorel
{
namespace
{
constexpr const char* toolName = "quorel-tour";
constexpr double rate = 48000.0;
constexpr int blockSize = 512;
constexpr int bits = 24;

juce::String timeText(double seconds)
{
    const int whole = static_cast<int>(seconds);
    return juce::String(whole / 60).paddedLeft(' ', 2) + ":" + juce::String(whole % 60).paddedLeft('0', 2);
}

void bindControllers(PluginProcessor& processor)
{
    for (int group = 0; group < numMultiFaders; ++group)
        processor.setParameter(slot::controllerMap + firstTourController + group,
                               encodeParamInt(slot::multiFader + group));
    processor.setParameter(slot::controllerMap + fadeController, encodeParamInt(slot::masterVolume));
}

/** At once: while a player changes presets, modulation runs on for as long as the machine takes. */
juce::Result choosePreset(PluginProcessor& processor, const PresetChoice& preset)
{
    const auto silence = MidiSong::silence({});
    OfflineRender offline(processor, silence, nullptr, rate, blockSize);
    RenderOptions options;
    options.preset.file = findPresetFile(processor.getPaths().banksFolder, preset.folder, preset.name);
    if (options.preset.file == juce::File())
        return juce::Result::fail("there is no preset \"" + preset.folder + "/" + preset.name + "\"");
    return setUpSound(processor, offline, options);
}

juce::Result play(const std::vector<TourStation>& stations, const juce::File& prefix, SoundFile& file)
{
    adoptUserPlaces(prefix);
    ConsoleInteraction interaction(toolName);
    const auto processor = std::make_unique<PluginProcessor>(makeUserStore(userPlaces(prefix)), interaction);
    double seconds = 0.0;
    for (const auto& station : stations)
    {
        if (const auto result = choosePreset(*processor, station.preset); result.failed())
            return result;
        bindControllers(*processor);
        const auto song = station.song(processor->getParameter(slot::masterVolume));
        OfflineRender offline(*processor, song, nullptr, rate, blockSize);
        offline.settle();
        std::cout << timeText(seconds) << "  " << station.preset.folder << "/" << station.preset.name
                  << std::endl;

        RenderReport report;
        if (const auto result = offline.run(
                file, 0.0, [](double) {}, report);
            result.failed())
            return result;
        if (report.hadBadSamples || report.peak > 1.0f)
            std::cerr << toolName << ": " << station.preset.name << " is clipped" << std::endl;
        seconds += report.seconds;
    }
    std::cout << timeText(seconds) << "  end" << std::endl;
    return file.finish();
}

std::vector<TourStation> readScore(const std::string& score)
{
    try
    {
        return readTour(fileOf(score));
    }
    catch (const TextError& error)
    {
        throw ToolFailure(textOf(score) + ":" + juce::String(error.line) + ": " + error.what());
    }
}

int work(const std::string& score, const std::string& output, const std::string& prefix)
{
    if (!fileOf(output).hasFileExtension("wav;flac"))
        throw UsageFailure("the output must end in .wav or .flac: " + textOf(output));
    if (!fileOf(prefix).isDirectory())
        throw ToolFailure("there is no folder " + fileOf(prefix).getFullPathName());
    const auto stations = readScore(score);
    std::unique_ptr<SoundFile> file;
    auto result = SoundFile::create(fileOf(output), rate, 2, bits, file);
    if (result.wasOk())
        result = play(stations, fileOf(prefix), *file);
    if (result.failed())
        throw ToolFailure(result.getErrorMessage());
    return exitFine;
}
} // namespace
} // namespace quorel

int main(int argc, char** argv)
{
    std::string score, output, prefix;
    CLI::App app("Plays a tour through presets: a score names them and what is played on each.",
                 quorel::toolName);
    app.add_option("score", score, "Text with a section for each preset")
        ->required()
        ->check(CLI::ExistingFile);
    app.add_option("-o,--output", output, "Sound file to write, .wav or .flac")->required();
    app.add_option("--prefix", prefix, "A place that quorel-setup has set up")->required()->type_name("DIR");
    return quorel::runTool(app, argc, argv, [&] { return quorel::work(score, output, prefix); });
}
