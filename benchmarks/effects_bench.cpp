// SPDX-License-Identifier: GPL-3.0-or-later
// Cost of the effects at 48 kHz in blocks of 64. "ns" is the time for one stereo sample.
#include "effects/FxSlot.h"
#include "effects/LayerEq.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace
{
using namespace quorel;

constexpr int blockSize = 64;
constexpr float sampleRate = 48000.0f;

enum class Setting
{
    middle, // all parameters at 0.5
    full,   // all at 1
    silence // all at 0.5, half a second of noise and then silence
};

std::unique_ptr<FxSlot> makeSlot(int type)
{
    auto slot = std::make_unique<FxSlot>();
    fxConstruct(*slot);
    slot->type = type;
    fxInit(*slot, sampleRate);
    fxSetMix(*slot, 0.75f, 0.5f, 0.5f);
    return slot;
}

std::vector<float> noise(std::size_t length)
{
    std::mt19937 engine(1);
    std::uniform_real_distribution<float> values(-0.5f, 0.5f);
    std::vector<float> samples(length);
    std::generate(samples.begin(), samples.end(), [&] { return values(engine); });
    return samples;
}

void countSamples(benchmark::State& state)
{
    state.counters["ns"] = benchmark::Counter(static_cast<double>(state.iterations()) * blockSize * 1e-9,
                                              benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/** A first parameter below 0 is set as the others are. Plays `count` slots of one type, block by block in
    turn, as the four effect blocks of the instrument run. */
void playSlots(benchmark::State& state, int type, Setting setting, std::size_t count, float firstParameter)
{
    std::vector<std::unique_ptr<FxSlot>> slots;
    for (std::size_t i = 0; i < count; ++i)
        slots.push_back(makeSlot(type));

    std::array<float, fxParameterCount> p;
    p.fill(setting == Setting::full ? 1.0f : 0.5f);
    if (firstParameter >= 0.0f)
        p[0] = firstParameter;

    const std::vector<float> source = noise(48000);
    std::size_t from = 0;
    std::array<float, blockSize> left, right;

    const auto play = [&](bool silent)
    {
        for (auto& slot : slots)
        {
            if (silent)
            {
                left.fill(0.0f);
                right.fill(0.0f);
            }
            else
            {
                std::copy_n(source.begin() + static_cast<std::ptrdiff_t>(from), blockSize, left.begin());
                std::copy_n(source.rbegin() + static_cast<std::ptrdiff_t>(from), blockSize, right.begin());
            }

            fxUpdate(*slot, p.data(), 120.0f);
            fxProcessBlock(*slot, left.data(), right.data(), blockSize);
        }

        from = from + 2 * blockSize > source.size() ? 0 : from + blockSize;
    };

    for (int i = 0; i < 375; ++i)
        play(false);

    if (setting == Setting::silence)
        for (int i = 0; i < 7500; ++i)
            play(true);

    for (auto _ : state)
    {
        play(setting == Setting::silence);
        benchmark::DoNotOptimize(left[0]);
    }

    countSamples(state);
}

void playEq(benchmark::State& state, bool bands, bool filters, bool silent)
{
    LayerEq eq;
    eqInit(eq, sampleRate);
    eq.enabled = 1;
    for (int band = 0; band < 3; ++band)
        eqSetBand(eq, band, bands, 0.8f, 0.3f + 0.2f * static_cast<float>(band), 0.4f);
    eqSetFilters(eq, filters, 0.9f, filters, 0.1f);

    const std::vector<float> source = noise(48000);
    std::array<float, blockSize> left, right;
    std::size_t from = 0;

    const auto play = [&](bool quiet)
    {
        for (std::size_t i = 0; i < blockSize; ++i)
        {
            left[i] = quiet ? 0.0f : source[from + i];
            right[i] = quiet ? 0.0f : -source[from + i];
        }
        eqProcessBlock(eq, left.data(), right.data(), blockSize);
        from = from + 2 * blockSize > source.size() ? 0 : from + blockSize;
    };

    for (int i = 0; i < 8000; ++i)
        play(silent && i > 375);

    for (auto _ : state)
    {
        play(silent);
        benchmark::DoNotOptimize(left[0]);
    }

    countSamples(state);
}

void registerAll()
{
    for (int type = 0; type < fxTypeCount; ++type)
    {
        const std::string name = fxTypes[static_cast<std::size_t>(type)].name;
        const auto add = [&](const char* label, Setting setting, std::size_t count) {
            benchmark::RegisterBenchmark((name + "/" + label).c_str(), playSlots, type, setting, count,
                                         -1.0f);
        };
        add("middle", Setting::middle, 1);
        add("full", Setting::full, 1);
        add("silence", Setting::silence, 1);
        add("four slots", Setting::middle, 4);
    }

    // The kinds of the types whose first parameter chooses one, with the LFO moving.
    for (int kind = 0; kind < 29; ++kind)
        benchmark::RegisterBenchmark(("Filter/kind " + std::to_string(kind)).c_str(), playSlots, 29,
                                     Setting::middle, 1u, (static_cast<float>(kind) + 0.5f) / 29.99f);
    for (int kind = 0; kind < 12; ++kind)
        benchmark::RegisterBenchmark(("Multi Distort/kind " + std::to_string(kind)).c_str(), playSlots, 17,
                                     Setting::middle, 1u, (static_cast<float>(kind) + 0.5f) / 11.99f);

    benchmark::RegisterBenchmark("EQ/bands", playEq, true, false, false);
    benchmark::RegisterBenchmark("EQ/filters", playEq, false, true, false);
    benchmark::RegisterBenchmark("EQ/all", playEq, true, true, false);
    benchmark::RegisterBenchmark("EQ/silence", playEq, true, true, true);
}

[[maybe_unused]] const bool registered = (registerAll(), true);
} // namespace
