// SPDX-License-Identifier: GPL-3.0-or-later
// Modes, links, limits and the trash of Linux.
#include "platform/FileOperations.h"
#include "platform/FolderUpdate.h"
#include "platform/PlatformSeamFiles.h"
#include "platform/SharedFile.h"
#include "support/EnvironmentVariable.h"
#include "support/FileTools.h"
#include "support/FullDisk.h"
#include "support/ScratchFolder.h"
#include "support/SmallDisk.h"

#include <atomic>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace quorel::test
{

namespace
{
const auto nobodyAsked = [](const juce::String& question)
{
    ADD_FAILURE() << question;
    return false;
};
} // namespace

TEST(SharedFileLock, IsThereInAFolderThatAnotherMakesAtTheSameMoment)
{
    const ScratchFolder scratch;
    constexpr int rounds = 400;
    std::atomic<int> round{-1};
    const auto folderOf = [&scratch](int number) { return scratch.child(juce::String(number) + "/a/b"); };
    std::thread other(
        [&]
        {
            for (int i = 0; i < rounds; ++i)
            {
                while (round.load() < i)
                    std::this_thread::yield();
                EXPECT_TRUE(createFolder(folderOf(i)));
            }
        });

    for (int i = 0; i < rounds; ++i)
    {
        round.store(i);
        const SharedFileLock lock(folderOf(i).getChildFile("x"));
        EXPECT_TRUE(lock.isHeld() && folderOf(i).getChildFile("x.lock").existsAsFile()) << i;
    }

    other.join();
}

TEST(FileOperations, AProcessThatTidiesUpIsInNobodysWay)
{
    const ScratchFolder scratch;
    std::atomic<bool> isDone{false};
    // As another process takes up what killed ones have left.
    std::thread other(
        [&]
        {
            std::error_code error;
            while (!isDone.load())
                for (const auto& entry : entriesOf(scratch.path(), error))
                    if (const auto file = scratch.child(entry.name); entry.name.startsWith(".quorel-"))
                        if (const auto claimed = claimAbandoned(file))
                            removeAll(file);
        });

    for (int i = 0; i < 400; ++i)
    {
        const auto result = replaceFile(scratch.child("x"), blockOf("new"));
        EXPECT_TRUE(result) << result.getErrorMessage();
        FolderUpdate update(scratch.path());
        EXPECT_TRUE(update.add("y", blockOf("new")) && update.finish()) << i;
    }

    isDone.store(true);
    other.join();
}

TEST(FileOperations, AFileThatGrowsTooLongKeepsItsOldContents)
{
    const ScratchFolder scratch;
    const auto file = scratch.child("A/x.qrl");
    ASSERT_TRUE(replaceFile(file, blockOf("old")));
    // No file may be longer than 4 KiB, which shows in the middle of a block.
    {
        const FullDisk limit(4096);
        const auto result = replaceFile(file, juce::MemoryBlock(100000, true));
        EXPECT_TRUE(result.failed() && result.getErrorMessage().isNotEmpty());
        EXPECT_TRUE(replaceFile(scratch.child("A/small.qrl"), blockOf("fits")));
    }
    EXPECT_EQ(file.loadFileAsString(), "old");
    EXPECT_EQ(numLeftovers(scratch.child("A")), 0);
}

TEST(FileOperations, AReplacedFileKeepsItsModeAndItsLink)
{
    const ScratchFolder scratch;
    const auto pathTo = [&](const char* name) { return scratch.child(name).getFullPathName().toStdString(); };
    scratch.write("elsewhere/x.qrl", "old");
    scratch.child("banks").createDirectory();
    ASSERT_EQ(chmod(pathTo("elsewhere/x.qrl").c_str(), 0640), 0);
    ASSERT_EQ(symlink("../elsewhere/x.qrl", pathTo("banks/x.qrl").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", pathTo("banks/dangling").c_str()), 0);
    ASSERT_EQ(symlink("loop", pathTo("banks/loop").c_str()), 0);
    ASSERT_EQ(mkfifo(pathTo("banks/pipe").c_str(), 0600), 0);

    EXPECT_TRUE(replaceFile(scratch.child("banks/x.qrl"), blockOf("new")));
    EXPECT_TRUE(scratch.child("banks/x.qrl").isSymbolicLink());
    EXPECT_EQ(scratch.child("elsewhere/x.qrl").loadFileAsString(), "new");
    struct stat status = {};
    ASSERT_EQ(stat(pathTo("elsewhere/x.qrl").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);

    for (const char* name : {"banks/dangling", "banks/loop", "banks/pipe"})
        EXPECT_FALSE(replaceFile(scratch.child(name), blockOf("x"))) << name;

    EXPECT_TRUE(scratch.child("banks/dangling").isSymbolicLink());
    EXPECT_FALSE(scratch.child("banks/nowhere").exists());
    EXPECT_EQ(numLeftovers(scratch.child("banks")) + numLeftovers(scratch.child("elsewhere")), 0);
}

/** Gives the process a folder of its own for the trash while it lives. */
class FilesOfTheUser : public testing::Test
{
protected:
    void useDataHome(const juce::File& folder) const
    {
        setVariable("XDG_DATA_HOME", folder.getFullPathName());
    }

    ~FilesOfTheUser() override { setVariable("XDG_DATA_HOME", oldHome); }

    const juce::String oldHome = std::getenv("XDG_DATA_HOME");
    const ScratchFolder scratch;
};

TEST_F(FilesOfTheUser, DiscardedFilesGoToTheTrashWithTheirPath)
{
    using Outcome = Discarded::Outcome;
    useDataHome(scratch.path());
    const auto folder = scratch.child(juce::CharPointer_UTF8("Banks/50% \xc3\xa9"));
    const auto trash = scratch.child("Trash");
    // It is made where it is missing, for this user's eyes alone.

    for (const char* content : {"first", "second"})
    {
        ASSERT_TRUE(replaceFile(folder.getChildFile("x.qrl"), blockOf(content)));
        EXPECT_EQ(discardFile(folder.getChildFile("x.qrl"), nobodyAsked).outcome, Outcome::gone);
    }

    for (const char* part : {"", "files", "info"})
    {
        struct stat status = {};
        ASSERT_EQ(stat(trash.getChildFile(part).getFullPathName().toRawUTF8(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, 0700u);
    }

    EXPECT_EQ(trash.getChildFile("files/x.qrl").loadFileAsString(), "first");
    EXPECT_EQ(trash.getChildFile("files/x.qrl.2").loadFileAsString(), "second");
    const auto record = trash.getChildFile("info/x.qrl.2.trashinfo").loadFileAsString();
    EXPECT_TRUE(record.startsWith("[Trash Info]\nPath=" + scratch.path().getFullPathName() +
                                  "/Banks/50%25%20%C3%A9/x.qrl\nDeletionDate=20"))
        << record;

    // A link is removed alone; a folder with all its contents.
    const auto link = scratch.child("Banks/link");
    ASSERT_TRUE(replaceFile(scratch.child("kept/y.qrl"), blockOf("kept")));
    ASSERT_TRUE(scratch.child("kept").createSymbolicLink(link, false));
    EXPECT_EQ(discardFile(link, nobodyAsked).outcome, Outcome::gone);
    EXPECT_EQ(discardFile(folder, nobodyAsked).outcome, Outcome::gone);
    EXPECT_TRUE(trash.getChildFile("files").getChildFile(folder.getFileName()).isDirectory());

    // Without a trash the user is asked, and nothing is deleted on a no.
    trash.deleteRecursively();
    ASSERT_TRUE(trash.replaceWithText("no folder"));
    ASSERT_TRUE(scratch.child("kept").createSymbolicLink(link, false));
    for (const bool answer : {false, true})
    {
        const auto agrees = [answer](const juce::String& question)
        {
            EXPECT_EQ(question, "link can't be moved to the trash. Delete it for good ?");
            return answer;
        };
        EXPECT_EQ(discardFile(link, agrees).outcome, answer ? Outcome::gone : Outcome::kept);
        EXPECT_EQ(link.isSymbolicLink(), !answer);
    }
    EXPECT_EQ(scratch.child("kept/y.qrl").loadFileAsString(), "kept");
    EXPECT_EQ(discardFile(scratch.child("gone"), nobodyAsked).outcome, Outcome::failed);
}

TEST_F(FilesOfTheUser, ATrashOnAnotherDiskTakesAllOrNothing)
{
    const SmallDisk disk(256);

    if (!disk.isThere())
        GTEST_SKIP() << "no disk can be mounted here";

    useDataHome(disk.child(""));
    const auto trash = disk.child("Trash");
    ASSERT_TRUE(trash.createDirectory());
    const auto folder = scratch.child("Banks/Mine");

    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(
            replaceFile(folder.getChildFile(juce::String(i) + ".qrl"), juce::MemoryBlock(9000, true)));

    ASSERT_EQ(chmod(folder.getChildFile("7.qrl").getFullPathName().toRawUTF8(), 0600), 0);
    ASSERT_EQ(symlink("7.qrl", folder.getChildFile("linked.qrl").getFullPathName().toRawUTF8()), 0);

    for (const int free : {0, 9000, 100000})
    {
        disk.fill(free);
        EXPECT_TRUE(moveToTrash(folder).failed()) << free;
        EXPECT_EQ(folder.getNumberOfChildFiles(juce::File::findFiles), 21);
        EXPECT_EQ(trash.getNumberOfChildFiles(juce::File::findFilesAndDirectories, "*Mine*"), 0);

        for (const char* part : {"files", "info"})
            EXPECT_EQ(trash.getChildFile(part).getNumberOfChildFiles(juce::File::findFilesAndDirectories), 0)
                << "half a copy is left";
    }

    disk.child("ballast").deleteFile();
    EXPECT_TRUE(moveToTrash(folder).wasOk());
    EXPECT_FALSE(folder.exists());
    const auto copy = trash.getChildFile("files/Mine");
    EXPECT_EQ(copy.getNumberOfChildFiles(juce::File::findFiles), 21);
    EXPECT_EQ(copy.getChildFile("19.qrl").getSize(), 9000);
    EXPECT_TRUE(copy.getChildFile("linked.qrl").isSymbolicLink());
    struct stat status = {};
    ASSERT_EQ(stat(copy.getChildFile("7.qrl").getFullPathName().toRawUTF8(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
}

} // namespace quorel::test
