// SPDX-License-Identifier: GPL-3.0-or-later
// Cost of the preset library: ten thousand presets in two hundred folders, and one preset without its fade.
#include "presets/PresetFiles.h"
#include "support/ProcessorRig.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace
{
using namespace quorel;
using quorel::test::ProcessorRig;
using quorel::test::ScratchFolder;

constexpr int numFolders = 200;
constexpr int presetsPerFolder = 50;

/** Banks of a size that few users reach, written once for all benchmarks. */
class LargeLibrary
{
public:
    LargeLibrary()
    {
        juce::Random random(7);
        constexpr const char* words[] = {"Warm", "Deep", "Bass", "Pad", "Lead", "Glass", "Night", "Pulse"};
        // As long as a chunk without instruments.
        juce::MemoryBlock bytes(104 + 4 * numHostParameters, true);

        for (int folder = 0; folder < numFolders; ++folder)
        {
            for (int preset = 0; preset < presetsPerFolder; ++preset)
            {
                for (size_t i = 0; i < numCategoryParameters; ++i)
                {
                    const float value = (static_cast<float>(random.nextInt(2048)) + 0.5f) / 4096.0f;
                    bytes.copyFrom(&value, static_cast<int>(144 + 4 * i), sizeof(value));
                }

                const auto name = juce::String(words[random.nextInt(8)]) + " " + words[random.nextInt(8)] +
                                  " " + juce::String(preset);
                const auto file = scratch.child("Bank " + juce::String(folder) + "/" + name + ".qrl");
                file.getParentDirectory().createDirectory();
                file.replaceWithData(bytes.getData(), bytes.getSize());
            }
        }

        index.build(scratch.path());
    }

    static LargeLibrary& get()
    {
        static LargeLibrary library;
        return library;
    }

    ScratchFolder scratch;
    PresetIndex index;
};

void buildIndex(benchmark::State& state)
{
    auto& library = LargeLibrary::get();
    PresetIndex index;

    for (auto _ : state)
        index.build(library.scratch.path());

    state.counters["presets"] = static_cast<double>(index.getEntries().size());
}

void searchText(benchmark::State& state, const char* text)
{
    const auto& library = LargeLibrary::get();

    for (auto _ : state)
        benchmark::DoNotOptimize(library.index.findText(text));
}

void filterCategories(benchmark::State& state)
{
    const auto& library = LargeLibrary::get();
    CategoryFlags wanted{};
    wanted[0] = 1;
    wanted[25] = 1;

    for (auto _ : state)
        benchmark::DoNotOptimize(library.index.findCategories(wanted));
}

/** Lists of a folder of this many presets, and the menu that shows them. */
void refreshLists(benchmark::State& state)
{
    ProcessorRig rig;
    const auto folder = rig.user.banksFolder().getChildFile("Large");
    folder.createDirectory();

    for (int64_t i = 0; i < state.range(0); ++i)
        folder.getChildFile(juce::String(static_cast<juce::int64>(i)) + ".qrl").create();

    rig.processor.setNames("7", "Large");

    for (auto _ : state)
        benchmark::DoNotOptimize(rig.processor.getPresetCommands().presetMenu());
}

bool loadInstruments(ProcessorRig& rig)
{
    int layer = 0;

    for (const char* name : {"Orlen", "Hexley2", "Zeph", "Fenn2"})
        if (!rig.load(layer++, name))
            return false;

    return true;
}

void savePreset(benchmark::State& state)
{
    ProcessorRig rig;

    if (!loadInstruments(rig))
        state.SkipWithError("an instrument could not be loaded");

    for (auto _ : state)
        if (!rig.processor.savePreset("Saved", true))
            state.SkipWithError("not saved");
}

void loadPreset(benchmark::State& state)
{
    ProcessorRig rig;

    if (!loadInstruments(rig) || !rig.processor.savePreset("Saved", true))
        state.SkipWithError("an instrument could not be loaded");

    for (auto _ : state)
        if (!rig.processor.loadPresetFile())
            state.SkipWithError("not loaded");
}

BENCHMARK(buildIndex)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchText, all, "")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(searchText, some, "BASS")->Unit(benchmark::kMicrosecond);
BENCHMARK(filterCategories)->Unit(benchmark::kMicrosecond);
BENCHMARK(refreshLists)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(savePreset)->Unit(benchmark::kMicrosecond);
BENCHMARK(loadPreset)->Unit(benchmark::kMicrosecond);
} // namespace
