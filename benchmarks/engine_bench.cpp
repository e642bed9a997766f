// SPDX-License-Identifier: GPL-3.0-or-later
// Cost of the instrument as its host sees it, at 48 kHz. Counters: "percent" is the share of the block's own
// duration, "ns" the time for one stereo sample, "ratio" the cost of one thing over that of another, played
// in turn: an instrument inside Quorel over the instrument alone, four layers with all EQ over four without.
#include "support/ProcessorRig.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>
#include <vector>

namespace
{
using namespace quorel;
using quorel::test::ProcessorRig;

constexpr double sampleRate = 48000.0;
constexpr std::array<int, 3> chord{48, 60, 67};
// Instruments whose notes sound for as long as they are held.
constexpr std::array<const char*, numLayers> sustainedInstruments{"Orlen", "Hexley2", "Zeph", "Fenn2"};

enum class Content
{
    nothing,
    fourLayers,
    fourLayersAndEq
};

void switchOnAllOfEq(ProcessorRig& rig)
{
    for (int unit = 0; unit < numEqUnits; ++unit)
    {
        const auto set = [&](int n, float value) { rig.set(eqBase(unit) + n, value); };
        set(eqSlot::on, 1.0f);
        for (int i = 0; i < numEqBands; ++i)
        {
            const int band = eqSlot::bands + eqSlot::slotsPerBand * i;
            set(band + eqSlot::bandOn, 1.0f);
            set(band + eqSlot::bandGain, 0.7f);
        }
        set(eqSlot::lowPassOn, 1.0f);
        set(eqSlot::lowPassFreq, 0.9f);
        set(eqSlot::highPassOn, 1.0f);
        set(eqSlot::highPassFreq, 0.1f);
    }
}

bool fill(ProcessorRig& rig, Content content)
{
    if (content == Content::nothing)
        return true;
    if (content == Content::fourLayersAndEq)
        switchOnAllOfEq(rig);
    for (int layer = 0; layer < numLayers; ++layer)
    {
        if (!rig.load(layer, sustainedInstruments[static_cast<size_t>(layer)]))
            return false;
        // Choosing an instrument has reset the layer.
        if (content == Content::fourLayersAndEq)
            switchOnAllOfEq(rig);
    }
    return true;
}

void addChord(juce::MidiBuffer& midi)
{
    for (const int note : chord)
        midi.addEvent(juce::MidiMessage::noteOn(1, note, 0.8f), 0);
}

/** A rate of events, inverted: the counter shows the time for one. */
benchmark::Counter timePer(benchmark::State& state, double eventsPerIteration)
{
    return {static_cast<double>(state.iterations()) * eventsPerIteration,
            benchmark::Counter::kIsRate | benchmark::Counter::kInvert};
}

void countBlocks(benchmark::State& state, int samples)
{
    state.counters["ns"] = timePer(state, samples * 1.0e-9);
    state.counters["percent"] = timePer(state, samples / sampleRate / 100.0);
}

void playBlocks(benchmark::State& state, Content content)
{
    const auto samples = static_cast<int>(state.range(0));
    ProcessorRig rig(sampleRate, samples);
    if (!fill(rig, content))
    {
        state.SkipWithError("an instrument could not be loaded");
        return;
    }

    addChord(rig.midi);
    rig.playSeconds(0.5);
    juce::AudioBuffer<float> buffer(2, samples);
    juce::MidiBuffer midi;
    for (auto _ : state)
        rig.processor.processBlock(buffer, midi);
    if ((rig.play().peak() > 0.0f) != (content != Content::nothing))
        state.SkipWithError("the output isn't what was to be measured");
    countBlocks(state, samples);
}

double timeOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double medianOf(std::vector<double>& values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/** The same instrument on one layer and alone, block by block in turn, so that other load on the machine
    affects both alike. */
void hostOneInstrument(benchmark::State& state)
{
    const auto samples = static_cast<int>(state.range(0));
    const juce::String name = sustainedInstruments[0];
    ProcessorRig rig(sampleRate, samples);
    juce::VSTPluginFormat format;
    std::unique_ptr<juce::AudioPluginInstance> alone;
    juce::String error;
    for (const auto& description : rig.processor.getKnownPlugins().getTypes())
        if (description.name == name)
            alone = format.createInstanceFromDescription(description, sampleRate, samples, error);
    if (alone == nullptr || !rig.load(0, name))
    {
        state.SkipWithError("the instrument could not be loaded");
        return;
    }

    alone->prepareToPlay(sampleRate, samples);
    juce::AudioBuffer<float> buffer(2, samples);
    juce::MidiBuffer midi;
    addChord(midi);
    alone->processBlock(buffer, midi);
    addChord(rig.midi);
    rig.play();

    midi.clear();
    std::vector<double> inside;
    std::vector<double> outside;
    for (auto _ : state)
    {
        inside.push_back(timeOf([&] { rig.processor.processBlock(buffer, midi); }));
        outside.push_back(timeOf([&] { alone->processBlock(buffer, midi); }));
        state.SetIterationTime(inside.back());
    }
    countBlocks(state, samples);
    state.counters["ratio"] = medianOf(inside) / medianOf(outside);
}

/** What all EQ adds to four layers, with and without it played block by block in turn. "ns" is the added time
    for one sample, "ratio" the whole with EQ over the whole without. */
void addAllEq(benchmark::State& state)
{
    const auto samples = static_cast<int>(state.range(0));
    ProcessorRig plain(sampleRate, samples);
    ProcessorRig equalised(sampleRate, samples);
    if (!fill(plain, Content::fourLayers) || !fill(equalised, Content::fourLayersAndEq))
    {
        state.SkipWithError("an instrument could not be loaded");
        return;
    }
    for (auto* rig : {&plain, &equalised})
    {
        addChord(rig->midi);
        rig->playSeconds(0.5);
    }

    juce::AudioBuffer<float> buffer(2, samples);
    juce::MidiBuffer midi;
    std::vector<double> without;
    std::vector<double> with;
    for (auto _ : state)
    {
        without.push_back(timeOf([&] { plain.processor.processBlock(buffer, midi); }));
        with.push_back(timeOf([&] { equalised.processor.processBlock(buffer, midi); }));
        state.SetIterationTime(with.back());
    }
    const double base = medianOf(without);
    const double whole = medianOf(with);
    state.counters["ns"] = (whole - base) * 1.0e9 / samples;
    state.counters["ratio"] = whole / base;
}

void write(benchmark::State& state, int index)
{
    ProcessorRig rig(sampleRate);
    float value = 0.25f;
    for (auto _ : state)
    {
        rig.processor.setParameter(index, value);
        value = 1.0f - value;
    }
}

void readAll(benchmark::State& state)
{
    ProcessorRig rig(sampleRate);
    for (auto _ : state)
        for (int index = 0; index < numHostParameters; ++index)
            benchmark::DoNotOptimize(rig.processor.getParameter(index));
    state.counters["ns"] = timePer(state, numHostParameters * 1.0e-9);
}

void saveState(benchmark::State& state, Content content)
{
    ProcessorRig rig(sampleRate);
    if (!fill(rig, content))
        state.SkipWithError("an instrument could not be loaded");
    for (auto _ : state)
        benchmark::DoNotOptimize(rig.state().getSize());
}

void restoreState(benchmark::State& state, Content content)
{
    ProcessorRig rig(sampleRate);
    if (!fill(rig, content))
        state.SkipWithError("an instrument could not be loaded");
    const auto chunk = rig.state();
    for (auto _ : state)
        rig.restore(chunk);
}

/** With the list of instruments that an earlier start left behind, or with a scan for them. */
void create(benchmark::State& state, bool firstStart)
{
    ProcessorRig earlier(sampleRate);
    quorel::test::RecordingInteraction interaction;
    for (auto _ : state)
    {
        if (firstStart)
            earlier.user.listFile().deleteFile();
        const PluginProcessor processor(earlier.user.makeStore(), interaction);
        benchmark::DoNotOptimize(processor.getKnownPlugins().getNumTypes());
    }
}

#define QUOREL_BLOCKS ->Arg(32)->Arg(64)->Arg(256)->Arg(1024)->Unit(benchmark::kMicrosecond)

BENCHMARK_CAPTURE(playBlocks, empty, Content::nothing) QUOREL_BLOCKS;
BENCHMARK_CAPTURE(playBlocks, four layers, Content::fourLayers) QUOREL_BLOCKS;
BENCHMARK_CAPTURE(playBlocks, four layers and all EQ, Content::fourLayersAndEq) QUOREL_BLOCKS;
BENCHMARK(hostOneInstrument)->UseManualTime() QUOREL_BLOCKS;
BENCHMARK(addAllEq)->UseManualTime() QUOREL_BLOCKS;
BENCHMARK_CAPTURE(write, plain, slot::multiMemory)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(write, layer volume, layerParameter(0, layerSlot::volume))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(write, layer EQ gain, eqBase(0) + eqSlot::bands + eqSlot::bandGain)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(write, multi fader, slot::multiFader)->Unit(benchmark::kMicrosecond);
BENCHMARK(readAll)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(saveState, empty, Content::nothing)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(saveState, four layers, Content::fourLayers)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(restoreState, empty, Content::nothing)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(restoreState, four layers, Content::fourLayers)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(create, next start, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(create, first start with a scan, true)->Unit(benchmark::kMicrosecond);
} // namespace
