// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/InstrumentTable.h"
#include "hosting/PluginScanner.h"
#include "platform/PlatformSeam.h"
#include "platform/PlatformSeamProduct.h"
#include "platform/UserPaths.h"
#include "platform/Version.h"
#include "support/EnvironmentVariable.h"
#include "support/KilledRun.h"
#include "support/ProgramRun.h"
#include "support/RecordingInteraction.h"
#include "support/ScratchFolder.h"
#include "support/SmallDisk.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace quorel
{

namespace
{
constexpr const char* key = "SOFTWARE\\Ostrand\\Quorel";

test::ProgramOutcome setup(juce::StringArray arguments)
{
    arguments.insert(0, QUOREL_TEST_SETUP);
    return test::runProgram(arguments);
}

/** Every file below a folder with its contents and the time of its last change. */
std::map<juce::String, std::pair<std::string, juce::int64>> snapshot(const juce::File& folder)
{
    std::map<juce::String, std::pair<std::string, juce::int64>> files;
    for (const auto& file : folder.findChildFiles(juce::File::findFiles, true))
    {
        juce::MemoryBlock contents;
        file.loadFileAsData(contents);
        files[file.getRelativePathFrom(folder)] = {std::string(contents.begin(), contents.end()),
                                                   file.getLastModificationTime().toMilliseconds()};
    }
    return files;
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

    const auto before = setup({"--prefix", prefix.getFullPathName(), "--show"});
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

    const auto after = snapshot(prefix);
    EXPECT_EQ(setup(arguments).exitCode, 0);
    EXPECT_TRUE(snapshot(prefix) == after) << "a second run changed something";
    const auto shown = setup({"--prefix", prefix.getFullPathName(), "--show"});
    EXPECT_TRUE(shown.text.contains("Tarn\\Bank = " + tarnBanks.getFullPathName())) << shown.text;
    EXPECT_FALSE(shown.text.contains("(not set)"));

    const auto removed = setup({"--prefix", prefix.getFullPathName(), "--remove"});
    EXPECT_EQ(removed.exitCode, 0) << removed.text;
    EXPECT_FALSE(prefix.getChildFile("data/Ostrand").exists()) << removed.text;
    EXPECT_EQ(snapshot(prefix.getChildFile("config/Ostrand")).count("PluginList.xml"), 0u);
    EXPECT_EQ(setup({"--prefix", prefix.getFullPathName(), "--show"}).text, before.text);
}

TEST(Setup, whatTheUserChangedStaysAndTheRestIsUpdated)
{
    const test::ScratchFolder folder;
    const auto prefix = folder.child("p");
    const auto source = folder.child("source");
    const auto store = makeUserStore(userPlaces(prefix));
    ASSERT_TRUE(
        juce::File(QUOREL_TEST_DIST).getChildFile("Ostrand").copyDirectoryTo(source.getChildFile("Ostrand")));
    ASSERT_TRUE(
        juce::File(QUOREL_TEST_DIST).getChildFile("Banks").copyDirectoryTo(source.getChildFile("Banks")));
    juce::StringArray arguments{"--prefix", prefix.getFullPathName(), "--from", source.getFullPathName()};

    store->write(key, "Layouts Path", folder.child("my layouts").getFullPathName());
    store->write("SOFTWARE\\KTMD\\Orlen", "BankDir", folder.child("my banks").getFullPathName());
    const auto first = setup(arguments);
    ASSERT_EQ(first.exitCode, 0) << first.text;
    EXPECT_TRUE(folder.child("my layouts").isDirectory());
    EXPECT_FALSE(folder.child("my banks").exists()) << "banks of the user's own are none of ours";
    EXPECT_EQ(store->read(key, "Layouts Path"), folder.child("my layouts").getFullPathName());

    const auto paths = readPaths(*store);
    const auto installed = [&paths](const juce::String& name)
    { return paths.pluginFolder.getChildFile(binary(name)); };
    const juce::File banks(store->read("SOFTWARE\\Ostrand\\Zeph", "BankDir"));
    const auto bank = banks.findChildFiles(juce::File::findFiles, false).getFirst();
    bank.replaceWithText("edited");
    installed("Hexley").replaceWithText("the user's own build");
    installed("Fenn2").deleteFile();
    paths.pluginListFile.replaceWithText("a list from an earlier start");
    source.getChildFile("Ostrand").getChildFile(binary("Orlen")).replaceWithText("a newer Orlen");
    source.getChildFile("Ostrand").getChildFile(binary("Hexley")).replaceWithText("a newer Hexley");

    const auto second = setup(arguments);
    EXPECT_EQ(second.exitCode, 0) << second.text;
    EXPECT_EQ(bank.loadFileAsString(), "edited");
    EXPECT_EQ(installed("Hexley").loadFileAsString(), "the user's own build");
    EXPECT_TRUE(second.text.contains("Kept as you changed it: " + installed("Hexley").getFullPathName()));
    EXPECT_EQ(installed("Orlen").loadFileAsString(), "a newer Orlen");
    EXPECT_FALSE(installed("Fenn2").exists());
    EXPECT_TRUE(paths.pluginListFile.exists());

    arguments.add("--restore");
    EXPECT_EQ(setup(arguments).exitCode, 0);
    EXPECT_TRUE(installed("Fenn2").exists());
    EXPECT_EQ(bank.loadFileAsString(), "edited");
    EXPECT_FALSE(paths.pluginListFile.exists()) << "a new instrument has to be looked for";

    paths.ecsFolder.getChildFile("mine.ecs").replaceWithText("64");
    store->write(key, "Editor Scale", "150");
    const auto removed = setup({"--prefix", prefix.getFullPathName(), "--remove"});
    EXPECT_EQ(removed.exitCode, 0) << removed.text;
    EXPECT_EQ(bank.loadFileAsString(), "edited");
    EXPECT_EQ(installed("Hexley").loadFileAsString(), "the user's own build");
    EXPECT_TRUE(removed.text.contains("Kept as you changed it: " + installed("Hexley").getFullPathName()));
    EXPECT_FALSE(installed("Orlen").getParentDirectory().exists());
    EXPECT_EQ(paths.ecsFolder.getChildFile("mine.ecs").loadFileAsString(), "64");
    EXPECT_TRUE(folder.child("my layouts").isDirectory());
    EXPECT_EQ(store->read(key, "Layouts Path"), folder.child("my layouts").getFullPathName());
    EXPECT_EQ(store->read(key, "Editor Scale"), "150");
    EXPECT_EQ(store->read(key, "Banks Path"), "");
    EXPECT_EQ(setup({"--prefix", prefix.getFullPathName(), "--from", source.getFullPathName()}).exitCode, 0);
    EXPECT_EQ(bank.loadFileAsString(), "edited") << "installed anew";
}

TEST(Setup, presetsGoIntoTheBanksFolderAndLeaveTheUsersOwnAlone)
{
    const test::ScratchFolder folder;
    const auto prefix = folder.child("p");
    const auto banks = folder.child("my sounds");
    const auto store = makeUserStore(userPlaces(prefix));
    store->write(key, "Banks Path", banks.getFullPathName());
    folder.child("source").createDirectory();
    folder.write("source/presets/01 Keys/Plain.qrl", "plain");
    folder.write("source/presets/01 Keys/Changed.qrl", "changed");
    folder.write("source/presets/01 Keys/Removed.qrl", "removed");
    folder.write("source/presets/02 Pads/Same Name.qrl", "ours");
    folder.write("source/presets/02 Pads/notes.txt", "no preset");
    folder.write("my sounds/02 Pads/Same Name.qrl", "the user's own");
    folder.write("my sounds/Mine/Mine.qrl", "mine");
    // A file that is the same as ours counts as ours and is updated.
    folder.write("my sounds/01 Keys/Plain.qrl", "plain");
    // The rest of the source is missing, so the run as a whole fails; the presets are installed all the same.
    juce::StringArray arguments{"--prefix", prefix.getFullPathName(), "--from",
                                folder.child("source").getFullPathName()};
    const auto text = [&banks](const char* path) { return banks.getChildFile(path).loadFileAsString(); };

    const auto first = setup(arguments);
    EXPECT_TRUE(first.text.contains("2 installed, 1 up to date, 1 changed by you and kept")) << first.text;
    EXPECT_TRUE(first.text.contains("Kept as you changed it: " +
                                    banks.getChildFile("02 Pads/Same Name.qrl").getFullPathName()));
    EXPECT_EQ(text("01 Keys/Plain.qrl"), "plain");
    EXPECT_EQ(text("02 Pads/Same Name.qrl"), "the user's own");
    EXPECT_FALSE(banks.getChildFile("02 Pads/notes.txt").exists());
    const auto after = snapshot(banks);
    setup(arguments);
    EXPECT_TRUE(snapshot(banks) == after) << "a second run changed something";

    banks.getChildFile("01 Keys/Changed.qrl").replaceWithText("tweaked");
    banks.getChildFile("01 Keys/Removed.qrl").deleteFile();
    folder.write("source/presets/01 Keys/Plain.qrl", "plain, improved");
    folder.write("source/presets/01 Keys/Changed.qrl", "changed, improved");
    const auto second = setup(arguments);
    EXPECT_TRUE(second.text.contains("1 updated, 2 changed by you and kept, 1 removed by you and left out"))
        << second.text;
    EXPECT_EQ(text("01 Keys/Plain.qrl"), "plain, improved");
    EXPECT_EQ(text("01 Keys/Changed.qrl"), "tweaked");
    EXPECT_FALSE(banks.getChildFile("01 Keys/Removed.qrl").exists());
    EXPECT_EQ(text("Mine/Mine.qrl"), "mine");

    arguments.add("--restore");
    setup(arguments);
    EXPECT_EQ(text("01 Keys/Removed.qrl"), "removed");
    EXPECT_EQ(text("01 Keys/Changed.qrl"), "tweaked");
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

    /** The contents alone. */
    static std::map<juce::String, std::string> contentsOf(const juce::File& prefix)
    {
        std::map<juce::String, std::string> contents;
        for (const auto& [name, file] : snapshot(prefix))
            contents[name] = file.first;
        return contents;
    }

    const test::ScratchFolder folder;
};

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
    const juce::StringArray arguments{"--prefix", prefix.getFullPathName()};
    const auto isSetUp = [&](const juce::String& command)
    {
        juce::StringArray commandLine{command};
        commandLine.addArray(arguments);
        const auto outcome = test::runProgram(commandLine);
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
        EXPECT_EQ(setup(link).text,
                  "quorel-setup: there are no such folders on this system: put the plug-in where "
                  "your host looks\n");
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
    const auto killed = contentsOf(prefix);
    ASSERT_TRUE(prefix.deleteRecursively());
    ASSERT_EQ(setup(arguments(prefix, "2")).exitCode, 0);
    const auto clean = contentsOf(prefix);
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
    const auto old = contentsOf(prefix);
    for (const int free : {0, 12000})
    {
        disk.fill(free);
        const auto full = setup(arguments(prefix, "2"));
        EXPECT_EQ(full.exitCode, 1) << free;
        EXPECT_TRUE(full.text.contains("No space left on device)")) << full.text;
        for (const auto& [name, contents] : contentsOf(prefix))
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
    folder.write("file", "not a folder");
    folder.child("empty").createDirectory();
    const auto prefix = folder.child("p").getFullPathName();

    struct Case
    {
        juce::StringArray arguments;
        int exitCode;
        juce::String text;
    };

    const Case cases[] = {
        {{"--nonsense"}, 2, "--nonsense"},
        {{"--prefix", ""}, 2, "--prefix"},
        {{"--prefix", prefix, "--from", folder.child("nowhere").getFullPathName()}, 2, "nowhere"},
        {{"--prefix", prefix, "--from", folder.child("empty").getFullPathName()},
         1,
         "no starter instruments in "},
    };
    for (const auto& c : cases)
    {
        const auto outcome = setup(c.arguments);
        EXPECT_EQ(outcome.exitCode, c.exitCode) << outcome.text;
        juce::StringArray errors = juce::StringArray::fromLines(outcome.text);
        for (int i = errors.size(); --i >= 0;)
            if (!errors[i].startsWith("quorel-setup: "))
                errors.remove(i);
        ASSERT_EQ(errors.size(), 1) << outcome.text;
        EXPECT_TRUE(errors[0].contains(c.text)) << outcome.text;
    }

    const auto blocked = setup({"--prefix", folder.child("file").getFullPathName()});
    EXPECT_EQ(blocked.exitCode, 1);
    EXPECT_TRUE(blocked.text.contains("cannot write the setting SOFTWARE\\Ostrand\\Quorel\\Banks Path"));
    EXPECT_EQ(folder.child("file").loadFileAsString(), "not a folder");

    // Files stand where folders are needed, and a folder where the list of installed files goes.
    const auto data = userPlaces(folder.child("s")).dataFolder;
    for (const char* place : {"Layouts", "Plugins/Ostrand/Tarn"})
        ASSERT_TRUE(data.getChildFile(place).create());
    ASSERT_TRUE(data.getChildFile("Installed.xml/full").create());
    const auto standing = setup({"--prefix", folder.child("s").getFullPathName()});
    EXPECT_EQ(standing.exitCode, 1);
    for (const auto& expected :
         {"cannot create the folder " + data.getChildFile("Layouts").getFullPathName(),
          "to " + data.getChildFile("Plugins/Ostrand/" + binary("Tarn")).getFullPathName(),
          juce::String("cannot write the list of installed files in ")})
        EXPECT_TRUE(standing.text.contains(expected)) << expected << "\n" << standing.text;
    EXPECT_TRUE(data.getChildFile("Plugins/Ostrand/" + binary("Orlen")).existsAsFile()) << "the rest is done";

    // Each of these alone is a failure.
    for (const char* place : {"Layouts", "Plugins/Ostrand/Tarn"})
    {
        const auto prefixOf = folder.child(juce::String("alone ") + place[0]);
        ASSERT_TRUE(userPlaces(prefixOf).dataFolder.getChildFile(place).create());
        EXPECT_EQ(setup({"--prefix", prefixOf.getFullPathName()}).exitCode, 1) << place;
    }

    // Settings of the user's that can't work are named and left alone.
    const auto store = makeUserStore(userPlaces(folder.child("q")));
    store->write(key, "ECS Path", "somewhere");
    store->write(key, "Plug64 List", "list.xml");
    const auto relative = setup({"--prefix", folder.child("q").getFullPathName()});
    EXPECT_EQ(relative.exitCode, 1);
    EXPECT_TRUE(relative.text.contains("the setting ECS Path is not an absolute path")) << relative.text;
    EXPECT_TRUE(relative.text.contains("the setting Plug64 List is not an absolute path")) << relative.text;
    EXPECT_EQ(store->read(key, "ECS Path"), "somewhere");

    // A settings file that isn't XML is kept aside.
    folder.write("r/config/Ostrand/Registry.xml", "precious notes");
    EXPECT_EQ(setup({"--prefix", folder.child("r").getFullPathName()}).exitCode, 0);
    EXPECT_EQ(folder.child("r/config/Ostrand/Registry.xml.broken").loadFileAsString(), "precious notes");
}

} // namespace quorel
