// SPDX-License-Identifier: GPL-3.0-or-later
// Cost of the preset library and of what a preset involves: index, search, load, save, texts. After the first
// walk the index's files are in the system's cache; a cold disk is slower.
#include "parameters/ParameterCodings.h"
#include "presets/PresetFiles.h"
#include "presets/PresetIndex.h"
#include "support/ProcessorRig.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <memory>

namespace
{
using namespace quorel;
using quorel::test::ProcessorRig;

constexpr int numFolders = 200;
constexpr int presetsPerFolder = 50;

/** 10,000 presets with random names and categories, made once. */
class LargeLibrary
{
public:
    static const LargeLibrary& get()
    {
        static const LargeLibrary library;
        return library;
    }

    juce::File banks() const { return scratch.path(); }

    PresetIndex index;

private:
    LargeLibrary()
    {
        ProcessorRig rig;
        juce::Random random(1);
        const juce::StringArray words{"Amber", "Bass",   "Choir", "Drift", "Ember",  "Frost",
                                      "Glass", "Hollow", "Iron",  "Jade",  "Kettle", "Lantern"};
        const auto word = [&] { return words[random.nextInt(words.size())]; };
        for (int folder = 0; folder < numFolders; ++folder)
        {
            const auto folderName = juce::String(folder).paddedLeft('0', 3) + " " + word();
            for (int preset = 0; preset < presetsPerFolder; ++preset)
            {
                for (int i = 0; i < numCategoryParameters; ++i)
                    rig.set(firstCategoryParameter + i, random.nextFloat() * 0.5f);
                write(folderName, word() + " " + word() + " " + juce::String(preset), rig.state());
            }
        }
        index.build(banks());
    }

    /** Doesn't wait for the disk, as saving a user's preset does. */
    void write(const juce::String& folder, const juce::String& name, const juce::MemoryBlock& bytes) const
    {
        const auto file = presetFileFor(banks(), folder, name);
        file.getParentDirectory().createDirectory();
        file.replaceWithData(bytes.getData(), bytes.getSize());
    }

    quorel::test::ScratchFolder scratch;
};

void buildIndex(benchmark::State& state)
{
    const auto& library = LargeLibrary::get();
    PresetIndex index;
    for (auto _ : state)
        index.build(library.banks());
    if (index.getEntries().size() != numFolders * presetsPerFolder)
        state.SkipWithError("the index is not whole");
}

void searchText(benchmark::State& state, const char* text)
{
    const auto& index = LargeLibrary::get().index;
    PresetQuery query;
    for (auto _ : state)
    {
        query.text = text;
        benchmark::DoNotOptimize(index.find(query).size());
    }
}

void filterCategories(benchmark::State& state, int numWanted)
{
    const auto& index = LargeLibrary::get().index;
    PresetQuery query;
    std::fill_n(query.categories.begin(), numWanted, static_cast<juce::uint8>(1));
    for (auto _ : state)
        benchmark::DoNotOptimize(index.find(query).size());
}

/** The list of a folder with this many presets, and the menu that shows it. */
void refreshLists(benchmark::State& state, int numPresets)
{
    ProcessorRig rig;
    const auto folder = rig.user.banksFolder().getChildFile("Large");
    folder.createDirectory();
    for (int i = 0; i < numPresets; ++i)
        folder.getChildFile(juce::String(i) + presetFileEnding).create();
    rig.processor.setNames("7", "Large");
    for (auto _ : state)
        benchmark::DoNotOptimize(rig.processor.getPresetCommands().presetMenu());
}

/** A saved preset, with an instrument on every layer or on none. */
struct PresetRig
{
    PresetRig(benchmark::State& state, bool withLayers)
    {
        int layer = 0;
        if (withLayers)
            for (const char* name : {"Orlen", "Hexley2", "Zeph", "Fenn2"})
                if (!rig.load(layer++, name))
                    state.SkipWithError("an instrument could not be loaded");
        rig.processor.setNames("Bench", "Bench");
        if (!rig.processor.getPresetStorage().save({}, true))
            state.SkipWithError("the preset could not be saved");
    }

    ProcessorRig rig;
};

void savePreset(benchmark::State& state, bool withLayers)
{
    PresetRig preset(state, withLayers);
    for (auto _ : state)
        preset.rig.processor.getPresetStorage().save({}, true);
}

void loadPreset(benchmark::State& state, bool withLayers)
{
    PresetRig preset(state, withLayers);
    for (auto _ : state)
        preset.rig.processor.getSoundChange().loadPresetFile();
    if (withLayers != preset.rig.processor.getLayer(3).hasInstance())
        state.SkipWithError("the preset was not loaded");
}

void allTexts(benchmark::State& state, bool withLayers)
{
    PresetRig preset(state, withLayers);
    for (auto _ : state)
        for (int index = 0; index < numHostParameters; ++index)
            benchmark::DoNotOptimize(preset.rig.processor.getParameterText(index).length());
}

/** Numbers of what a multi-knob can move, in the first layer. */
constexpr int volumeEntry = 1;
constexpr int firstEasyEntry = 7;
constexpr int entriesPerLayer = 18;

/** A fader whose four knobs move the volumes, or the Easy controls, of the four layers. */
void moveMultiFader(benchmark::State& state, int entry)
{
    PresetRig preset(state, true);
    auto& rig = preset.rig;
    for (int t = 0; t < 4; ++t)
    {
        rig.set(slot::multiAssignment + t, encodeParamInt(entriesPerLayer * t + entry));
        rig.set(slot::multiKnob + t, 0.9f);
    }
    float value = 0.25f;
    for (auto _ : state)
    {
        rig.processor.setParameter(slot::multiFader, value);
        value = 1.0f - value;
    }
    const int target = layerParameter(3, entry == volumeEntry ? layerSlot::volume : layerSlot::easyValue);
    const float before = rig.get(target);
    rig.processor.setParameter(slot::multiFader, value);
    if (before == rig.get(target))
        state.SkipWithError("the fader moved nothing");
}

BENCHMARK(buildIndex)->Name("buildIndex/10,000 presets in 200 folders")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchText, one word, "lantern")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchText, nothing to find, "no such name")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchText, empty text, "")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filterCategories, one category, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filterCategories, four categories, 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refreshLists, 100 presets, 100)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refreshLists, 10000 presets, 10000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(savePreset, empty, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(savePreset, four layers, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(loadPreset, empty, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(loadPreset, four layers, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(allTexts, empty, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(allTexts, four layers, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(moveMultiFader, four layer volumes, volumeEntry)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(moveMultiFader, four Easy controls, firstEasyEntry)->Unit(benchmark::kMicrosecond);
} // namespace
