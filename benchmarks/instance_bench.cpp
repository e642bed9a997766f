// SPDX-License-Identifier: GPL-3.0-or-later
// What an idle instance costs: memory and creation. The order matters, since the first instance pays for what
// all of them share: run this program without repetitions and without interleaving.
#include "support/ProcessorRig.h"

#include <benchmark/benchmark.h>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <string>
#include <vector>

namespace
{
using namespace quorel;

constexpr double rate = 48000.0;
constexpr int blockSize = 512;
/** Long enough for all timers to have run. */
constexpr int settleMillis = 300;

/** The number behind a key of a file in /proc, such as "Rss:" of smaps_rollup, in its own unit. */
double valueFromProc(const char* path, const std::string& key)
{
    std::ifstream file(path);
    std::string word;
    while (file >> word)
        if (word == key)
        {
            double value = -1.0;
            file >> value;
            return value;
        }
    return -1.0;
}

/** What this process holds, in MB of a million bytes. */
struct Memory
{
    double resident = valueFromProc("/proc/self/smaps_rollup", "Rss:") * 1024.0e-6;
    double reserved = valueFromProc("/proc/self/status", "VmSize:") * 1024.0e-6;
    double heap = static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd) * 1.0e-6;

    bool isKnown() const { return resident > 0.0 && reserved > 0.0; }
};

/** A user whose instruments are known from an earlier start. That start was another process, because a scan
    leaves the instruments' code in memory, which isn't the instance's. */
class KnownUser
{
public:
    KnownUser()
    {
        juce::ChildProcess scan;
        isReady =
            scan.start(juce::StringArray{QUOREL_BENCH_RENDER, "--prefix",
                                         user.scratch.path().getFullPathName(), "--list-instruments"}) &&
            scan.readAllProcessOutput().isNotEmpty() && scan.getExitCode() == 0 &&
            user.listFile().existsAsFile();
    }

    std::unique_ptr<PluginProcessor> makeProcessor()
    {
        return std::make_unique<PluginProcessor>(user.makeStore(), interaction);
    }

    /** One that a host has prepared and plays through, and that has nothing to do. */
    std::unique_ptr<PluginProcessor> makeIdleInstance()
    {
        auto processor = makeProcessor();
        processor->prepareToPlay(rate, blockSize);
        juce::AudioBuffer<float> buffer(2, blockSize);
        juce::MidiBuffer midi;
        for (int block = 0; block < 4; ++block)
            processor->processBlock(buffer, midi);
        return processor;
    }

    bool isReady = false;

private:
    quorel::test::UserRig user;
    quorel::test::RecordingInteraction interaction;
};

KnownUser& user()
{
    static KnownUser known;
    return known;
}

void settle()
{
    quorel::test::ProcessorRig::pump(settleMillis);
}

bool isReady(benchmark::State& state)
{
    if (user().isReady && Memory().isKnown())
        return true;
    state.SkipWithError("no list of instruments, or no figures in /proc");
    return false;
}

/** What one of so many idle instances adds to this process. */
void holdInstances(benchmark::State& state)
{
    if (!isReady(state))
        return;
    std::vector<std::unique_ptr<PluginProcessor>> instances;
    const bool further = state.range(0) > 1;
    if (further)
        instances.push_back(user().makeIdleInstance());
    settle();
    const Memory before;
    for (auto _ : state)
        for (int i = 0; i < state.range(0); ++i)
            instances.push_back(user().makeIdleInstance());
    settle();
    const Memory after;
    const auto number = static_cast<double>(state.range(0));
    state.counters["resident"] = (after.resident - before.resident) / number;
    state.counters["virtual"] = (after.reserved - before.reserved) / number;
}

/** Creates a further processor beside one that is there, with the list of instruments of an earlier start.
    Processor time of all threads. */
void createFurther(benchmark::State& state)
{
    if (!isReady(state))
        return;
    const auto first = user().makeIdleInstance();
    for (auto _ : state)
    {
        auto processor = user().makeProcessor();
        state.PauseTiming();
        processor = nullptr;
        state.ResumeTiming();
    }
}

int openFiles()
{
    return juce::File("/proc/self/fd").getNumberOfChildFiles(juce::File::findFilesAndDirectories);
}

/** What stays behind after so many instances have come and gone, beyond what the first few left. */
void openAndClose(benchmark::State& state)
{
    if (!isReady(state))
        return;
    constexpr int warmUp = 5;
    const auto comeAndGo = [](int times)
    {
        for (int i = 0; i < times; ++i)
            user().makeIdleInstance();
        settle();
    };
    const auto threads = [] { return valueFromProc("/proc/self/status", "Threads:"); };

    comeAndGo(warmUp);
    const Memory before;
    const double threadsBefore = threads();
    const int filesBefore = openFiles();
    for (auto _ : state)
        comeAndGo(static_cast<int>(state.range(0)));
    const Memory after;
    state.counters["resident"] = after.resident - before.resident;
    state.counters["virtual"] = after.reserved - before.reserved;
    state.counters["heap"] = after.heap - before.heap;
    state.counters["threads"] = threads() - threadsBefore;
    state.counters["files"] = openFiles() - filesBefore;
}

BENCHMARK(holdInstances)->Arg(1)->Arg(10)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(createFurther)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(openAndClose)->Arg(100)->Iterations(1)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
} // namespace
