// SPDX-License-Identifier: GPL-3.0-or-later
// Runs all benchmarks on JUCE's message thread, without a display unless QUOREL_TEST_DISPLAY names one.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <juce_events/juce_events.h>

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;

#if !JUCE_WINDOWS
    const char* display = std::getenv("QUOREL_TEST_DISPLAY");
    setenv("DISPLAY", display != nullptr ? display : ":9999", 1);
#endif
    const juce::ScopedJuceInitialiser_GUI juce;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
