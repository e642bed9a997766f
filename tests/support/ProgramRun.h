// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel::test
{

struct ProgramOutcome
{
    int exitCode = -1;
    juce::String text; ///< what it wrote, its lines ended as they are here
};

/** Runs a program to its end, a minute at most. */
inline ProgramOutcome runProgram(const juce::StringArray& commandLine)
{
    constexpr int patienceMillis = 60000;
    juce::ChildProcess program;

    if (!program.start(commandLine))
        return {-1, "cannot start " + commandLine[0]};

    auto text = program.readAllProcessOutput();
    program.waitForProcessToFinish(patienceMillis);
    // On Windows the first reading ends with the program, and may miss what that wrote last.
    text += program.readAllProcessOutput();
    return {static_cast<int>(program.getExitCode()), text.replace("\r\n", "\n")};
}

} // namespace quorel::test
