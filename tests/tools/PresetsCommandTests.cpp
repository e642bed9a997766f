// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-presets as a user starts it, on real folders and real presets.
#include "CommandRuns.h"

#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "support/KilledRun.h"
#include "support/ProcessorRig.h"
#include "support/SmallDisk.h"

#include <gtest/gtest.h>

#include <set>

#if !JUCE_WINDOWS
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace quorel
{
namespace
{
using test::bytesOf;
using test::ProcessorRig;

/** A user with three presets in two folders: "A/One" with an instrument, "A/Two" and "B/Three" without. */
struct PresetsCommand : testing::Test
{
    PresetsCommand()
    {
        auto& processor = rig.processor;
        EXPECT_TRUE(rig.load(1, "Tarn"));
        rig.setLayer(1, layerSlot::pan, 0.25f);
        rig.set(slot::fxOn + 2, 1.0f);
        rig.set(slot::fxType + 2, 7.0f / 32.0f);
        rig.set(slot::fxMix + 2, 0.3f);
        rig.set(10, 2.5f / 4096.0f);
        const auto save = [&](const char* folder, const char* name)
        {
            processor.setNames(name, folder);
            processor.resetNames();
            EXPECT_TRUE(replaceFile(file(folder, name), rig.state()));
        };
        save("A", "One");
        processor.chooseInstrument(1, nullptr);
        EXPECT_TRUE(pumpUntil([&] { return !processor.getLayer(1).hasInstance(); }, 3000));
        save("A", "Two");
        rig.set(10, 0.0f);
        save("B", "Three");
        rig.user.banksFolder().getChildFile(defaultFolderName).deleteRecursively();
    }

    test::ProgramOutcome run(const juce::StringArray& arguments) const
    {
        return runAs(rig.user.scratch.path(), arguments);
    }

    static test::ProgramOutcome runAs(const juce::File& prefix, juce::StringArray arguments)
    {
        arguments.insert(0, "--prefix");
        arguments.insert(1, prefix.getFullPathName());
        return test::runCommand(QUOREL_TEST_PRESETS, arguments);
    }

    /** Runs commands that have to fail in one line and leave all as it was. */
    void expectRefusals(const std::vector<juce::StringArray>& commands, int exitCode = 1) const
    {
        const auto before = snapshot();
        for (const auto& command : commands)
        {
            SCOPED_TRACE(command.joinIntoString(" "));
            test::expectRefusal(run(command), exitCode);
        }
        EXPECT_TRUE(snapshot() == before);
    }

    juce::File file(const juce::String& folder, const juce::String& name) const
    {
        return rig.user.banksFolder().getChildFile(folder).getChildFile(name + presetFileEnding);
    }

    juce::File archive(const juce::String& name) const { return rig.user.scratch.child(name); }

    std::map<juce::String, std::string> snapshot() const { return test::contentsOf(rig.user.scratch.path()); }

    static void write(const juce::File& f, const std::string& bytes)
    {
        f.deleteFile();
        f.create();
        f.appendData(bytes.data(), bytes.size());
    }

    /** A zip file with these entries. */
    juce::File zip(const juce::String& name,
                   const std::vector<std::pair<juce::String, std::string>>& entries) const
    {
        juce::ZipFile::Builder builder;
        for (const auto& [path, bytes] : entries)
            builder.addEntry(new juce::MemoryInputStream(bytes.data(), bytes.size(), true), 9, path,
                             juce::Time());
        juce::MemoryOutputStream out;
        builder.writeToStream(out, nullptr);
        EXPECT_TRUE(replaceFile(archive(name), out.getMemoryBlock()));
        return archive(name);
    }

    static std::string integer(int number)
    {
        const auto bytes = juce::ByteOrder::swapIfBigEndian(static_cast<juce::uint32>(number));
        return {reinterpret_cast<const char*>(&bytes), sizeof(bytes)};
    }

    ProcessorRig rig;
};

TEST_F(PresetsCommand, ReadersTellWhatIsThereAndWriteNothing)
{
    const auto before = snapshot();
    auto outcome = run({"list"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.text, "A/  (2 presets)\nA/One  [Bass]\nA/Two  [Bass]\nB/  (1 preset)\nB/Three\n");
    EXPECT_EQ(run({"search", "T"}).text, "A/Two  [Bass]\nB/Three\n");
    EXPECT_EQ(run({"search", "tW", "-c", "bass"}).text, "A/Two  [Bass]\n");
    test::expectRefusal(run({"search", "-c", "Bass", "-c", "Dark"}), 1, "no preset fits");
    EXPECT_TRUE(run({"show", "A/One"}).text.contains("\nlayer 2     Tarn, "));

    // Only what was set, with the instrument's own texts.
    outcome = run({"show", "A/Two", "--json"});
    const auto json = juce::JSON::parse(outcome.text);
    EXPECT_EQ(json["name"], "Two");
    EXPECT_EQ(json["categories"][0], "Bass");
    std::set<int> indices;
    for (const auto& parameter : *json["parameters"].getArray())
    {
        const int index = parameter["index"];
        indices.insert(index);
        EXPECT_EQ(parameter["name"].toString(), rig.processor.getParameterName(index));
        EXPECT_EQ(parameter["text"].toString(), rig.processor.getParameterText(index));
        EXPECT_EQ(static_cast<float>(static_cast<double>(parameter["value"])), rig.get(index));
    }
    const std::set<int> wanted{slot::fxOn + 2, slot::fxType + 2, slot::fxMix + 2};
    EXPECT_TRUE(std::includes(indices.begin(), indices.end(), wanted.begin(), wanted.end())) << outcome.text;
    EXPECT_EQ(indices.count(slot::masterVolume), 0u);
    outcome = run({"verify"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.text;
    EXPECT_TRUE(outcome.text.contains("3 presets in 2 folders: 0 errors, 0 notes")) << outcome.text;
    EXPECT_TRUE(snapshot() == before);

    // A user whom nobody has set up: looking doesn't set them up either.
    const auto nobody = rig.user.scratch.child("nobody");
    for (const auto& command : {juce::StringArray{"list"}, juce::StringArray{"show", "A/One"}})
        test::expectRefusal(runAs(nobody, command), 1, "there is no folder");
    EXPECT_FALSE(nobody.exists());
}

TEST_F(PresetsCommand, VerifyNamesEachDamage)
{
    const auto whole = bytesOf(file("A", "One"));
    const auto patched = [&whole](std::size_t offset, const std::string& bytes)
    { return std::string(whole).replace(offset, bytes.size(), bytes); };
    const std::size_t parameters = 104;
    const std::size_t states = parameters + 4 * 1507;
    const int stateSize = static_cast<int>(whole.size() - states);
    const std::size_t nameOfLayer2 = parameters + 4 * 400;

    struct Case
    {
        const char* name;
        std::string bytes;
        const char* expected;
    };

    const Case errors[] = {
        {"Empty", {}, "the file is empty"},
        {"Foreign", patched(0, "RIFF"), "another format"},
        {"Version", patched(20, integer(2)), "version 2"},
        {"Cut", whole.substr(0, states - 4), "cut off"},
        {"Parameters", patched(12, integer(1000)), "has 1000 parameters"},
        {"Not a number", patched(parameters + 4 * 233, integer(0x7fc00000)), "233 is no number"},
        {"Too large", patched(parameters + 4 * 233, integer(0x3fc00000)), "233 is 1.5"},
        {"Negative", patched(92, integer(-1)), "layer 2 declares a state of -1"},
        {"Past the end", patched(92, integer(stateSize + 1)), "layer 2's state is cut off"},
        {"Trailing", whole + "more", "4 bytes lie behind the end"},
        {"Nameless", patched(nameOfLayer2, integer(0)), "names no instrument"},
        {"Stateless", patched(92, integer(0)).substr(0, states), "names Tarn but has no state"},
    };
    for (const auto& c : errors)
    {
        SCOPED_TRACE(c.name);
        write(file("Damaged", c.name), c.bytes);
        const auto preset = "Damaged/" + juce::String(c.name);
        const auto [exitCode, text] = run({"verify", preset});
        EXPECT_EQ(exitCode, 1);
        EXPECT_TRUE(text.contains(preset + ": error: ") && text.contains(c.expected)) << text;
    }

    // 'T' of the name becomes 'X': c / 256.
    write(file("B", "Renamed"), whole);
    write(file("B", "Escape"), patched(24, "\x1b[2J"));
    write(file("B", "Unknown"), patched(nameOfLayer2, integer(0x3eb00000)));
    write(rig.user.banksFolder().getChildFile("Capitals/Loud.QRL"), whole);
    file("Capitals", "Folder").createDirectory();
    const auto outcome = run({"verify"});
    EXPECT_EQ(outcome.exitCode, 1);
    for (const char* expected :
         {"B/Renamed: note: the name inside is \"One\"", "B/Escape: note: the name inside is \"?[2J\"",
          "B/Unknown: note: layer 2 needs an unknown instrument, Xarn", "Capitals/Loud: error: isn't listed",
          "Capitals/Folder: error: is a folder", ": 14 errors, "})
        EXPECT_TRUE(outcome.text.contains(expected)) << expected << " in\n" << outcome.text;
    EXPECT_EQ(run({"verify", "B/Renamed"}).exitCode, 0);
    EXPECT_EQ(run({"verify", "B/Renamed", "--strict"}).exitCode, 1);
    EXPECT_EQ(run({"verify", file("A", "One").getFullPathName()}).exitCode, 0);
}

TEST_F(PresetsCommand, VerifyNotesWhatIsMissingAroundAPreset)
{
    const auto expectNotes = [this](const char* words, const char* count)
    {
        const auto [exitCode, text] = run({"verify", "--strict"});
        EXPECT_EQ(exitCode, juce::String(count) == "0 notes" ? 0 : 1);
        EXPECT_TRUE(text.contains(words) && text.contains("0 errors, " + juce::String(count) + "\n")) << text;
    };
    rig.user.listFile().replaceWithText("<KNOWNPLUGINS/>");
    expectNotes("A/One: note: layer 2 needs Tarn, which isn't installed", "1 note");
    rig.user.listFile().deleteFile();
    expectNotes("no list of installed instruments", "0 notes");
    write(rig.user.banksFolder().getChildFile("Stray.qrl"), bytesOf(file("A", "Two")));
    expectNotes("Stray.qrl: note: isn't listed", "1 note");
}

TEST_F(PresetsCommand, CategoriesChangeAndNothingElse)
{
    // Bytes behind the end, which a reader ignores, must survive.
    const auto before = bytesOf(file("A", "One")) + "kept";
    write(file("A", "One"), before);
    EXPECT_EQ(run({"categories", "set", "A/One", "riser", "Pad", "Dark"}).text,
              "A/One  [Pad, Riser, Dark]\n");
    EXPECT_EQ(run({"categories", "add", "A/One", "Lead", "Pad"}).text, "A/One  [Lead, Pad, Riser, Dark]\n");
    EXPECT_EQ(run({"categories", "remove", "A/One", "Pad"}).text, "A/One  [Lead, Riser, Dark]\n");
    EXPECT_EQ(run({"search", "-c", "Riser"}).text, "A/One  [Lead, Riser, Dark]\n");
    auto after = bytesOf(file("A", "One"));
    EXPECT_NE(after.substr(144, 24), before.substr(144, 24));
    EXPECT_EQ(after.replace(144, 24, before.substr(144, 24)), before);

    EXPECT_EQ(run({"categories", "set", "A/One"}).text, "A/One  []\n");
    expectRefusals({{"categories", "add", "A/One", "Sheep"}}, 2);
    expectRefusals({{"categories", "add", "A/None", "Pad"}});
}

TEST_F(PresetsCommand, MarksAndNotesAreKeptAndFollow)
{
    // The trash is this user's, too.
    adoptUserPlaces(rig.user.scratch.path());
    const auto before = bytesOf(file("A", "One"));
    EXPECT_EQ(run({"rate", "A/One", "4"}).exitCode, 0);
    EXPECT_EQ(run({"favourite", "A/One"}).exitCode, 0);
    EXPECT_EQ(run({"rate", "B/Three", "5"}).exitCode, 0);
    expectRefusals({{"rate", "A/One", "6"}}, 2);
    test::expectRefusal(run({"lst"}), 2, "unknown command \"lst\": did you mean list?");
    test::expectRefusal(run({"categories", "foo"}), 2, "unknown command \"foo\"");
    test::expectRefusal(run({"list", "--favorites"}), 2, "--favorites");
    test::expectRefusal(run({"show", "A/Oen"}), 1, "there is no preset");
    EXPECT_TRUE(bytesOf(file("A", "One")) == before) << "marks stand beside the presets";
    EXPECT_EQ(run({"search", "--rated", "1", "--sort", "rating"}).text,
              "B/Three  5 stars\nA/One  [Bass]  4 stars  favourite\n");
    EXPECT_EQ(run({"notes", "A/One", "--author", "Me", "--comment", "for the walk"}).exitCode, 0);
    EXPECT_EQ(run({"notes", "A/One", "--comment", "for a walk"}).exitCode, 0);
    EXPECT_EQ(bytesOf(file("A", "One")).substr(0, before.size()), before);
    EXPECT_EQ(run({"search", "WALK", "--author", "me"}).text, "A/One  [Bass]  4 stars  favourite\n");
    EXPECT_TRUE(run({"show", "A/One"})
                    .text.contains("\nauthor      Me\ncomment     for a walk\nrating      4 of 5\n"));
    EXPECT_EQ(juce::JSON::parse(run({"show", "A/One", "--json"}).text)["comment"], "for a walk");
    EXPECT_EQ(run({"verify", "--strict"}).exitCode, 0);

    EXPECT_EQ(run({"rename", "A/One", "Uno"}).exitCode, 0);
    EXPECT_EQ(run({"rename", "A/Uno", "Uno"}).exitCode, 0);

    // Presets elsewhere have no marks, and those of the same names here keep theirs.
    const auto other = rig.user.scratch.child("other");
    ASSERT_TRUE(rig.user.banksFolder().copyDirectoryTo(other));
    expectRefusals({{"--banks", other.getFullPathName(), "rate", "A/Uno", "1"}});
    expectRefusals({{"--banks", "", "rate", "A/Uno", "1"}}, 2);
    EXPECT_EQ(run({"--banks", other.getFullPathName(), "rename", "A/Uno", "Due"}).exitCode, 0);

    EXPECT_EQ(run({"move", "A/Uno", "B/Three", "A/Uno", "--to", "B/"}).text, "A/Uno -> B/Uno\n");
    EXPECT_EQ(run({"list", "--favourites"}).text,
              "A/  (0 presets)\nB/  (1 preset)\nB/Uno  [Bass]  4 stars  favourite\n");
    EXPECT_EQ(run({"copy", "A/Two", "B/"}).exitCode, 0);
    // All or none; and a folder is none of them.
    expectRefusals({{"move", "B/Uno", "B/Two", "--to", "A"},
                    {"delete", "B/Uno", "B/Nothing", "--for-good"},
                    {"delete", "B/Uno", "A/"}});
    EXPECT_EQ(run({"delete", "B/Uno", "B/Two", "--for-good"}).exitCode, 0);
    EXPECT_FALSE(file("B", "Uno").exists() || file("B", "Two").exists());
    EXPECT_EQ(run({"search", "--rated", "1"}).text, "B/Three  5 stars\n");
}

TEST_F(PresetsCommand, CopiesAndRenamesWithoutLosingAnything)
{
    // Whether the names inside fit the new places is verified.
    EXPECT_EQ(run({"copy", "A/One", "New/"}).exitCode, 0);
    EXPECT_EQ(run({"rename", "New/One", "Uno"}).exitCode, 0);
    EXPECT_FALSE(file("New", "One").exists());
    EXPECT_EQ(run({"rename", "New/Uno", "B/Uno"}).exitCode, 0);
    EXPECT_EQ(run({"list"}).text, "A/  (2 presets)\nA/One  [Bass]\nA/Two  [Bass]\nB/  (2 presets)\nB/Three\n"
                                  "B/Uno  [Bass]\nNew/  (0 presets)\n");
    EXPECT_EQ(run({"verify", "--strict"}).exitCode, 0);

    expectRefusals({{"copy", "A/One", "B/Three"},
                    {"rename", "A/One", "Two"},
                    {"copy", "A/One", "../Escaped"},
                    {"copy", "A/One", "A/a:b"},
                    {"rename", "A/One", "NUL"},
                    {"copy", "A/One", "One"},
                    {"copy", "A/One", "A/One", "--replace"},
                    {"copy", "A/Nothing", "B/Nothing"}});
    EXPECT_EQ(run({"copy", "A/One", "B/Three", "--replace"}).exitCode, 0);
    EXPECT_EQ(run({"verify", "--strict"}).exitCode, 0);
}

TEST_F(PresetsCommand, ExportsAndImportsAFolder)
{
    const auto path = archive("a.zip").getFullPathName();
    ASSERT_EQ(run({"export", "A", "-o", path}).exitCode, 0);
    expectRefusals({{"export", "A", "-o", path}, {"import", path}});
    write(archive("a.zip"), "an older archive");
    EXPECT_EQ(run({"export", "A", "-o", path, "--replace"}).exitCode, 0);
    ASSERT_EQ(run({"import", path, "--folder", "Guest"}).exitCode, 0);
    EXPECT_EQ(run({"verify", "--strict"}).exitCode, 0);

    // Back to where they came from; one has changed meanwhile.
    const auto one = bytesOf(file("A", "One"));
    EXPECT_EQ(run({"categories", "set", "A/One", "Arp"}).exitCode, 0);
    EXPECT_EQ(run({"import", path, "--replace"}).exitCode, 0);
    EXPECT_EQ(bytesOf(file("A", "One")), one);

    // One of several files can't be written: what was replaced before it comes back, and what is new goes.
    EXPECT_EQ(run({"categories", "set", "A/One", "Arp"}).exitCode, 0);
    ASSERT_TRUE(file("A", "Two").deleteFile() && file("A", "Two").createDirectory());
    expectRefusals({{"import", path, "--replace"}});
    ASSERT_TRUE(file("A", "One").deleteFile());
    expectRefusals({{"import", path, "--replace"}});
}

TEST_F(PresetsCommand, RefusesArchivesThatAreUnsafeOrDamagedAsAWhole)
{
    const auto good = bytesOf(file("A", "One"));
    using Entry = std::pair<juce::String, std::string>;
    const Entry fine("Z/Fine.qrl", good);
    std::vector<juce::StringArray> imports;
    const auto import = [&](const juce::File& file) {
        imports.push_back({"import", file.getFullPathName()});
    };
    // Outside, in two folders or too deep, twice, cut in its numbers and in the instrument's state.
    for (const auto& entry :
         {Entry{"../../Slip.qrl", good}, Entry{"/tmp/Slip.qrl", good}, Entry{"..\\Slip.qrl", good},
          Entry{"Y/Other.qrl", good}, Entry{"Z/Y/Deep.qrl", good}, Entry{"Z/fine.qrl", good},
          Entry{"Z/Bad.qrl", good.substr(0, 3000)}, Entry{"Z/Bad.qrl", good.substr(0, good.size() - 1)}})
        import(zip(juce::String(imports.size()) + ".zip", {fine, entry}));
    import(zip("nothing.zip", {{ "readme.txt", "hello" }}));
    write(archive("text.zip"), "this is no archive");
    import(archive("text.zip"));
    import(archive("missing.zip"));

    // The directory, 24 bytes into an entry, claims another size than the data has; or data is missing.
    const auto bytes = bytesOf(zip("fine.zip", {fine}));
    for (const int size : {-1, static_cast<int>(good.size()) - 100})
    {
        auto claiming = bytes;
        write(archive(juce::String(size) + ".zip"),
              claiming.replace(bytes.rfind("PK\x01\x02") + 24, 4, integer(size)));
        import(archive(juce::String(size) + ".zip"));
    }
    write(archive("cut.zip"), std::string(bytes).erase(40, 500));
    import(archive("cut.zip"));
    expectRefusals(imports);

    // What operating systems add to archives is passed over; presets at the top take the archive's name.
    const auto mixed =
        zip("Mixed.zip", {{"Fine.qrl", good}, {"__MACOSX/._Fine.qrl", "x"}, {"notes.txt", "x"}});
    const auto imported = run({"import", mixed.getFullPathName()});
    EXPECT_EQ(imported.exitCode, 0);
    EXPECT_TRUE(imported.text.contains("passed over \"notes.txt\"")) << imported.text;
    EXPECT_EQ(run({"search", "Fine"}).text, "Mixed/Fine  [Bass]\n");
}

TEST_F(PresetsCommand, AnInterruptedImportLeavesTheOldFolderOrTheNewOne)
{
    // Thirty presets in two versions, told apart by their categories, one of them with one preset more.
    const auto good = bytesOf(file("A", "Two"));
    const std::string categories[] = {std::string(24, '\0'), good.substr(144, 24)};
    juce::StringArray archives;
    for (const int version : {0, 1})
    {
        std::vector<std::pair<juce::String, std::string>> entries;
        auto bytes = good;
        bytes.replace(144, 24, categories[version]);
        for (int i = 0; i < 30 + version; ++i)
            entries.emplace_back("Z/" + juce::String(i) + ".qrl", bytes);
        archives.add(zip(version == 0 ? "0.zip" : "1.zip", entries).getFullPathName());
    }

    const auto start = juce::Time::getMillisecondCounterHiRes();
    ASSERT_EQ(run({"import", archives[0]}).exitCode, 0);
    const auto wholeRun = juce::Time::getMillisecondCounterHiRes() - start;
    juce::Random random(5);
    int changes = 0;
    int current = 0;

    for (int round = 0; round < 24; ++round)
    {
        // Beside other tests a run takes up to three times as long as it did alone.
        test::runAndKill({QUOREL_TEST_PRESETS, "--prefix", rig.user.scratch.path().getFullPathName(),
                          "import", "--replace", archives[1 - current]},
                         wholeRun * (0.3 + 2.7 * random.nextDouble()));
        ASSERT_EQ(run({"list", "Z"}).exitCode, 0);
        const auto folder = file("Z", "0").getParentDirectory();
        const auto present = bytesOf(file("Z", "0")).substr(144, 24) == categories[1] ? 1 : 0;
        changes += present != current ? 1 : 0;
        for (int i = 0; i < 30; ++i)
            ASSERT_EQ(bytesOf(file("Z", juce::String(i))).substr(144, 24), categories[present]) << i;
        ASSERT_TRUE(file("Z", "30").existsAsFile() || (changes == 0 && present == 0));
        ASSERT_EQ(folder.getNumberOfChildFiles(juce::File::findFilesAndDirectories, ".quorel*"), 0);
        current = present;
    }

    EXPECT_GT(changes, 0) << "no import came to its end";
    EXPECT_LT(changes, 24) << "no import was interrupted";

    // Killed among the moves.
    const auto stage = file("Z", "0").getSiblingFile(".quorel-0.new").getChildFile("Late.qrl");
    ASSERT_TRUE(stage.create());
    write(stage, good);
    // What somebody else has put there since stays.
    const auto outdated = stage.getSiblingFile("0.qrl");
    write(outdated, good);
    ASSERT_TRUE(outdated.setLastModificationTime(file("Z", "0").getLastModificationTime() -
                                                 juce::RelativeTime::seconds(5)));
    const auto newer = bytesOf(file("Z", "0"));
    EXPECT_TRUE(run({"list", "Z"}).text.contains("Z/Late"));
    EXPECT_EQ(bytesOf(file("Z", "0")), newer);
    EXPECT_FALSE(stage.getParentDirectory().exists());
}

TEST_F(PresetsCommand, AFullDiskLosesNothing)
{
    const test::SmallDisk disk(256);
    if (!disk.isThere())
        GTEST_SKIP() << "no disk can be mounted here";

    const auto path = archive("a.zip").getFullPathName();
    ASSERT_EQ(run({"export", "A", "-o", path}).exitCode, 0);
    const auto onDisk = [&](juce::StringArray arguments)
    {
        arguments.insert(0, "--banks");
        arguments.insert(1, disk.child("Banks").getFullPathName());
        return run(arguments);
    };
    disk.child("Banks").createDirectory();
    ASSERT_EQ(onDisk({"import", path}).exitCode, 0);
    write(disk.child("old.zip"), "an older archive");
    const auto old = disk.child("Banks/A/One.qrl");
    const auto before = bytesOf(old);

    for (const int free : {0, 4096})
    {
        disk.fill(free);
        const juce::StringArray commands[] = {
            {"import", path, "--replace"},
            {"import", path, "--folder", "New"},
            {"copy", "A/One", "A/Three"},
            {"categories", "set", "A/One", "Arp"},
            {"notes", "A/One", "--author", "Me"},
            {"export", "A", "--replace", "-o", disk.child("old.zip").getFullPathName()}};
        for (const auto& command : commands)
        {
            // What there is room for may well be done: the archive is small.
            if (free > 4000 && command[0] == "export")
                continue;
            const auto outcome = onDisk(command);
            EXPECT_EQ(outcome.exitCode, 1) << command.joinIntoString(" ") << " " << free;
            EXPECT_TRUE(outcome.text.contains("No space left on device")) << outcome.text;
        }
        EXPECT_TRUE(bytesOf(old) == before);
        EXPECT_EQ(bytesOf(disk.child("old.zip")), "an older archive");
        EXPECT_EQ(disk.child("Banks").getNumberOfChildFiles(juce::File::findFilesAndDirectories), 1);
        EXPECT_EQ(disk.child("Banks/A").getNumberOfChildFiles(juce::File::findFilesAndDirectories), 2);
    }
}

#if !JUCE_WINDOWS
TEST_F(PresetsCommand, AFolderThatCannotBeReadIsNoEmptyOne)
{
    const auto folder = rig.user.banksFolder().getChildFile("Closed");
    ASSERT_TRUE(folder.createDirectory());
    ASSERT_EQ(chmod(folder.getFullPathName().toRawUTF8(), 0), 0);
    // Root may read everything.
    juce::StringArray commandLine{"setpriv", "--reuid=65534", "--clear-groups"};
    if (geteuid() != 0)
        commandLine.clear();
    commandLine.addArray({QUOREL_TEST_PRESETS, "--banks", rig.user.banksFolder().getFullPathName()});

    for (const juce::StringArray& command :
         {juce::StringArray{"verify"}, {"list"}, {"search", "o"}, {"show", "Closed/One"}})
    {
        auto whole = commandLine;
        whole.addArray(command);
        const auto [exitCode, text] = test::runProgram(whole);
        EXPECT_EQ(exitCode, 1) << text;
        EXPECT_TRUE(
            text.contains("cannot read the folder " + folder.getFullPathName() + " (Permission denied)"))
            << text;
    }
    ASSERT_EQ(chmod(folder.getFullPathName().toRawUTF8(), 0755), 0);
}
#endif

} // namespace
} // namespace quorel
