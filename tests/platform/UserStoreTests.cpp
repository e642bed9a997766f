// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UserStore.h"

#include "platform/PlatformSeam.h"
#include "platform/UserPaths.h"
#include "support/ScratchFolder.h"
#include "support/SmallDisk.h"

#include <gtest/gtest.h>
#include <thread>

namespace quorel
{

namespace
{
constexpr const char* key = "SOFTWARE\\Ostrand\\Quorel";
}

TEST(UserStore, KeepsWhatWasWrittenAndSeesOtherWriters)
{
    const test::ScratchFolder folder;
    const auto file = folder.child("deep/Ostrand/Registry.xml");
    FileUserStore store(file);
    FileUserStore other(file);
    EXPECT_EQ(store.read(key, "Banks Path"), "");
    EXPECT_FALSE(file.exists()) << "reading creates nothing";

    const juce::String awkward = juce::CharPointer_UTF8("/home/J\xc3\xbcrgen & \"S\xc3\xb8n\"/<banks>/a\\b/");
    const auto longPath = "/" + juce::String::repeatedString("long folder name/", 60);
    EXPECT_TRUE(store.write(key, "Banks Path", awkward));
    EXPECT_TRUE(other.write(key, "x64 Path", longPath));
    EXPECT_TRUE(store.write("SOFTWARE\\KTMD\\Tarn", "Bank", "here"));

    EXPECT_EQ(other.read(key, "Banks Path"), awkward);
    EXPECT_EQ(store.read(key, "x64 Path"), longPath);
    EXPECT_EQ(store.read("software\\ktmd\\tarn", "BANK"), "here");
    EXPECT_EQ(store.read(key, "Bank"), "");

    EXPECT_TRUE(other.write(key, "Banks Path", "second"));
    EXPECT_EQ(store.read(key, "Banks Path"), "second");
    EXPECT_EQ(store.read(key, "x64 Path"), longPath);

    // The siblings read the same file with code of their own.
    const auto xml = juce::parseXML(file);
    ASSERT_NE(xml, nullptr);
    const auto* value = xml->getChildByAttribute("name", "SOFTWARE\\Ostrand\\Quorel\\Banks Path");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->getStringAttribute("val"), "second");
}

TEST(UserStore, BrokenFilesReadAsEmptyAndAreKeptAside)
{
    const juce::String broken[] = {
        "not XML at all", "<PROPERTIES><VALUE name=\"SOFTWARE\\Ostrand\\Quorel\\Banks Path\" val=\"/x\"",
        "<OTHER><VALUE name=\"a\" val=\"b\"/></OTHER>", "<", "PROP\x01\x02"};
    const test::ScratchFolder folder;
    const auto file = folder.child("Registry.xml");
    FileUserStore store(file);
    for (const auto& text : broken)
    {
        file.replaceWithText(text);
        EXPECT_EQ(store.read(key, "Banks Path"), "") << text;
        EXPECT_EQ(file.loadFileAsString(), text) << "reading leaves the file alone";
        ASSERT_TRUE(store.write(key, "Banks Path", "/new"));
        EXPECT_EQ(store.read(key, "Banks Path"), "/new");
    }
    EXPECT_EQ(folder.child("Registry.xml.broken").loadFileAsString(), broken[0]) << "an earlier copy is lost";
    EXPECT_EQ(folder.child("Registry.xml.broken2").loadFileAsString(), broken[1]);
}

TEST(UserStore, WhatIsNestedWithoutEndReadsAsBroken)
{
    const test::ScratchFolder folder;
    const auto file = folder.child("Registry.xml");
    FileUserStore store(file);
    for (const juce::String& nested : {juce::String::repeatedString("<a>", 500000),
                                       juce::String("<!DOCTYPE a [<!ENTITY b \"&b;&b;\">]><a>&b;</a>")})
    {
        ASSERT_TRUE(file.replaceWithText(nested));
        EXPECT_EQ(store.read(key, "0"), "");
        EXPECT_TRUE(store.write(key, "0", "new"));
        EXPECT_EQ(store.read(key, "0"), "new");
    }
}

TEST(UserStore, AFullDiskLosesNoSetting)
{
    const test::SmallDisk disk(64);

    if (!disk.isThere())
        GTEST_SKIP() << "no disk can be mounted here";

    FileUserStore store(disk.child("Registry.xml"));

    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(store.write(key, juce::String(i), juce::String::repeatedString("x", 100)));

    for (const int free : {0, 4096, 8192})
    {
        disk.fill(free);
        EXPECT_FALSE(store.write(key, "0", juce::String::repeatedString("y", 100)));
        EXPECT_EQ(store.read(key, "0"), juce::String::repeatedString("x", 100));
        EXPECT_EQ(store.read(key, "99"), juce::String::repeatedString("x", 100));
    }

    // Nor is a broken file given up before its copy is whole.
    disk.child("ballast").deleteFile();
    const auto broken = "no XML " + juce::String::repeatedString("z", 9000);
    disk.child("Registry.xml").replaceWithText(broken);
    disk.fill(8192);
    EXPECT_FALSE(store.write(key, "0", "new"));
    EXPECT_EQ(disk.child("Registry.xml").loadFileAsString(), broken);
}

TEST(UserStore, ConcurrentWritersLoseNothing)
{
    const test::ScratchFolder folder;
    const auto file = folder.child("Registry.xml");
    constexpr int perWriter = 15;
    std::vector<std::thread> writers;
    for (int w = 0; w < 3; ++w)
        writers.emplace_back(
            [&file, w]
            {
                FileUserStore store(file);
                for (int i = 0; i < perWriter; ++i)
                    store.write(key, juce::String(w) + "/" + juce::String(i), juce::String(i));
            });
    for (auto& writer : writers)
        writer.join();

    const FileUserStore store(file);
    for (int w = 0; w < 3; ++w)
        for (int i = 0; i < perWriter; ++i)
            EXPECT_EQ(store.read(key, juce::String(w) + "/" + juce::String(i)), juce::String(i));
}

TEST(UserPaths, AreAbsoluteAndEndAtTheLastOstrand)
{
    const test::ScratchFolder folder;
    const auto store = makeUserStore(userPlaces(folder.path()));
    EXPECT_EQ(readPaths(*store).banksFolder, juce::File());
    EXPECT_EQ(readPaths(*store).pluginFolder, juce::File());

    const auto at = [&folder](const char* name) { return folder.child(name).getFullPathName(); };
    store->write(key, "Banks Path", at("b"));
    store->write(key, "ECS Path", "relative/ecs");
    EXPECT_EQ(readPaths(*store).banksFolder, folder.child("b"));
    EXPECT_EQ(readPaths(*store).ecsFolder, juce::File()) << "a relative path leads nowhere";
    EXPECT_FALSE(folder.child("b").exists());

    const std::pair<const char*, const char*> cases[] = {
        {"vst", "vst"},
        {"Ostrand", "Ostrand"},
        {"Ostrand/plugins/OSTRAND-old/x", "Ostrand/plugins/OSTRAND"},
        {"ostrander/vst", "ostrand"}};
    for (const auto& [setting, cut] : cases)
    {
        EXPECT_TRUE(writePluginFolder(*store, at(setting)));
        EXPECT_EQ(readPaths(*store).pluginFolder, folder.child(cut));
        EXPECT_EQ(store->read(key, "x64 Path"), at(setting)) << "the setting itself stays whole";
    }
}

} // namespace quorel
