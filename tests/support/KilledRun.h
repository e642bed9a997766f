// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <gtest/gtest.h>
#include <juce_core/juce_core.h>
#include <thread>

namespace quorel::test
{

/** Long enough for a program to be gone, or to have done something small. */
constexpr int patienceWithPrograms = 60000;

/** Starts a program, its output thrown away, and kills it after a time. */
inline void runAndKill(const juce::StringArray& commandLine, double millis)
{
    juce::ChildProcess program;
    ASSERT_TRUE(program.start(commandLine, 0)) << commandLine[0];
    std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(millis));
    program.kill();
    EXPECT_TRUE(program.waitForProcessToFinish(patienceWithPrograms));
}

/** The command line that runs one test of this test program alone. A disabled one does for a program of its own. */
inline juce::StringArray onlyTest(const juce::String& name)
{
    return {juce::File::getSpecialLocation(juce::File::currentExecutableFile).getFullPathName(),
            "--gtest_also_run_disabled_tests", "--gtest_filter=" + name};
}

} // namespace quorel::test
