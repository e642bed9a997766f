// SPDX-License-Identifier: GPL-3.0-or-later
// What the command line programs refuse, and what they leave behind when they are ended.
#include "hosting/LoadNote.h"
#include "support/ProgramRun.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#if !JUCE_WINDOWS
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace quorel
{
namespace
{

TEST(ToolMisuse, WhatMakesNoSenseIsRefusedInOneLine)
{
    const test::ScratchFolder scratch;
    const auto path = [&scratch](const char* name) { return scratch.child(name).getFullPathName(); };
    scratch.write("file", "no folder");
    scratch.write("banks/A/One.qrl", "a preset's place");
    const juce::StringArray render{QUOREL_TEST_RENDER, "--input", path("in.wav"), "-o", path("out.wav")};
    const auto rendering = [&render](const juce::StringArray& more)
    {
        auto line = render;
        line.addArray(more);
        return line;
    };

    const struct
    {
        juce::StringArray line;
        int code;
        const char* words;
    } cases[] = {
        {rendering({"--rate", "nan"}), 2, "is no number"},
        {rendering({"--tail", "NAN"}), 2, "is no number"},
        {rendering({"--tempo", "-nan"}), 2, "is no number"},
        {rendering({"--tempo", "inf"}), 2, "--tempo"},
        {rendering({"--rate", "1e999"}), 2, "--rate"},
        {rendering({"--save-preset", path("out.wav")}), 2, "same file"},
        {rendering({"--prefix", path("file")}), 1, "is no folder"},
        {rendering({"--prefix", path("gone")}), 1, "there is no folder"},
        {{QUOREL_TEST_SETUP, "--prefix", path("file")}, 1, "is no folder"},
        {{QUOREL_TEST_PRESETS, "--prefix", path("file"), "list"}, 1, "is no folder"},
        {{QUOREL_TEST_PRESETS, "--banks", path("banks"), "export", "A", "-o", path("typo/x.zip")},
         1,
         "no such folder"},
    };

    for (const auto& [line, code, words] : cases)
    {
        const auto outcome = test::runProgram(line);
        EXPECT_EQ(outcome.exitCode, code) << line.joinIntoString(" ") << "\n" << outcome.text;
        EXPECT_TRUE(outcome.text.contains(words)) << outcome.text;
        EXPECT_EQ(outcome.text.trim().indexOfChar('\n'), -1) << outcome.text;
    }
    EXPECT_EQ(scratch.path().getNumberOfChildFiles(juce::File::findFilesAndDirectories), 2);
}

#if !JUCE_WINDOWS
TEST(ToolMisuse, OutputThatCannotBeWrittenIsAFailure)
{
    for (const char* line : {QUOREL_TEST_PRESETS " categories list > /dev/full",
                             QUOREL_TEST_PRESETS " categories list >&-", QUOREL_TEST_RENDER " --help >&-"})
    {
        const auto outcome = test::runProgram({"sh", "-c", line});
        EXPECT_EQ(outcome.exitCode, 1) << line;
        EXPECT_TRUE(outcome.text.contains("cannot write the output")) << line << outcome.text;
    }
}

TEST(ToolMisuse, AProgramThatIsEndedTakesItsNoteBack)
{
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP})
    {
        const test::ScratchFolder scratch;
        const auto list = scratch.child("PluginList.xml");
        if (const auto child = fork(); child == 0)
        {
            removeFilesAtSignals();
            const LoadNote note(list, "/an/instrument.so");
            raise(signalNumber);
            _exit(99);
        }
        else
        {
            int status = 0;
            ASSERT_EQ(waitpid(child, &status, 0), child);
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signalNumber);
        }
        EXPECT_TRUE(findLeftNotes(list).empty());
    }
}
#endif

} // namespace
} // namespace quorel
