// SPDX-License-Identifier: GPL-3.0-or-later
// What is done with several presets at once, and with files that a user drops.
#include "PresetCommandRig.h"

#include "presets/PresetNotes.h"

namespace quorel::test
{

class SelectionTest : public PresetCommandTest
{
protected:
    void SetUp() override
    {
        PresetCommandTest::SetUp();

        for (const char* name : {"a", "b", "c", "d"})
            makePreset("Bank", name);

        makePreset("Other", "x");
        standOn("Bank", "a");
        commands.refreshIndex();
    }

    static std::string bytesWithoutCategories(const juce::MemoryBlock& bytes)
    {
        std::string text(bytes.begin(), bytes.end());
        return text.replace(144, 24, "");
    }

    juce::StringArray wordsOf(const juce::String& folder, const juce::String& name)
    {
        commands.refreshIndex();
        const auto* entry = library.find({folder, name});
        return entry != nullptr ? categoryWords(entry->flags) : juce::StringArray("gone");
    }

    SelectionCommands& selection = commands.onSelection();
    PresetMarks& marks = library.marks;
};

TEST_F(SelectionTest, CategoriesAndNotesGoIntoTheFilesAndChangeNothingElse)
{
    choose("a");
    const auto before = bytesOf("Bank", "a");
    commands.clickPreset(0, Modifier::shift);
    commands.clickPreset(2, Modifier::shift);
    const int pad = *findCategory("Pad");
    commands.toggleCategory(pad);
    EXPECT_EQ(lastQuestion(), "|Give Pad to 3 presets ?");
    EXPECT_TRUE(bytesOf("Bank", "a") == before) << "the answer was no";
    rig.interaction.confirmAnswer = true;
    commands.toggleCategory(pad);

    for (const char* name : {"a", "b", "c"})
        EXPECT_EQ(wordsOf("Bank", name).joinIntoString(","), "Pad") << name;

    EXPECT_EQ(wordsOf("Bank", "d").size(), 0);
    EXPECT_EQ(bytesWithoutCategories(bytesOf("Bank", "a")), bytesWithoutCategories(before));
    EXPECT_TRUE(hasCategory(rig.get(categoryParameter(pad)), pad)) << "the sound that plays has it, too";
    EXPECT_FALSE(rig.processor.getSession().isEdited());

    selection.setNotes({"Bank", "a"}, {"Me", "A comment"});
    EXPECT_EQ(readPresetNotes(bytesOf("Bank", "a")).author, "Me");
    const auto questions = rig.interaction.questions.size();
    rig.processor.setParameterFromUi(slot::masterVolume, 0.7f);
    commands.savePreset();
    EXPECT_EQ(rig.interaction.questions.size(), questions) << "what was written here isn't asked about";
    EXPECT_EQ(chunkOf("Bank", "a").parameters[slot::masterVolume], 0.7f);
    EXPECT_EQ(readPresetNotes(bytesOf("Bank", "a")).comment, "A comment");
    ASSERT_TRUE(rig.processor.getPresetStorage().saveAs("Other", "copy", false));
    EXPECT_EQ(readPresetNotes(bytesOf("Other", "copy")).author, "Me");
    EXPECT_TRUE(rig.interaction.alerts.isEmpty()) << lastAlert();
}

TEST_F(SelectionTest, ManyAreMovedExportedAndDeleted)
{
    selection.rate({{"Bank", "b"}, {"Bank", "c"}}, 4);
    selection.setFavourite({{"Bank", "a"}}, true);
    makePreset("Other", "b");
    standOn("Bank", "a");
    commands.clickPreset(1, Modifier::control);
    commands.clickPreset(2, Modifier::control);
    const auto menu = selection.menu(selection.chosen());
    selection.menuChosen(rowOf(rowOf(menu, "move 2 presets to").subMenu, "Other").id);
    EXPECT_EQ(lastAlert(), "|Nothing was moved (there is a preset b in Other already)");
    EXPECT_EQ(files("Bank"), "a|b|c|d");
    presetFileFor(banks, "Other", "b").deleteFile();
    selection.moveTo({{"Bank", "b"}, {"Bank", "a"}}, "Other");
    EXPECT_EQ(files("Bank"), "c|d");
    EXPECT_EQ(files("Other"), "a|b|x");
    EXPECT_EQ(names(), "Other/a") << "what plays has moved";
    EXPECT_EQ(chunkOf("Other", "b").folderName, "Other");
    EXPECT_EQ(marks.get({"Other", "b"}).rating, 4);
    EXPECT_TRUE(marks.get({"Other", "a"}).favourite && !marks.get({"Bank", "a"}).favourite);

    rig.interaction.chosenFile = rig.user.scratch.child("packed");
    selection.exportToArchive({{"Bank", "c"}, {"Other", "b"}});
    rig.interaction.chosenFile = rig.user.scratch.path();
    selection.exportToFolder({{"Bank", "c"}});
    EXPECT_TRUE(rig.user.scratch.child("c.qrl").hasIdenticalContentTo(presetFileFor(banks, "Bank", "c")));
    const int alerts = rig.interaction.alerts.size();
    selection.exportToFolder({{"Bank", "d"}, {"Bank", "c"}});
    EXPECT_EQ(rig.interaction.alerts.size(), alerts + 1);
    EXPECT_FALSE(rig.user.scratch.child("d.qrl").exists()) << "nothing, as one is there already";
    makePreset("Twin", "b", 0.9f);
    selection.exportToFolder({{"Other", "b"}, {"Twin", "b"}});
    EXPECT_EQ(lastAlert(), "|Two of the presets are called b. Nothing was exported.");
    EXPECT_FALSE(rig.user.scratch.child("b.qrl").exists());

    rig.interaction.confirmAnswer = true;
    rig.interaction.questions.clear();
    selection.remove({{"Other", "a"}, {"Other", "b"}, {"Bank", "c"}});
    EXPECT_EQ(rig.interaction.questions.joinIntoString("#"), "|Delete 3 presets ?");
    EXPECT_EQ(files("Bank") + " " + files("Other"), "d x");
    EXPECT_EQ(names(), "Other/x") << "the next that is left";
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(marks.get({"Other", "b"}).rating, 0);
#if !JUCE_WINDOWS
    // They lie in the trash. On Windows that is none of the scratch folder's.
    EXPECT_EQ(rig.user.scratch.child("data/Trash/files").getNumberOfChildFiles(juce::File::findFiles), 3);
#endif

    type("Back");
    rig.interaction.chosenFile = rig.user.scratch.child("packed.zip");
    selection.menuChosen(rowOf(menu, "import a file").id);
    EXPECT_EQ(files("Back"), "b|c");
    EXPECT_EQ(chunkOf("Back", "c").folderName, "Back");
}

TEST_F(SelectionTest, MarksFollowCommandsAndOrderLists)
{
    selection.rate({{"Bank", "c"}}, 5);
    selection.rate({{"Bank", "b"}}, 2);
    commands.setOrder(PresetOrder::byRating);
    EXPECT_EQ(library.getPresetNames().joinIntoString("|"), "c|b|a|d");
    EXPECT_TRUE(commands.stepPreset(-1));
    EXPECT_EQ(names(), "Bank/b") << "in the order that is shown";
    EXPECT_TRUE(waitForPreset());
    choose("d");
    commands.setAmong(PresetQuery::Among::recent);
    commands.refreshIndex();
    library.search();
    ASSERT_EQ(library.getFilteredCount(), 2);
    EXPECT_EQ(library.getFilteredPreset(0).name, "d") << "the newest first";
    ASSERT_TRUE(presetFileFor(banks, "Bank", "a").setLastModificationTime(juce::Time(1000)));
    commands.setOrder(PresetOrder::byDate);
    EXPECT_EQ(library.getPresetNames()[3], "a");

    type("renamed");
    commands.renamePreset();
    selection.rate({{"Bank", "renamed"}}, 3);
    commands.renameFolder();
    type("again");
    commands.renamePreset();
    EXPECT_EQ(marks.get({"renamed", "again"}).rating, 3);
    EXPECT_EQ(marks.get({"renamed", "c"}).rating, 5);
    rig.interaction.confirmAnswer = true;
    commands.deletePreset();
    EXPECT_EQ(marks.get({"renamed", "again"}).rating, 0);
    commands.deleteFolder();
    EXPECT_EQ(PresetMarks(rig.user.scratch.child("PresetMarks.txt")).get({"renamed", "c"}).rating, 0);
    EXPECT_TRUE(rig.interaction.alerts.isEmpty()) << lastAlert();
}

TEST_F(SelectionTest, DroppedFilesAreLoadedOrImportedAndReplaceNothing)
{
    const auto drop = [&](const juce::StringArray& paths) { commands.importing().take(paths); };
    drop({presetFileFor(banks, "Other", "x").getFullPathName()});
    EXPECT_EQ(names(), "Other/x");
    EXPECT_TRUE(rig.interaction.questions.isEmpty()) << "it is here already";
    ASSERT_TRUE(waitForPreset());

    const auto outside = rig.user.scratch.child("x.qrl");
    ASSERT_TRUE(presetFileFor(banks, "Bank", "d").copyFileTo(outside));
    const auto before = bytesOf("Other", "x");
    drop({outside.getFullPathName()});
    EXPECT_EQ(lastQuestion(), "|Import preset x into folder Other ?");
    EXPECT_EQ(files("Other"), "x");
    rig.interaction.confirmAnswer = true;
    drop({outside.getFullPathName()});
    EXPECT_EQ(files("Other"), "x|x 2");
    EXPECT_TRUE(bytesOf("Other", "x") == before);
    EXPECT_EQ(names(), "Other/x 2");
    EXPECT_EQ(chunkOf("Other", "x 2").presetName, "x 2");

    const auto damaged = rig.user.scratch.child("y.qrl");
    ASSERT_TRUE(damaged.replaceWithText("no preset"));
    drop({outside.getFullPathName(), damaged.getFullPathName()});
    EXPECT_EQ(lastQuestion(), "|Import 2 presets into folder Other ?");
    EXPECT_TRUE(lastAlert().contains("y.qrl")) << lastAlert();
    EXPECT_EQ(files("Other"), "x|x 2") << "all or none";

    const auto archive = rig.user.scratch.child("Bank.zip");
    juce::ZipFile::Builder builder;
    builder.addFile(outside, 9, "../../../escaped.qrl");
    juce::MemoryOutputStream bytes;
    builder.writeToStream(bytes, nullptr);
    archive.replaceWithData(bytes.getData(), bytes.getDataSize());
    const auto folder = folders();
    drop({archive.getFullPathName(), damaged.withFileExtension("mid").getFullPathName()});
    EXPECT_EQ(folders(), folder);
    EXPECT_TRUE(rig.interaction.alerts.joinIntoString("#").contains(
        "Could not import Bank.zip (the archive holds the unsafe entry"));
    EXPECT_TRUE(rig.interaction.alerts.joinIntoString("#").contains("Could not read MIDI file y.mid"));
    EXPECT_FALSE(banks.getSiblingFile("escaped.qrl").exists());
}

} // namespace quorel::test
