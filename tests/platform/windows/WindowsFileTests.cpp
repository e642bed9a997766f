// SPDX-License-Identifier: GPL-3.0-or-later
// What Windows alone does with files and settings: what others hold open, long paths, names of devices, the recycle bin,
// the registry.
#include "PlatformFiles.h"
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/FolderUpdate.h"
#include "platform/PlatformSeam.h"
#include "platform/PlatformSeamFiles.h"
#include "platform/UserPaths.h"
#include "presets/PresetFiles.h"
#include "support/FileTools.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <thread>

#include <windows.h>

#include <shellapi.h>

namespace quorel::test
{

namespace
{
juce::String textIn(const juce::File& file)
{
    juce::MemoryBlock bytes;
    return readWholeFile(file, bytes) ? bytes.toString() : "can't be read";
}

/** Has a file open while it lives, as another program would. */
class OtherProgram
{
public:
    OtherProgram(const juce::File& file, DWORD share)
        : handle(CreateFileW(file.getFullPathName().toWideCharPointer(), GENERIC_READ, share, nullptr,
                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        EXPECT_NE(handle, INVALID_HANDLE_VALUE);
    }

    ~OtherProgram() { CloseHandle(handle); }

private:
    const HANDLE handle;
};

/** A user's folder as it may be called. */
const juce::String profile = juce::String::fromUTF8(
    "\xd0\x98\xd0\xb2\xd0\xb0\xd0\xbd \xd0\x9f\xd0\xb5\xd1\x82\xd1\x80\xd0\xbe\xd0\xb2 \xe6\x9d\xb1");
} // namespace

TEST(WindowsFiles, WhatAnotherProgramHoldsOpenIsNotLost)
{
    const ScratchFolder scratch;
    const auto file = scratch.child("A\\x.qrl");
    ASSERT_TRUE(replaceFile(file, blockOf("old")));

    for (const DWORD share : {DWORD{0}, DWORD{FILE_SHARE_READ}, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}})
    {
        const OtherProgram other(file, share);
        const auto start = juce::Time::getMillisecondCounter();

        for (const auto& result : {replaceFile(file, blockOf("new")),
                                   moveFile(file, scratch.child("A\\y.qrl")), deleteForGood(file)})
            EXPECT_EQ(result.getErrorMessage(), "another program has it open") << share;

        EXPECT_LT(juce::Time::getMillisecondCounter() - start, 3 * 1000u);
    }

    EXPECT_EQ(textIn(file), "old");
    EXPECT_EQ(scratch.child("A").getNumberOfChildFiles(juce::File::findFilesAndDirectories), 1)
        << "a left-over";

    // Somebody who looks at it for a moment is waited for, in reading as well.
    for (const bool replaces : {true, false})
    {
        auto other = std::make_unique<OtherProgram>(file, 0);
        std::thread closing(
            [&other]
            {
                Sleep(150);
                other.reset();
            });
        EXPECT_EQ(replaces ? replaceFile(file, blockOf("new")).getErrorMessage() : textIn(file),
                  replaces ? "" : "new");
        closing.join();
    }
}

TEST(WindowsFiles, AFileIsReplacedInOneStepWhileOthersReadIt)
{
    const ScratchFolder scratch;
    const auto file = scratch.child("x.qrl");
    const auto zeros = juce::MemoryBlock(60000, true);
    juce::MemoryBlock ones(90000);
    ones.fillWith(1);
    ASSERT_TRUE(replaceFile(file, zeros));
    std::atomic<bool> done{false};
    std::atomic<int> numRead{0};
    std::thread reader(
        [&]
        {
            while (!done)
            {
                juce::MemoryBlock bytes;
                EXPECT_TRUE(readWholeFile(file, bytes));
                EXPECT_TRUE(bytes == zeros || bytes == ones) << bytes.getSize();
                ++numRead;
                Sleep(5);
            }
        });

    for (int i = 0; i < 60; ++i)
        EXPECT_EQ(replaceFile(file, i % 2 == 0 ? ones : zeros).getErrorMessage(), "") << i;

    done = true;
    reader.join();
    EXPECT_GT(numRead, 3);
}

TEST(WindowsFiles, AMarkIsInNobodysWayAndSeenByAll)
{
    const ScratchFolder scratch;
    std::error_code error;
    auto mark = createMarkedFile(scratch.child("file"), error);
    ASSERT_NE(mark, nullptr) << messageOf(error);
    EXPECT_EQ(createMarkedFile(scratch.child("file"), error), nullptr);
    EXPECT_TRUE(scratch.child("file").appendText("x"));
    EXPECT_EQ(claimAbandoned(scratch.child("file")), nullptr);
    EXPECT_TRUE(moveFile(scratch.child("file"), scratch.child("moved")));
    EXPECT_EQ(claimAbandoned(scratch.child("moved")), nullptr);
    mark.reset();
    EXPECT_NE(claimAbandoned(scratch.child("moved")), nullptr);

    ASSERT_TRUE(scratch.child("folder").createDirectory());
    auto folderMark = claimAbandoned(scratch.child("folder"));
    ASSERT_NE(folderMark, nullptr);
    EXPECT_EQ(claimAbandoned(scratch.child("folder")), nullptr);
    EXPECT_TRUE(replaceFile(scratch.child("folder\\x"), blockOf("x")));
    EXPECT_TRUE(moveFile(scratch.child("folder"), scratch.child("whole")));
    EXPECT_EQ(claimAbandoned(scratch.child("whole")), nullptr);
    EXPECT_TRUE(deleteForGood(scratch.child("whole")));
    folderMark.reset();
    EXPECT_FALSE(scratch.child("whole").exists());
}

TEST(WindowsFiles, PathsHaveAnyLength)
{
    const ScratchFolder scratch;
    // The setting itself comes near the limit; or a folder and a preset pass it.
    const auto deep = scratch.path().getFullPathName() + "\\" +
                      juce::String::repeatedString("a folder of some length\\", 10) + profile;
    const auto shallow = scratch.path().getFullPathName() + "\\Banks";

    for (const auto& setting : {deep, shallow})
    {
        const auto banks = fileOfSetting(setting);
        const auto folder = juce::String::repeatedString("f", 120);
        const auto name = profile + juce::String::repeatedString("n", 120);
        const auto file = presetFileFor(banks, folder, name);
        ASSERT_GT(file.getFullPathName().length(), 260);
        EXPECT_EQ(replaceFile(file, blockOf("one")).getErrorMessage(), "");
        EXPECT_EQ(replaceFile(file, blockOf("two")).getErrorMessage(), "");
        EXPECT_EQ(textIn(file), "two");
        EXPECT_EQ(listPresetFolders(banks).joinIntoString("|"), folder);
        EXPECT_EQ(listPresets(childNamed(banks, folder)).joinIntoString("|"), name);
        EXPECT_EQ(findPresetFile(banks, folder, name), file);
        EXPECT_EQ(folderHolding(banks, file), folder);
        FolderUpdate update(childNamed(banks, folder));
        EXPECT_TRUE(update.add(name + "2.qrl", blockOf("three")));
        EXPECT_TRUE(update.finish());
        EXPECT_EQ(textIn(presetFileFor(banks, folder, name + "2")), "three");
        EXPECT_TRUE(moveFile(file, presetFileFor(banks, folder, "short")));
        EXPECT_TRUE(deleteForGood(presetFileFor(banks, folder, "short")));
        // The recycle bin doesn't know such paths, and the user is asked.
        bool asked = false;
        const auto gone = discardFile(presetFileFor(banks, folder, name + "2"),
                                      [&asked](const juce::String&) { return asked = true; });
        EXPECT_TRUE(asked && gone.outcome == Discarded::Outcome::gone);
        EXPECT_TRUE(listPresets(childNamed(banks, folder)).isEmpty());
    }

    EXPECT_TRUE(deleteForGood(fileOfSetting(deep)));
    EXPECT_TRUE(deleteForGood(reachable(scratch.child("a folder of some length"))));
}

TEST(WindowsFiles, NamesOfDevicesAndStreamsAreNoFiles)
{
    const ScratchFolder scratch;

    for (const char* name : {"CON.qrl", "nul", "com1.x", "Aux.", "dot.", "blank ", "x.qrl:stream", "a\\b",
                             "a/b", "C:", "a*b", "what?", "tab\tbed"})
        EXPECT_EQ(childNamed(scratch.path(), name), juce::File()) << name;

    EXPECT_NE(childNamed(scratch.path(), "Console.qrl"), juce::File());
    EXPECT_FALSE(replaceFile(childNamed(scratch.path(), "CON.qrl"), blockOf("x")));

    for (const char* path : {"C:Banks", "\\Banks", "/Banks", "Banks", "..\\Banks", "C", ""})
        EXPECT_EQ(fileOfSetting(path), juce::File()) << path;

    for (const char* path : {"C:\\Banks", "c:/Banks", "\\\\server\\share\\Banks"})
        EXPECT_NE(fileOfSetting(path), juce::File()) << path;
}

TEST(WindowsFiles, WriteProtectionStandsAgainstReplacing)
{
    const ScratchFolder scratch;
    const auto file = scratch.write(profile + "\\x.qrl", "old");
    ASSERT_TRUE(file.setReadOnly(true));
    EXPECT_NE(replaceFile(file, blockOf("new")).getErrorMessage(), "");
    EXPECT_EQ(textIn(file), "old");
    EXPECT_TRUE(deleteForGood(file)) << "but not against the folder's owner";

    const auto hidden = scratch.write("hidden", "old");
    SetFileAttributesW(hidden.getFullPathName().toWideCharPointer(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(replaceFile(hidden, blockOf("new")));
    EXPECT_TRUE(hidden.isHidden());
}

TEST(WindowsFiles, DiscardedFilesGoToTheRecycleBin)
{
    const ScratchFolder scratch;
    const auto file = scratch.write(profile + "\\x.qrl", "x");
    const auto numBinned = []
    {
        SHQUERYRBINFO bin{};
        bin.cbSize = sizeof(bin);
        return SUCCEEDED(SHQueryRecycleBinW(nullptr, &bin)) ? bin.i64NumItems : -1;
    };
    const auto before = numBinned();

    if (before < 0)
        GTEST_SKIP() << "there is no recycle bin";

    const auto neverAsked = [](const juce::String& question)
    {
        ADD_FAILURE() << question;
        return false;
    };
    EXPECT_EQ(discardFile(file, neverAsked).outcome, Discarded::Outcome::gone);
    EXPECT_EQ(discardFile(file.getParentDirectory(), neverAsked).outcome, Discarded::Outcome::gone);
    EXPECT_FALSE(file.getParentDirectory().exists());
    EXPECT_EQ(numBinned(), before + 2);
    EXPECT_EQ(discardFile(file, neverAsked).outcome, Discarded::Outcome::failed);
}

/** A user without OSTRAND_HOME, whose settings are in the registry. */
class Registry : public testing::Test
{
protected:
    Registry() { SetEnvironmentVariableW(L"OSTRAND_HOME", nullptr); }

    ~Registry() override
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, L"SOFTWARE\\Ostrand\\QuorelTest");
        adoptUserPlaces(prefix);
    }

    const juce::File prefix{juce::SystemStats::getEnvironmentVariable("OSTRAND_HOME", {})};
};

TEST_F(Registry, KeepsTextsOfAnyLengthAndLanguage)
{
    const juce::String key("SOFTWARE\\Ostrand\\QuorelTest");
    const auto store = makeUserStore();
    EXPECT_EQ(store->read(key, "Banks Path"), "");

    for (const auto& text :
         {"C:\\Users\\" + profile + "\\Banks", juce::String::repeatedString(profile, 3000), juce::String()})
    {
        EXPECT_TRUE(store->write(key, "Banks Path", text));
        EXPECT_TRUE(makeUserStore()->read(key.toLowerCase(), "banks path") == text) << text.length();
        // The instruments read with code of their own.
        EXPECT_EQ(readUserSetting(key.toStdString(), "Banks Path"), text.toStdString()) << text.length();
    }

    // What others write may lack its end mark, or hold the name of a variable.
    const auto set = [](const wchar_t* name, DWORD type, const wchar_t* text, DWORD numCharacters)
    {
        return RegSetKeyValueW(HKEY_CURRENT_USER, L"SOFTWARE\\Ostrand\\QuorelTest", name, type, text,
                               numCharacters * static_cast<DWORD>(sizeof(wchar_t)));
    };
    set(L"open", REG_SZ, L"textnot", 4);
    SetEnvironmentVariableW(L"QUOREL_TEST", L"value");
    set(L"expanded", REG_EXPAND_SZ, L"%QUOREL_TEST%\\x", 16);
    set(L"number", REG_DWORD, L"12", 2);
    EXPECT_EQ(store->read(key, "open"), "text");
    EXPECT_EQ(readUserSetting(key.toStdString(), "open"), "text");
    EXPECT_EQ(store->read(key, "expanded"), "value\\x");
    EXPECT_EQ(store->read(key, "number"), "");
    EXPECT_EQ(userPlaces().settingsFolder.getFileName(), "Ostrand");
    EXPECT_FALSE(userPlaces().settingsFolder.isAChildOf(prefix));
}

} // namespace quorel::test
