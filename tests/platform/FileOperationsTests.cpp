// SPDX-License-Identifier: GPL-3.0-or-later
// What a crash, a full disk or an odd place leaves of files.
#include "platform/FileOperations.h"

#include "platform/FileReplacement.h"
#include "platform/Leftovers.h"
#include "support/EnvironmentVariable.h"
#include "support/FileTools.h"
#include "support/KilledRun.h"
#include "support/ScratchFolder.h"
#include "support/SmallDisk.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace quorel::test
{

TEST(FileOperations, WhatCannotBeReplacedStays)
{
    const ScratchFolder scratch;
    const auto file = scratch.child("A/" + juce::String::repeatedString("n", 240) + ".qrl");
    ASSERT_TRUE(replaceFile(file, blockOf("old"))) << "the temporary file's name must be shorter than this";
    ASSERT_TRUE(scratch.child("A/folder.qrl").createDirectory());
    EXPECT_FALSE(replaceFile(scratch.child("A/folder.qrl"), blockOf("x")));
    EXPECT_FALSE(replaceFile({}, blockOf("x")));
    scratch.write("file", "here");
    EXPECT_FALSE(replaceFile(scratch.child("file/x.qrl"), blockOf("x")));
    EXPECT_EQ(scratch.child("file").loadFileAsString(), "here");
    juce::MemoryBlock bytes;
    EXPECT_FALSE(readWholeFile(scratch.child("A"), bytes));
    EXPECT_FALSE(readWholeFile(scratch.child("none"), bytes));

    // Two gigabytes that take no room on the disk.
    const auto huge = scratch.child("huge.qrl");
    std::ofstream(std::filesystem::u8path(huge.getFullPathName().toStdString())).put('x');
    std::error_code error;
    std::filesystem::resize_file(std::filesystem::u8path(huge.getFullPathName().toStdString()), 2147483648u,
                                 error);

    EXPECT_FALSE(readWholeFile(huge, bytes) && !error);

    EXPECT_TRUE(readWholeFile(file, bytes) && bytes == blockOf("old"));
    EXPECT_EQ(numLeftovers(scratch.child("A")), 0);
}

TEST(FileOperations, AFullDiskKeepsTheOldFile)
{
    const SmallDisk disk(256);

    if (!disk.isThere())
        GTEST_SKIP() << "no disk can be mounted here";

    const auto file = disk.child("x.qrl");
    const juce::MemoryBlock old(60000, true);
    ASSERT_TRUE(replaceFile(file, old));

    // From a disk that has room for nothing to one that lacks the last page.
    for (const int free : {0, 4096, 20000, 56000})
    {
        disk.fill(free);
        const auto result = replaceFile(file, juce::MemoryBlock(70000, true));
        EXPECT_TRUE(result.getErrorMessage().containsIgnoreCase("space")) << result.getErrorMessage();
        const auto copied = copyFile(disk.child("ballast"), disk.child("copy"));
        EXPECT_TRUE(copied.failed()) << free;
        juce::MemoryBlock bytes;
        EXPECT_TRUE(readWholeFile(file, bytes) && bytes == old) << free;
        EXPECT_EQ(numLeftovers(disk.child("")), 0);
        EXPECT_FALSE(disk.child("copy").exists());
    }
}

namespace
{
constexpr const char* placeVariable = "QUOREL_TEST_PLACE";

juce::File placeForRuns()
{
    return juce::SystemStats::getEnvironmentVariable(placeVariable, {});
}

constexpr size_t zeroBytes = 200000;

juce::MemoryBlock ones()
{
    juce::MemoryBlock bytes(150000);
    bytes.fillWith(1);
    return bytes;
}
} // namespace

/** A program that saves until it is killed; should nobody do so, it ends after a while. */
TEST(FileOperations, DISABLED_SavesUntilItIsKilled)
{
    const auto folder = placeForRuns();
    ASSERT_NE(folder, juce::File());
    ASSERT_TRUE(folder.getSiblingFile("started").create());

    for (const auto start = juce::Time::getMillisecondCounter();
         juce::Time::getMillisecondCounter() - start < static_cast<juce::uint32>(patienceWithPrograms);)
    {
        replaceFile(folder.getChildFile("x.qrl"), ones());
        replaceFile(folder.getChildFile("x.qrl"), juce::MemoryBlock(zeroBytes, true));
    }
}

/** A program that only looks at the folder. */
TEST(FileOperations, DISABLED_TidiesUp)
{
    ASSERT_NE(placeForRuns(), juce::File());
    removeLeftovers(placeForRuns());
}

TEST(FileOperations, AKilledSaveLeavesAWholeFileAndTheNextRunTidiesUp)
{
    const ScratchFolder scratch;
    const auto file = scratch.child("A/x.qrl");
    const juce::MemoryBlock zeros(zeroBytes, true);
    ASSERT_TRUE(replaceFile(file, zeros));
    setVariable(placeVariable, scratch.child("A").getFullPathName());
    int most = 0;

    for (int round = 0; round < 24 && (round < 8 || most == 0); ++round)
    {
        ASSERT_TRUE(scratch.child("started").deleteFile());
        juce::ChildProcess saving;
        ASSERT_TRUE(saving.start(onlyTest("FileOperations.DISABLED_SavesUntilItIsKilled"), 0));

        for (int i = 0; i < patienceWithPrograms && !scratch.child("started").exists(); ++i)
            juce::Thread::sleep(1);

        juce::Thread::sleep(2 + 2 * round);
        saving.kill();
        ASSERT_TRUE(saving.waitForProcessToFinish(patienceWithPrograms));
        juce::MemoryBlock bytes;
        ASSERT_TRUE(readWholeFile(file, bytes));
        ASSERT_TRUE(bytes == zeros || bytes == ones()) << round;
        most = juce::jmax(most, numLeftovers(scratch.child("A")));
    }

    EXPECT_GT(most, 0) << "no save was killed in its middle";

    // Another folder's name, as this process has looked at the first one; and a file that is being written.
    ASSERT_TRUE(scratch.child("A").moveFileTo(scratch.child("B")));
    scratch.write("B/.quorel.tmp", "somebody's own");
    FileReplacement living(scratch.child("B/y.qrl"));
    setVariable(placeVariable, scratch.child("B").getFullPathName());
    juce::ChildProcess tidying;
    ASSERT_TRUE(tidying.start(onlyTest("FileOperations.DISABLED_TidiesUp"), 0));
    ASSERT_TRUE(tidying.waitForProcessToFinish(patienceWithPrograms));
    EXPECT_EQ(tidying.getExitCode(), 0u);
    EXPECT_EQ(numLeftovers(scratch.child("B")), 2);
    living.stream().writeText("whole", false, false, nullptr);
    EXPECT_TRUE(living.finish());
    EXPECT_EQ(scratch.child("B/y.qrl").loadFileAsString(), "whole");
    EXPECT_EQ(scratch.child("B/.quorel.tmp").loadFileAsString(), "somebody's own");
}

} // namespace quorel::test
