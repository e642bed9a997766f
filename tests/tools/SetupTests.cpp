// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandRuns.h"

#include "hosting/InstrumentTable.h"
#include "hosting/PluginScanner.h"
#include "platform/PlatformSeam.h"
#include "platform/PlatformSeamProduct.h"
#include "platform/UserPaths.h"
#include "platform/Version.h"
#include "support/EnvironmentVariable.h"
#include "support/KilledRun.h"
#include "support/RecordingInteraction.h"
#include "support/ScratchFolder.h"
#include "support/SmallDisk.h"

#include <gtest/gtest.h>
#include <map>

namespace quorel
{

namespace
{
constexpr const char* key = "SOFTWARE\\Ostrand\\Quorel";

test::ProgramOutcome setup(const juce::StringArray& arguments)
{
    return test::runCommand(QUOREL_TEST_SETUP, arguments);
}

/** When each file below a folder was last changed. */
std::map<juce::String, juce::int64> timesOf(const juce::File& folder)
{
    std::map<juce::String, juce::int64> times;
    for (const auto& file : folder.findChildFiles(juce::File::findFiles, true))
        times[file.getRelativePathFrom(folder)] = file.getLastModificationTime().toMilliseconds();
    return times;
}

juce::String binary(const juce::String& name)
{
    return name + "/" + name + pluginFileEnding();
}
} // namespace

TEST(Setup, freshSetupIsCompleteAndTheNextOneChangesNothing)
{
    const test::ScratchFolder folder;
    const auto prefix = folder.child("a new place");
    const auto store = makeUserStore(userPlaces(prefix));
    const juce::StringArray arguments{"--prefix", prefix.getFullPathName()};
    const juce::StringArray show{"--prefix", prefix.getFullPathName(), "--show"};

    const auto before = setup(show);
    EXPECT_EQ(before.exitCode, 0);
    EXPECT_TRUE(before.text.contains("SOFTWARE\\Ostrand\\Quorel\\x64 Path = (not set)")) << before.text;
    EXPECT_FALSE(prefix.exists()) << "showing changes nothing";

    const auto first = setup(arguments);
    ASSERT_EQ(first.exitCode, 0) << first.text;
    const auto paths = readPaths(*store);
    for (const auto& made : {paths.banksFolder, paths.layoutsFolder, paths.helpFolder, paths.ecsFolder})
    {
        EXPECT_TRUE(made.isDirectory());
        EXPECT_TRUE(made.isAChildOf(prefix.getChildFile("data/Ostrand/Quorel")));
    }
    EXPECT_TRUE(paths.pluginListFile.isAChildOf(prefix.getChildFile("config/Ostrand")));
    const auto guide = juce::File(QUOREL_TEST_DIST).getChildFile("Help/quorel-user-guide.html");
    EXPECT_EQ(paths.helpFolder.getChildFile(guide.getFileName()).existsAsFile(), guide.existsAsFile());

    juce::KnownPluginList list;
    test::RecordingInteraction user;
    EXPECT_TRUE(PluginScanner(list).scanPlugins(paths.pluginFolder, paths.pluginListFile, false, user));
    EXPECT_EQ(list.getNumTypes(), 14);
    EXPECT_GE(paths.banksFolder.findChildFiles(juce::File::findFiles, true, "*.qrl").size(), 48);
    const juce::File tarnBanks(store->read("SOFTWARE\\KTMD\\Tarn", "Bank"));
    EXPECT_GE(tarnBanks.findChildFiles(juce::File::findFiles, false, "*.fxb").size(), 1);
    const juce::File fennBanks(store->read("SOFTWARE\\Ostrand\\Fenn2", "BankFolderDir"));
    EXPECT_GE(fennBanks.findChildFiles(juce::File::findFiles, true, "*.fxp").size(), 8);

    const auto after = timesOf(prefix);
    EXPECT_EQ(setup(arguments).exitCode, 0);
    EXPECT_TRUE(timesOf(prefix) == after) << "a second run changed something";
    const auto shown = setup(show);
    EXPECT_TRUE(shown.text.contains("Tarn\\Bank = " + tarnBanks.getFullPathName())) << shown.text;
    EXPECT_FALSE(shown.text.contains("(not set)"));

    const auto removed = setup({"--prefix", prefix.getFullPathName(), "--remove"});
    EXPECT_EQ(removed.exitCode, 0) << removed.text;
    EXPECT_FALSE(prefix.getChildFile("data/Ostrand").exists()) << removed.text;
    EXPECT_FALSE(prefix.getChildFile("config/Ostrand").exists());
    EXPECT_EQ(setup(show).text, before.text);
}

/** Everything that setup installs, small and made up; half of it differs between versions. */
class MadeUpSource : public testing::Test
{
protected:
    MadeUpSource()
    {
        for (const juce::String version : {"1", "2"})
        {
            juce::StringArray names;
            for (const auto& row : instrumentTable)
                names.addIfNotAlreadyThere(row.name);
            for (int i = 0; i < names.size(); ++i)
            {
                const auto text = names[i] + (i % 2 == 0 ? version : juce::String("0"));
                folder.write(version + "/Ostrand/" + binary(names[i]),
                             juce::String::repeatedString(text, 3000));
                folder.write(version + "/Banks/" + names[i] + "/a.fxb", text + " bank");
                folder.write(version + "/presets/01 Keys/" + names[i] + ".qrl", text + " preset");
            }
            folder.write(version + "/Help/guide.html", "guide " + version);
        }
    }

    juce::StringArray arguments(const juce::File& prefix, const juce::String& version) const
    {
        return {"--prefix", prefix.getFullPathName(), "--from", folder.child(version).getFullPathName()};
    }

    const test::ScratchFolder folder;
};

TEST_F(MadeUpSource, whatTheUserChangedStaysAndTheRestIsUpdated)
{
    const auto prefix = folder.child("prefix");
    const auto path = [this](const char* name) { return folder.child(name).getFullPathName(); };
    const auto store = makeUserStore(userPlaces(prefix));
    store->write(key, "Banks Path", path("my sounds"));
    store->write(key, "Layouts Path", path("my layouts"));
    store->write("SOFTWARE\\KTMD\\Orlen", "BankDir", path("my banks"));
    // One preset of the user's own is called as one of ours is; one is the same as ours and counts as ours.
    folder.write("my sounds/Mine/Mine.qrl", "mine");
    folder.write("my sounds/01 Keys/Orlen.qrl", "the user's own");
    for (const char* place : {"my sounds/01 Keys/Plain.qrl", "1/presets/01 Keys/Plain.qrl"})
        folder.write(place, "plain");
    folder.write("1/presets/01 Keys/notes.txt", "no preset");

    const auto paths = [&store] { return readPaths(*store); };
    const auto plugin = [&](const char* name) { return paths().pluginFolder.getChildFile(binary(name)); };
    const auto preset = [this](const char* name)
    { return folder.child(juce::String("my sounds/01 Keys/") + name + ".qrl"); };
    const auto first = setup(arguments(prefix, "1"));
    ASSERT_EQ(first.exitCode, 0) << first.text;
    EXPECT_TRUE(first.text.contains("Kept as you changed it: " + preset("Orlen").getFullPathName()));
    EXPECT_TRUE(folder.child("my layouts").isDirectory());
    EXPECT_FALSE(folder.child("my banks").exists()) << "banks of the user's own are none of ours";
    EXPECT_FALSE(folder.child("my sounds/01 Keys/notes.txt").exists());
    EXPECT_EQ(store->read(key, "Layouts Path"), path("my layouts"));

    const auto bank = juce::File(store->read("SOFTWARE\\Ostrand\\Zeph", "BankDir")).getChildFile("a.fxb");
    ASSERT_TRUE(bank.existsAsFile());
    const std::pair<juce::File, juce::String> own[] = {{bank, "edited"},
                                                       {plugin("Hexley"), "the user's own build"},
                                                       {preset("Tarn"), "tweaked"},
                                                       {preset("Orlen"), "the user's own"},
                                                       {folder.child("my sounds/Mine/Mine.qrl"), "mine"},
                                                       {paths().ecsFolder.getChildFile("mine.ecs"), "64"}};
    for (const auto& [file, text] : own)
        file.replaceWithText(text);
    const auto expectOwnKept = [&own]
    {
        for (const auto& [file, text] : own)
            EXPECT_EQ(file.loadFileAsString(), text) << file.getFullPathName();
    };
    plugin("Fenn2").deleteFile();
    preset("Imre").deleteFile();
    paths().pluginListFile.replaceWithText("a list from an earlier start");
    for (const char* name : {"Orlen", "Hexley"})
        folder.write("1/Ostrand/" + binary(name), "newer");
    for (const char* name : {"Plain", "Tarn", "Orlen"})
        folder.write(juce::String("1/presets/01 Keys/") + name + ".qrl", "improved");

    const auto second = setup(arguments(prefix, "1"));
    EXPECT_EQ(second.exitCode, 0) << second.text;
    expectOwnKept();
    EXPECT_TRUE(second.text.contains("Kept as you changed it: " + plugin("Hexley").getFullPathName()));
    EXPECT_TRUE(second.text.contains("2 changed by you and kept, 1 removed by you and left out"))
        << second.text;
    EXPECT_EQ(plugin("Orlen").loadFileAsString(), "newer");
    EXPECT_EQ(preset("Plain").loadFileAsString(), "improved");
    EXPECT_FALSE(plugin("Fenn2").exists() || preset("Imre").exists());
    EXPECT_TRUE(paths().pluginListFile.exists());

    auto restoring = arguments(prefix, "1");
    restoring.add("--restore");
    EXPECT_EQ(setup(restoring).exitCode, 0);
    EXPECT_TRUE(plugin("Fenn2").exists() && preset("Imre").exists());
    EXPECT_FALSE(paths().pluginListFile.exists()) << "a new instrument has to be looked for";
    expectOwnKept();

    store->write(key, "Editor Scale", "150");
    const auto orlen = plugin("Orlen");
#if !JUCE_WINDOWS
    // A place that can't be looked at isn't one where the user has removed everything.
    const auto keys = folder.child("my sounds/01 Keys"), aside = folder.child("aside");
    ASSERT_TRUE(keys.moveFileTo(aside) && keys.createSymbolicLink(keys, false));
    for (const char* option : {"--restore", "--remove"})
    {
        auto blind = arguments(prefix, "1");
        blind.add(option);
        const auto failed = setup(blind);
        EXPECT_EQ(failed.exitCode, 1) << failed.text;
        EXPECT_TRUE(failed.text.contains("Too many levels of symbolic links")) << failed.text;
    }
    ASSERT_TRUE(keys.deleteFile() && aside.moveFileTo(keys));
#endif
    const auto removed = setup({"--prefix", prefix.getFullPathName(), "--remove"});
    EXPECT_EQ(removed.exitCode, 0) << removed.text;
    expectOwnKept();
    EXPECT_TRUE(removed.text.contains("Kept as you changed it: " + own[1].first.getFullPathName()));
    EXPECT_FALSE(orlen.getParentDirectory().exists() || preset("Plain").exists());
    EXPECT_TRUE(folder.child("my layouts").isDirectory());
    EXPECT_EQ(store->read(key, "Layouts Path"), path("my layouts"));
    EXPECT_EQ(store->read(key, "Editor Scale"), "150");
    EXPECT_EQ(store->read(key, "x64 Path"), "");
    EXPECT_EQ(setup(arguments(prefix, "1")).exitCode, 0);
    expectOwnKept();
}

TEST_F(MadeUpSource, anInstalledProductIsFoundHoweverItIsStarted)
{
    const juce::File built(QUOREL_TEST_SETUP);
    const auto bin = folder.child("usr/bin");
    const auto program = bin.getChildFile(built.getFileName());
    ASSERT_TRUE(bin.createDirectory() && built.copyFileTo(program));
    // Not all systems have such a thing.
    program.setExecutePermission(true);
    ASSERT_TRUE(folder.child("1").copyDirectoryTo(folder.child("usr/lib/quorel")));
    const auto prefix = folder.child("prefix");
    const auto isSetUp = [&](const juce::String& command)
    {
        const auto outcome = test::runCommand(command, {"--prefix", prefix.getFullPathName()});
        EXPECT_EQ(outcome.exitCode, 0) << command << "\n" << outcome.text;
        const bool isThere =
            prefix.getChildFile("data/Ostrand/Quorel/Banks/01 Keys/Orlen.qrl").existsAsFile();
        return prefix.deleteRecursively() && isThere;
    };
    EXPECT_TRUE(isSetUp(program.getFullPathName()));
    const auto search = juce::SystemStats::getEnvironmentVariable("PATH", {});
    test::setVariable("PATH", bin.getFullPathName());
    EXPECT_TRUE(isSetUp(program.getFileName()));
    test::setVariable("PATH", search);
    const auto link = folder.child("elsewhere").getChildFile(program.getFileName());
    ASSERT_TRUE(link.getParentDirectory().createDirectory());
    const bool isLinked = program.createSymbolicLink(link, true);
    EXPECT_TRUE(!isLinked || isSetUp(link.getFullPathName()));
}

TEST_F(MadeUpSource, linksPluginsAndTouchesNothingElse)
{
    const auto prefix = folder.child("prefix");
    const auto homes = pluginHomes(prefix);
    auto link = arguments(prefix, "1");
    link.add("--link");
    if (homes.empty())
    {
        test::expectRefusal(setup(link), 1, "there are no such folders on this system");
        return;
    }

    ASSERT_EQ(homes.size(), 3u);
    EXPECT_EQ(setup(link).exitCode, 1) << "there is nothing to link";
    const auto plugin = folder.write("1/Quorel.so", "a plug-in");
    folder.write("vst3/Quorel.vst3/Contents/a", "a bundle");
    folder.write("lv2/Quorel.lv2/manifest.ttl", "a bundle");
    const auto mine = prefix.getChildFile(".lv2/Quorel.lv2");
    ASSERT_TRUE(mine.createDirectory());
    const auto first = setup(link);
    EXPECT_EQ(first.exitCode, 1);
    EXPECT_TRUE(first.text.contains(mine.getFullPathName() + " is there already and is no link of "))
        << first.text;
    const auto leadsTo = [&](const char* place)
    { return prefix.getChildFile(place).getNativeLinkedTarget(); };
    EXPECT_EQ(leadsTo(".vst/Quorel.so"), plugin.getFullPathName());
    EXPECT_EQ(leadsTo(".vst3/Quorel.vst3"), folder.child("vst3/Quorel.vst3").getFullPathName());
    EXPECT_TRUE(mine.isDirectory() && !mine.isSymbolicLink());

    // The next time they are there; and where the product has moved they follow it.
    ASSERT_TRUE(mine.deleteFile());
    const auto second = setup(link);
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_TRUE(second.text.contains(" leads to " + plugin.getFullPathName() + " already\n")) << second.text;
    EXPECT_TRUE(plugin.moveFileTo(folder.child("2/Quorel.so")));
    auto moved = arguments(prefix, "2");
    moved.add("--link");
    EXPECT_EQ(setup(moved).exitCode, 0);
    EXPECT_EQ(leadsTo(".vst/Quorel.so"), folder.child("2/Quorel.so").getFullPathName());

    EXPECT_TRUE(mine.deleteFile() && mine.create());
    EXPECT_EQ(setup({"--prefix", prefix.getFullPathName(), "--remove"}).exitCode, 0);
    EXPECT_FALSE(prefix.getChildFile(".vst").exists() || prefix.getChildFile(".vst3").exists());
    EXPECT_TRUE(mine.existsAsFile());
    EXPECT_TRUE(folder.child("2/Quorel.so").existsAsFile());
}

TEST_F(MadeUpSource, aKilledSetupKnowsItsFilesTheNextTime)
{
    const auto prefix = folder.child("prefix");
    const auto start = juce::Time::getMillisecondCounterHiRes();
    ASSERT_EQ(setup(arguments(prefix, "1")).exitCode, 0);
    const auto wholeRun = juce::Time::getMillisecondCounterHiRes() - start;
    ASSERT_TRUE(prefix.deleteRecursively());
    juce::Random random(7);

    for (int round = 0; round < 24; ++round)
    {
        juce::StringArray commandLine{QUOREL_TEST_SETUP};
        commandLine.addArray(arguments(prefix, round % 2 == 0 ? "1" : "2"));
        test::runAndKill(commandLine, wholeRun * random.nextDouble());
    }

    const auto last = setup(arguments(prefix, "2"));
    EXPECT_EQ(last.exitCode, 0);
    EXPECT_FALSE(last.text.contains("by you")) << last.text;
    const auto killed = test::contentsOf(prefix);
    ASSERT_TRUE(prefix.deleteRecursively());
    ASSERT_EQ(setup(arguments(prefix, "2")).exitCode, 0);
    const auto clean = test::contentsOf(prefix);
    for (const auto& [name, contents] : clean)
        EXPECT_TRUE(killed.count(name) == 1 && (name.endsWith("ml") || killed.at(name) == contents)) << name;
    EXPECT_EQ(killed.size(), clean.size()) << "something is left over";
}

TEST_F(MadeUpSource, aFullDiskCutsNothing)
{
    const test::SmallDisk disk(600);
    if (!disk.isThere())
        GTEST_SKIP() << "no disk can be mounted here";

    const auto prefix = disk.child("prefix");
    ASSERT_EQ(setup(arguments(prefix, "1")).exitCode, 0);
    const auto old = test::contentsOf(prefix);
    for (const int free : {0, 12000})
    {
        disk.fill(free);
        const auto full = setup(arguments(prefix, "2"));
        EXPECT_EQ(full.exitCode, 1) << free;
        EXPECT_TRUE(full.text.contains("No space left on device)")) << full.text;
        for (const auto& [name, contents] : test::contentsOf(prefix))
            EXPECT_TRUE(name.endsWith("ml") || contents.size() == old.at(name).size()) << name;
    }
    disk.child("ballast").deleteFile();
    const auto last = setup(arguments(prefix, "2"));
    EXPECT_EQ(last.exitCode, 0);
    EXPECT_FALSE(last.text.contains("by you")) << last.text;
}

TEST(Programs, tellTheirVersionAndHelp)
{
    for (const auto& program : {juce::File(QUOREL_TEST_SETUP), juce::File(QUOREL_TEST_RENDER),
                                juce::File(QUOREL_TEST_PRESETS), juce::File(QUOREL_TEST_BANK)})
    {
        const auto name = program.getFileNameWithoutExtension();
        const auto version = test::runProgram({program.getFullPathName(), "--version"});
        EXPECT_EQ(version.exitCode, 0);
        EXPECT_EQ(version.text, name + " " + productVersion + "\n");
        const auto help = test::runProgram({program.getFullPathName(), "--help"});
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_TRUE(help.text.contains("--version")) << help.text;
    }
}

TEST(Setup, errorsAreOneLineAndAnExitCode)
{
    const test::ScratchFolder folder;
    const auto path = [&folder](const char* name) { return folder.child(name).getFullPathName(); };
    const auto inDataOf = [&folder](const char* prefix, const juce::String& place)
    { return userPlaces(folder.child(prefix)).dataFolder.getChildFile(place); };
    folder.write("file", "not a folder");
    folder.child("empty").createDirectory();
    // Files stand where folders are needed, and a folder where the list of installed files goes.
    ASSERT_TRUE(inDataOf("a", "Layouts").create() && inDataOf("b", "Plugins/Ostrand/Tarn").create() &&
                inDataOf("c", "Installed.xml/full").create());
    // A setting of the user's that can't work is named and left alone.
    const auto store = makeUserStore(userPlaces(folder.child("d")));
    store->write(key, "ECS Path", "somewhere");

    struct Case
    {
        juce::StringArray arguments;
        int exitCode;
        juce::String text;
    };

    const Case cases[] = {
        {{"--nonsense"}, 2, "--nonsense"},
        {{"--prefix", ""}, 2, "--prefix"},
        {{"--prefix", path("p"), "--from", path("nowhere")}, 2, "nowhere"},
        {{"--prefix", path("p"), "--from", path("empty")}, 1, "no starter instruments in "},
        {{"--prefix", path("a")},
         1,
         "cannot create the folder " + inDataOf("a", "Layouts").getFullPathName()},
        {{"--prefix", path("b")},
         1,
         "to " + inDataOf("b", "Plugins/Ostrand/" + binary("Tarn")).getFullPathName()},
        {{"--prefix", path("c")}, 1, "cannot write the list of installed files in "},
        {{"--prefix", path("d")}, 1, "the setting ECS Path is not an absolute path"},
    };
    for (const auto& c : cases)
    {
        const auto outcome = setup(c.arguments);
        EXPECT_EQ(outcome.exitCode, c.exitCode) << outcome.text;
        juce::StringArray errors;
        for (const auto& line : juce::StringArray::fromLines(outcome.text))
            if (line.startsWith("quorel-setup: "))
                errors.add(line);
        ASSERT_EQ(errors.size(), 1) << outcome.text;
        EXPECT_TRUE(errors[0].contains(c.text)) << outcome.text;
    }
    EXPECT_TRUE(inDataOf("b", "Plugins/Ostrand/" + binary("Orlen")).existsAsFile()) << "the rest is done";
    EXPECT_EQ(store->read(key, "ECS Path"), "somewhere");

    const auto blocked = setup({"--prefix", path("file")});
    EXPECT_EQ(blocked.exitCode, 1);
    EXPECT_TRUE(blocked.text.contains("is no folder"));
    EXPECT_EQ(folder.child("file").loadFileAsString(), "not a folder");

    // A settings file that isn't XML is kept aside.
    folder.write("r/config/Ostrand/Registry.xml", "precious notes");
    EXPECT_EQ(setup({"--prefix", path("r")}).exitCode, 0);
    EXPECT_EQ(folder.child("r/config/Ostrand/Registry.xml.broken").loadFileAsString(), "precious notes");
}

} // namespace quorel
