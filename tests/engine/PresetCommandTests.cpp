// SPDX-License-Identifier: GPL-3.0-or-later
// What a user does with preset files and folders, and what becomes of the files.
#include "PresetCommandRig.h"

#include "support/FullDisk.h"
#include "support/OddFiles.h"
#include "support/OpenWindow.h"

namespace quorel::test
{

TEST_F(PresetCommandTest, FoldersAreMadeRenamedAndDeleted)
{
    makePreset("Alpha", "one");
    standOn("Alpha", "one");
    commands.newFolder();
    EXPECT_EQ(names(), "Alpha/one") << "nothing typed";
    type("  My.Fol/der ");
    ASSERT_TRUE(commands.run("new folder"));
    EXPECT_EQ(names(), "MyFolder/one");
    EXPECT_EQ(library.getFolderNames()[library.getCurrentFolderIndex()], "MyFolder");
    commands.newFolder();
    EXPECT_EQ(lastAlert(), "|Folder MyFolder already exists. Please select another name");

    type("Alpha");
    commands.renameFolder();
    EXPECT_EQ(lastAlert(), "|Folder Alpha already exists. Please select another name");
    standOn("Alpha", "one");
    commands.copyPreset();
    const auto before = bytesOf("Alpha", "one");
    type("\xce\x91\xce\xb2");
    commands.renameFolder();
    EXPECT_EQ(rig.processor.getFolderName(), juce::String::fromUTF8("\xce\x91\xce\xb2"));
    EXPECT_EQ(bytesOf(rig.processor.getFolderName(), "one"), before) << "no file is touched";
    EXPECT_EQ(library.clipboardFolderName, rig.processor.getFolderName()) << "what was copied has moved";

    commands.deleteFolder();
    EXPECT_EQ(library.getFolderCount(), 3) << "nobody said yes";
    rig.interaction.confirmAnswer = true;
    commands.deleteFolder();
    EXPECT_EQ(rig.interaction.questions[1], juce::String::fromUTF8("|Delete folder \xce\x91\xce\xb2 ?"));
    EXPECT_EQ(folders(), "99 Default Preset|MyFolder");
    EXPECT_EQ(names(), "99 Default Preset/Default Preset");
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay()) << "no load is started";
    rig.interaction.confirmAnswer = false;
    rig.set(slot::masterVolume, 0.21f);
    commands.savePreset();
    EXPECT_EQ(lastQuestion(), "|Preset Default Preset holds another sound. Replace it ?");
    EXPECT_NE(chunkOf(defaultFolderName, defaultPresetName).parameters[slot::masterVolume], 0.21f);

    // Without a folder of that name, or a name at all, the banks folder itself is safe.
    for (const char* name : {"", ".", "..", "../..", "gone"})
    {
        standOn(name, "x");
        rig.interaction.confirmAnswer = true;
        rig.interaction.alerts.clear();
        type("other");

        for (const char* command : {"delete folder", "delete preset", "rename folder", "rename preset"})
            commands.run(command);

        EXPECT_EQ(folders(), "99 Default Preset|MyFolder") << name;
        EXPECT_EQ(rig.interaction.alerts.size(), 4) << "each says why";
        EXPECT_EQ(rig.interaction.alerts[1],
                  juce::String("|There is no file of preset ") + name + "/x. Nothing was deleted.");
    }
}

TEST_F(PresetCommandTest, PresetsAreMadeRenamedAndDeleted)
{
    ASSERT_TRUE(rig.load(0, "Orlen"));
    makePreset("Bank", "one", 0.3f);
    standOn("Bank", "one");
    commands.newPreset();
    EXPECT_EQ(files("Bank"), "one");
    type("one");
    commands.newPreset();
    EXPECT_EQ(lastAlert(), "|Preset one already exists. Please select another name");
    EXPECT_TRUE(rig.processor.getLayer(0).hasInstance());

    type("7th. heaven, which is much too long");
    commands.newPreset();
    EXPECT_EQ(names(), "Bank/_th_ heaven, which is mu");
    EXPECT_FALSE(rig.processor.getLayer(0).hasInstance());
    const auto chunk = chunkOf("Bank", rig.processor.getPresetName());
    EXPECT_EQ(chunk.layerSizes, (std::array<int, 4>{})) << "an empty preset names no instrument";

    // The neighbour follows: the next one, behind the last the one before.
    makePreset("Bank", "two", 0.2f);
    choose("one");
    rig.interaction.confirmAnswer = true;

    for (const char* neighbour : {"two", "_th_ heaven, which is mu"})
    {
        commands.deletePreset();
        EXPECT_EQ(names(), juce::String("Bank/") + neighbour);
        EXPECT_TRUE(waitForPreset());
    }

    EXPECT_EQ(rig.interaction.questions.joinIntoString("#"), "|Delete preset   one ?#|Delete preset   two ?");
    ASSERT_TRUE(rig.load(0, "Orlen"));
    commands.deletePreset();
    EXPECT_EQ(names(), "Bank/");
    EXPECT_FALSE(rig.processor.getLayer(0).hasInstance()) << "nothing is left to play";
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay());
    takeAlerts();

    for (const char* command : {"delete preset", "rename preset", "copy preset"})
        commands.run(command);

    EXPECT_EQ(takeAlerts(),
              "|No preset is chosen. Nothing was deleted.#|No preset is chosen. Nothing was renamed.#"
              "|No preset is chosen. Nothing was copied.");
    EXPECT_EQ(folders(), "99 Default Preset|Bank");
}

TEST_F(PresetCommandTest, RenamingChangesTheNameAlone)
{
    makePreset("Bank", "one", 0.3f);
    makePreset("Bank", "other");
    standOn("Bank", "one");
    choose("one");
    const int pan = layerParameter(0, layerSlot::pan);
    rig.processor.setParameterFromUi(pan, 0.2f);
    rig.pump(100);
    const auto before = bytesOf("Bank", "one");
    commands.copyPreset();
    type("other");
    commands.renamePreset();
    EXPECT_EQ(lastAlert(), "|Preset other already exists. Please select another name");
    type("a name with more than twenty-four characters");
    commands.renamePreset();
    const juce::String name("n twenty-four characters");
    EXPECT_EQ(files("Bank"), name + "|other");
    EXPECT_EQ(names(), "Bank/" + name);

    const auto withoutName = [](juce::MemoryBlock bytes)
    {
        std::memset(bytes.begin() + chunkOffset::presetName, 0, sizeof(NameField));
        std::memset(bytes.begin() + chunkOffset::parameter(slot::presetNameText), 0,
                    sizeof(float) * slot::nameTextLength);
        return bytes;
    };
    EXPECT_EQ(withoutName(bytesOf("Bank", name)), withoutName(before)) << "the rest is the same to the byte";
    EXPECT_EQ(chunkOf("Bank", name).presetName, name);
    EXPECT_EQ(nameInSound(), name);
    rig.set(slot::presetNameText, 0.0f);
    EXPECT_TRUE(rig.processor.getSession().isEdited());
    EXPECT_EQ(rig.get(pan), 0.2f);
    EXPECT_EQ(library.clipboardPresetName, name);

    // The original has the new name, too, and the file is still known.
    ASSERT_TRUE(rig.processor.getOriginalComparison().showOriginal());
    EXPECT_EQ(rig.get(pan), 0.0f);
    EXPECT_EQ(nameInSound(), name);
    EXPECT_TRUE(waitForPreset());
    commands.savePreset();
    EXPECT_TRUE(rig.interaction.questions.isEmpty());

    // A preset that is on its way arrives under its new name.
    commands.selectPresetByName("other");
    type("renamed");
    commands.renamePreset();
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(nameInSound(), "renamed");
}

TEST_F(PresetCommandTest, APasteIsACopyUnderAFreeName)
{
    makePreset("Alpha", "one", 0.3f);
    makePreset("Beta", "two");
    standOn("Beta", "two");
    commands.pastePreset();
    EXPECT_EQ(lastAlert(), "|Nothing has been copied yet. Nothing was pasted.");
    EXPECT_EQ(files("Beta"), "two");

    standOn("Alpha", "one");
    rig.set(slot::masterVolume, 0.6f);
    commands.copyPreset();
    standOn("Beta", "two");

    for (const char* name : {"one_copy", "one_copy 2"})
    {
        commands.pastePreset();
        EXPECT_EQ(names(), juce::String("Beta/") + name);
        EXPECT_TRUE(waitForPreset());
        EXPECT_EQ(rig.get(slot::masterVolume), 0.3f) << "the file as it lies on the disk";
        EXPECT_EQ(chunkOf("Beta", name).presetName, name);
        EXPECT_EQ(chunkOf("Beta", name).folderName, "Beta");
    }

    // Within its own folder the source stays as well.
    standOn("Alpha", "one");
    commands.pastePreset();
    EXPECT_EQ(files("Alpha"), "one|one_copy");

    // Where the file has gone, what was heard when it was copied is left.
    presetFileFor(banks, "Alpha", "one").deleteFile();
    commands.pastePreset();
    EXPECT_EQ(chunkOf("Alpha", "one_copy 2").parameters[slot::masterVolume], 0.6f);
    childNamed(banks, "Alpha").deleteRecursively();
    commands.pastePreset();
    EXPECT_EQ(lastAlert(), "|Folder Alpha isn't there. Nothing was pasted.");
    EXPECT_EQ(folders(), "99 Default Preset|Beta");
}

TEST_F(PresetCommandTest, FilesAreChosenAndNamed)
{
    makePreset("Alpha", "one", 0.3f);
    makePreset("Beta", "two", 0.2f);
    standOn("Alpha", "one");
    rig.set(slot::masterVolume, 0.77f);
    const auto saveAs = [&](const juce::File& chosen)
    {
        rig.interaction.chosenFile = chosen;
        commands.savePresetAs();
    };
    commands.loadPreset();
    saveAs({});
    EXPECT_EQ(rig.interaction.fileQuestions[0],
              "Please select preset to load...|" + childNamed(banks, "Alpha").getFullPathName() + "|*.qrl");
    EXPECT_EQ(rig.interaction.fileQuestions[1], "Please select preset filename to save...|" +
                                                    presetFileFor(banks, "Alpha", "one").getFullPathName() +
                                                    "|*.qrl");
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay()) << "both were cancelled";

    // Agreed to by the chooser, so nothing is asked.
    saveAs(presetFileFor(banks, "Beta", "two"));
    EXPECT_EQ(names(), "Beta/two");
    EXPECT_TRUE(rig.interaction.questions.isEmpty());
    // A name without the ending would replace a file that nobody was asked about.
    saveAs(childNamed(banks, "Alpha").getChildFile("one"));
    EXPECT_EQ(rig.interaction.questions.joinIntoString("#"), "|preset one already exists. Replace ?");
    EXPECT_EQ(names(), "Beta/two");
    // The new names go into the sound, wherever it is saved.
    saveAs(childNamed(banks, "Alpha").getChildFile("v1.5"));
    EXPECT_EQ(files("Alpha"), "one|v1.5");

    for (const auto& bytes : {bytesOf("Alpha", "v1.5"), rig.state()})
    {
        rig.restore(bytes);
        EXPECT_EQ(names(), "Alpha/v1.5");
        EXPECT_EQ(nameInSound(), "v1.5");
        EXPECT_EQ(readParamText(rig.processor, slot::folderNameText, slot::nameTextLength), "Alpha");
    }

    // A chosen file counts with its folder, be it reached by another path; outside the banks there are none.
    rig.interaction.chosenFile =
        byAnotherPath(childNamed(banks, "Beta"), rig.user.scratch.child("link")).getChildFile("two.qrl");
    commands.loadPreset();
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(names(), "Beta/two");
    EXPECT_EQ(rig.get(slot::masterVolume), 0.77f);
    EXPECT_TRUE(rig.interaction.alerts.isEmpty());
    const auto outside = rig.user.scratch.child("Desktop/three.qrl");
    ASSERT_TRUE(replaceFile(outside, bytesOf("Alpha", "one")));

    for (const auto& place : {outside, banks.getChildFile("three.qrl")})
    {
        saveAs(place);
        commands.loadPreset();
        const auto reason = "|Presets lie in the folders of " + banks.getFullPathName() + ". Nothing was ";
        EXPECT_EQ(takeAlerts(), reason + "saved.#" + reason + "loaded.");
    }

    EXPECT_EQ(names(), "Beta/two");
    commands.refreshLists();
    EXPECT_EQ(folders(), "99 Default Preset|Alpha|Beta");
}

TEST_F(PresetCommandTest, ASaveAsksOnlyWhereItWouldReplaceWhatIsNotKnownHere)
{
    makePreset("Bank", "one", 0.3f);
    standOn("Bank", "one");
    choose("one");
    const auto onDisk = [&] { return chunkOf("Bank", "one").parameters[slot::masterVolume]; };
    const auto save = [&](float volume)
    {
        rig.set(slot::masterVolume, volume);
        commands.savePreset();
    };
    save(0.4f);
    EXPECT_EQ(onDisk(), 0.4f);

    // Another program saves its own.
    makePreset("Bank", "one", 0.9f);
    save(0.5f);
    EXPECT_EQ(lastQuestion(), "|Preset one has been changed elsewhere meanwhile. Replace it ?");
    EXPECT_EQ(onDisk(), 0.9f) << "nobody said yes";
    rig.interaction.confirmAnswer = true;
    commands.savePreset();
    EXPECT_EQ(onDisk(), 0.5f);
    rig.interaction.confirmAnswer = false;
    save(0.6f);
    EXPECT_EQ(onDisk(), 0.6f) << "once is enough";
    EXPECT_EQ(rig.interaction.questions.size(), 2);

    // A project may hold an older state of the preset.
    const auto project = rig.state();
    rig.restore(project);
    commands.savePreset();
    EXPECT_EQ(rig.interaction.questions.size(), 2) << "the same sound";
    rig.restore(project);
    save(0.7f);
    EXPECT_EQ(lastQuestion(), "|Preset one holds another sound. Replace it ?");
    EXPECT_EQ(onDisk(), 0.6f);

    // Before a project plays, its sound has the old preset's names.
    bool closed = false;
    ASSERT_TRUE(rig.load(0, "Orlen"));
    rig.processor.getLayer(0).setWindow(std::make_unique<OpenWindow>(closed));
    rig.restore(project);
    commands.savePreset();
    EXPECT_EQ(takeAlerts(), "|The project is still being opened. Nothing was saved.");
    EXPECT_EQ(onDisk(), 0.6f);
    EXPECT_TRUE(waitForPreset());

    // Another program's rename or delete leaves no file to save over: it is to be named.
    presetFileFor(banks, "Bank", "one").deleteFile();
    commands.savePreset();
    EXPECT_EQ(rig.interaction.fileQuestions.size(), 1);
    EXPECT_EQ(files("Bank"), "");
    EXPECT_TRUE(rig.interaction.alerts.isEmpty());
}

TEST_F(PresetCommandTest, LongNamesComeBackFromAProject)
{
    const juce::String longName("A name of more than thirty-two characters");
    const juce::String longFolder("A folder's name that is just as long as that");
    makePreset(longFolder, longName, 0.3f);
    standOn(longFolder, longName);
    choose(longName);
    const auto project = rig.state();
    standOn(defaultFolderName, defaultPresetName);
    rig.restore(project);
    EXPECT_EQ(names(), longFolder + "/" + longName);
    EXPECT_EQ(library.getFolderNames()[library.getCurrentFolderIndex()], longFolder);
    EXPECT_EQ(library.getPresetNames()[library.getCurrentPresetIndex()], longName);
    type("short");
    commands.renamePreset();
    EXPECT_EQ(files(longFolder), "short");
}

TEST_F(PresetCommandTest, AFullDiskTakesNothingAway)
{
    const int pan = layerParameter(0, layerSlot::pan);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    standOn("Bank", "old");
    ASSERT_TRUE(rig.processor.getPresetStorage().save({}, true));
    const auto before = bytesOf("Bank", "old");
    rig.processor.setParameterFromUi(pan, 0.2f);
    {
        const FullDisk full(4096);

        if (!full.isThere())
            GTEST_SKIP() << "no disk can be made full here";

        EXPECT_FALSE(rig.processor.getPresetStorage().save({}, true));
        type("new");
        commands.newPreset();
        commands.renamePreset();
    }
    EXPECT_EQ(takeAlerts(), "|Could not save Presert file: Bank/old (No space left on device)#"
                            "|Could not save Presert file: Bank/new (No space left on device)#"
                            "|Could not rename preset: old (No space left on device)");
    EXPECT_TRUE(bytesOf("Bank", "old") == before);
    EXPECT_EQ(files("Bank"), "old");
    EXPECT_EQ(names(), "Bank/old");
    EXPECT_TRUE(rig.processor.getSession().isEdited()) << "still to be saved";
    EXPECT_EQ(rig.get(pan), 0.2f);
}

TEST_F(PresetCommandTest, AFolderThatCannotBeIsTold)
{
    const auto file = banks.getChildFile("Blocked");
    ASSERT_TRUE(file.replaceWithText("in the way"));
    standOn("Blocked", "Old");
    EXPECT_FALSE(rig.processor.getPresetStorage().save("New", true));
    // The reason is in the system's words.
    EXPECT_TRUE(lastAlert().startsWith("|Could not save Presert file: Blocked/New (File ")) << lastAlert();
    EXPECT_EQ(names(), "Blocked/Old");
    EXPECT_EQ(file.loadFileAsString(), "in the way");
}

/** Agrees to everything. What a test has happen while a question is open, a host may do, too. */
class PresetQuestionTest : public testing::Test
{
protected:
    PresetQuestionTest()
    {
        interaction.typedText = "x";
        interaction.confirmAnswer = true;
        interaction.chosenFile = file;
        processor = std::make_unique<PluginProcessor>(user.makeStore(), interaction);
    }

    const UserRig user;
    const juce::File file = user.banksFolder().getChildFile("99 Default Preset/Default Preset.qrl");
    RecordingInteraction interaction;
    std::unique_ptr<PluginProcessor> processor;
};

constexpr const char* askingCommands[] = {"new folder",  "rename folder", "delete folder",
                                          "new preset",  "rename preset", "delete preset",
                                          "load preset", "save preset as"};

TEST_F(PresetQuestionTest, APlugInClosedBehindItIsLeftAlone)
{
    interaction.duringQuestion = [&] { processor = nullptr; };

    for (const char* command : askingCommands)
    {
        processor = std::make_unique<PluginProcessor>(user.makeStore(), interaction);
        EXPECT_TRUE(processor->getPresetCommands().run(command));
        EXPECT_EQ(processor, nullptr) << command;
    }

    processor = std::make_unique<PluginProcessor>(user.makeStore(), interaction);
    EXPECT_FALSE(processor->getPresetStorage().save("Default Preset", false));
    EXPECT_TRUE(file.existsAsFile()) << "nothing was done";
}

TEST_F(PresetQuestionTest, TheAnswerCountsForTheSoundThatItWasAskedAbout)
{
    juce::MemoryBlock before;
    ASSERT_TRUE(readWholeFile(file, before));
    // The project's preset has the very same names.
    processor->setParameter(slot::masterVolume, 0.3f);
    juce::MemoryBlock project;
    processor->getStateInformation(project);
    processor->setParameter(slot::masterVolume, 0.6f);
    interaction.duringQuestion = [&]
    { processor->setStateInformation(project.getData(), static_cast<int>(project.getSize())); };

    for (const char* command : askingCommands)
    {
        interaction.alerts.clear();
        EXPECT_TRUE(processor->getPresetCommands().run(command));
        EXPECT_EQ(interaction.alerts.joinIntoString("#"),
                  "|Another sound has come in meanwhile. Nothing was done.")
            << command;
    }

    EXPECT_EQ(processor->getPresetLibrary().getFolderNames().joinIntoString("|"), "99 Default Preset");
    EXPECT_EQ(listPresets(file.getParentDirectory()).joinIntoString("|"), "Default Preset");
    juce::MemoryBlock after;
    ASSERT_TRUE(readWholeFile(file, after));
    EXPECT_EQ(after, before);
    EXPECT_EQ(processor->getParameter(slot::masterVolume), 0.3f);
}

} // namespace quorel::test
