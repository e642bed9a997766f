// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of all command line programs ask.
#pragma once

#include "support/ProgramRun.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace quorel::test
{

inline ProgramOutcome runCommand(const juce::String& program, juce::StringArray arguments)
{
    arguments.insert(0, program);
    return runProgram(arguments);
}

/** A refusal is one line with these words in it. */
inline void expectRefusal(const ProgramOutcome& outcome, int exitCode, const juce::String& words = {})
{
    EXPECT_EQ(outcome.exitCode, exitCode) << outcome.text;
    EXPECT_EQ(juce::StringArray::fromLines(outcome.text.trim()).size(), 1) << outcome.text;
    EXPECT_TRUE(outcome.text.isNotEmpty() && outcome.text.contains(words)) << words << "\n" << outcome.text;
}

inline std::string bytesOf(const juce::File& file)
{
    juce::MemoryBlock bytes;
    file.loadFileAsData(bytes);
    return {bytes.begin(), bytes.end()};
}

/** Every file and folder below one, with its bytes. */
inline std::map<juce::String, std::string> contentsOf(const juce::File& folder)
{
    std::map<juce::String, std::string> contents;
    for (const auto& found : folder.findChildFiles(juce::File::findFilesAndDirectories, true))
        contents[found.getRelativePathFrom(folder)] = found.isDirectory() ? "" : bytesOf(found);
    return contents;
}

} // namespace quorel::test
