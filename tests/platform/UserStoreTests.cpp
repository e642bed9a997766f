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
    const juce::StringArray broken{
        "not XML at all", "<PROPERTIES><VALUE name=\"SOFTWARE\\Ostrand\\Quorel\\Banks Path\" val=\"/x\"",
        "<OTHER><VALUE name=\"a\" val=\"b\"/></OTHER>", "<", "PROP\x01\x02"};
    const test::ScratchFolder folder;
    const auto file = folder.child("Registry.xml");
    FileUserStore store(file);
    for (int i = 0; i < broken.size(); ++i)
    {
        file.replaceWithText(broken[i]);
        EXPECT_EQ(store.read(key, "Banks Path"), "") << broken[i];
        EXPECT_EQ(file.loadFileAsString(), broken[i]) << "reading leaves the file alone";
    }

    file.replaceWithText(broken[0]);
    ASSERT_TRUE(store.write(key, "Banks Path", "/new"));
    EXPECT_EQ(store.read(key, "Banks Path"), "/new");
    EXPECT_EQ(folder.child("Registry.xml.broken").loadFileAsString(), broken[0]);

    file.replaceWithText(broken[1]);
    ASSERT_TRUE(store.write(key, "Banks Path", "/newer"));
    EXPECT_EQ(folder.child("Registry.xml.broken").loadFileAsString(), broken[0]) << "an earlier copy is lost";
    EXPECT_EQ(folder.child("Registry.xml.broken2").loadFileAsString(), broken[1]);
}

TEST(UserStore, UnwritablePlacesAreReported)
{
    const test::ScratchFolder folder;
    folder.write("file", "a file where a folder should be");
    FileUserStore store(folder.child("file/Ostrand/Registry.xml"));
    EXPECT_FALSE(store.write(key, "Banks Path", "/x"));
    EXPECT_EQ(store.read(key, "Banks Path"), "");
    FileUserStore nowhere((juce::File()));
    EXPECT_FALSE(nowhere.write(key, "Banks Path", "/x"));
    folder.child("dir.xml").createDirectory();
    FileUserStore onFolder(folder.child("dir.xml"));
    EXPECT_FALSE(onFolder.write(key, "Banks Path", "/x"));
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

TEST(UserPaths, CutKeepsUpToTheLastOstrand)
{
    const std::vector<std::pair<juce::String, juce::String>> cases{
        {"", ""},
        {"/opt/vst", "/opt/vst"},
        {"/opt/Ostrand", "/opt/Ostrand"},
        {"/opt/Ostrand/Zeph/Zeph.so", "/opt/Ostrand"},
        {"/Ostrand/plugins/OSTRAND-old/x", "/Ostrand/plugins/OSTRAND"},
        {"/home/ostrander/vst", "/home/ostrand"},
        {"Ostrand", "Ostrand"},
    };
    for (const auto& [path, cut] : cases)
        EXPECT_EQ(cutAtOstrand(path), cut);
}

TEST(UserPaths, ReadsTheSixPathsAndCreatesNothing)
{
    const test::ScratchFolder folder;
    const auto store = makeUserStore(userPlaces(folder.path()));
    for (const auto& path : {readPaths(*store).banksFolder, readPaths(*store).pluginFolder})
        EXPECT_EQ(path, juce::File());

    const auto at = [&folder](const char* name) { return folder.child(name).getFullPathName(); };
    store->write(key, "Banks Path", at("b"));
    store->write(key, "Layouts Path", at("l"));
    store->write(key, "Help Path", at("h"));
    store->write(key, "ECS Path", "relative/ecs");
    store->write(key, "Plug64 List", at("list.xml"));
    EXPECT_TRUE(writePluginFolder(*store, at("Ostrand/Zeph")));

    const auto paths = readPaths(*store);
    EXPECT_EQ(paths.banksFolder, folder.child("b"));
    EXPECT_EQ(paths.layoutsFolder, folder.child("l"));
    EXPECT_EQ(paths.helpFolder, folder.child("h"));
    EXPECT_EQ(paths.ecsFolder, juce::File()) << "a relative path leads nowhere";
    EXPECT_EQ(paths.pluginListFile, folder.child("list.xml"));
    EXPECT_EQ(paths.pluginFolder, folder.child("Ostrand"));
    EXPECT_EQ(store->read(key, "x64 Path"), at("Ostrand/Zeph")) << "the setting itself stays whole";
    EXPECT_FALSE(paths.banksFolder.exists());
    EXPECT_TRUE(folder.child("config/Ostrand/Registry.xml").existsAsFile());
}

} // namespace quorel
