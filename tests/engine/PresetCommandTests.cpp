// SPDX-License-Identifier: GPL-3.0-or-later
// What a user does with preset files and folders, and what becomes of the files.
#include "PresetCommandRig.h"

#if !JUCE_WINDOWS
#include <csignal>
#include <sys/resource.h>
#endif

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
    EXPECT_EQ(rig.interaction.textQuestions[0], "Create new Folder|Enter new folder name:|");
    EXPECT_EQ(names(), "MyFolder/one");
    EXPECT_EQ(library.getPresetCount(), 0);
    EXPECT_EQ(library.getFolderNames()[library.getCurrentFolderIndex()], "MyFolder");
    commands.newFolder();
    EXPECT_EQ(lastAlert(), "|Folder MyFolder already exists. Please select another name");

    type("Alpha");
    commands.renameFolder();
    EXPECT_EQ(rig.interaction.textQuestions[3], "Rename folder|Enter new name for MyFolder folder:|");
    EXPECT_EQ(lastAlert(), "|Folder Alpha already exists. Please select another name");
    standOn("Alpha", "one");
    commands.copyPreset();
    type("\xce\x91\xce\xb2");
    commands.renameFolder();
    EXPECT_EQ(rig.processor.getFolderName(), juce::String::fromUTF8("\xce\x91\xce\xb2"));
    EXPECT_EQ(library.clipboardFolderName, rig.processor.getFolderName()) << "what was copied has moved";
    EXPECT_EQ(library.getCurrentPresetIndex(), 0);

    commands.deleteFolder();
    EXPECT_EQ(library.getFolderCount(), 3) << "nobody said yes";
    rig.interaction.confirmAnswer = true;
    commands.deleteFolder();
    EXPECT_EQ(rig.interaction.questions[1], juce::String::fromUTF8("|Delete folder \xce\x91\xce\xb2 ?"));
    EXPECT_EQ(folders(), "99 Default Preset|MyFolder");
    EXPECT_EQ(names(), "99 Default Preset/Default Preset");
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay()) << "no load is started";

    // Without a folder of that name, or a name at all, the banks folder itself is safe.
    for (const char* name : {"", ".", "..", "../..", "gone"})
    {
        standOn(name, "x");
        commands.deleteFolder();
        commands.deletePreset();
        type("other");
        commands.renameFolder();
        EXPECT_EQ(folders(), "99 Default Preset|MyFolder") << name;
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
    rig.processor.getEditorRequests().setPage(Page::effects);
    commands.newPreset();
    EXPECT_EQ(rig.interaction.textQuestions[0], "Create new empty preset|Enter new preset name:|");
    EXPECT_EQ(names(), "Bank/_th_ heaven, which is mu");
    EXPECT_FALSE(rig.processor.getLayer(0).hasInstance());
    EXPECT_EQ(rig.get(slot::view), 0.3f);
    StateChunk chunk;
    juce::MemoryBlock bytes;
    ASSERT_TRUE(readWholeFile(presetFileFor(banks, "Bank", rig.processor.getPresetName()), bytes));
    ASSERT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);
    EXPECT_EQ(chunk.layerSizes, (std::array<int, 4>{})) << "an empty preset names no instrument";
    EXPECT_EQ(chunk.presetName, rig.processor.getPresetName());

    rig.set(slot::masterVolume, 0.21f);
    type("a name with more than twenty-four characters");
    commands.renamePreset();
    EXPECT_EQ(rig.interaction.textQuestions[rig.interaction.textQuestions.size() - 1],
              "Rename preset|Enter new name for:   _th_ heaven, which is mu|_th_ heaven, which is mu");
    EXPECT_EQ(files("Bank"), "n twenty-four characters|one");
    ASSERT_TRUE(readWholeFile(presetFileFor(banks, "Bank", "n twenty-four characters"), bytes));
    ASSERT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);
    EXPECT_EQ(chunk.presetName, "n twenty-four characters") << "the name inside matches";
    EXPECT_EQ(chunk.parameters[slot::masterVolume], 0.21f);
    type("one");
    commands.renamePreset();
    EXPECT_EQ(lastAlert(), "|Preset one already exists. Please select another name");

    rig.interaction.confirmAnswer = true;
    commands.deletePreset();
    EXPECT_EQ(rig.interaction.questions[0], "|Delete preset   n twenty-four characters ?");
    EXPECT_EQ(names(), "Bank/one");
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(rig.get(slot::masterVolume), 0.3f);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    commands.deletePreset();
    EXPECT_EQ(names(), "Bank/");
    EXPECT_FALSE(rig.processor.getLayer(0).hasInstance()) << "nothing is left to play";
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay());
    commands.deletePreset();
    EXPECT_EQ(folders(), "99 Default Preset|Bank");
}

TEST_F(PresetCommandTest, PasteGoesByTheStopOver)
{
    makePreset("Alpha", "one", 0.3f);
    makePreset("Beta", "two");
    makePreset(defaultFolderName, "one", 0.2f);
    standOn("Beta", "two");
    commands.pastePreset();
    EXPECT_EQ(files("Beta"), "two") << "nothing was copied";

    standOn("Alpha", "one");
    commands.copyPreset();
    standOn("Beta", "two");

    for (int round = 0; round < 2; ++round)
    {
        commands.pastePreset();
        EXPECT_EQ(names(), "Beta/one_copy");
        EXPECT_EQ(files("Beta"), "one_copy|two");
        EXPECT_TRUE(waitForPreset());
        EXPECT_EQ(rig.get(slot::masterVolume), 0.3f) << "the file as it lies on the disk";
    }

    EXPECT_EQ(files(defaultFolderName), "Default Preset|one") << "another preset of that name stays";
    EXPECT_EQ(files("Alpha"), "one");

    // From the default folder itself the file moves.
    standOn(defaultFolderName, "one");
    commands.copyPreset();
    commands.pastePreset();
    EXPECT_EQ(files(defaultFolderName), "Default Preset|one_copy");
    EXPECT_TRUE(waitForPreset());
    commands.pastePreset();
    EXPECT_EQ(lastAlert(), "|Could not paste preset: one");
}

TEST_F(PresetCommandTest, FilesAreChosenAndNamed)
{
    makePreset("Alpha", "one", 0.3f);
    makePreset("Beta", "two", 0.2f);
    standOn("Alpha", "one");
    rig.set(slot::masterVolume, 0.77f);
    commands.loadPreset();
    commands.savePreset();
    EXPECT_EQ(rig.interaction.fileQuestions[0],
              "Please select preset to load...|" + childNamed(banks, "Alpha").getFullPathName() + "|*.qrl");
    EXPECT_EQ(rig.interaction.fileQuestions[1], "Please select preset filename to save...|" +
                                                    presetFileFor(banks, "Alpha", "one").getFullPathName() +
                                                    "|*.qrl");
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay()) << "both were cancelled";

    // Agreed to by the chooser, so nothing is asked.
    rig.interaction.chosenFile = presetFileFor(banks, "Beta", "two");
    commands.savePreset();
    EXPECT_EQ(names(), "Beta/two");
    EXPECT_TRUE(rig.interaction.questions.isEmpty());
    // A name without the ending would replace a file that nobody was asked about.
    rig.interaction.chosenFile = childNamed(banks, "Alpha").getChildFile("one");
    commands.savePreset();
    EXPECT_EQ(rig.interaction.questions.joinIntoString("#"), "|preset one already exists. Replace ?");
    EXPECT_EQ(names(), "Beta/two");
    rig.interaction.chosenFile = childNamed(banks, "Alpha").getChildFile("v1.5");
    commands.savePreset();
    EXPECT_EQ(files("Alpha"), "one|v1.5");
    // A file elsewhere gives its folder's name to a bank.
    rig.interaction.chosenFile = rig.user.scratch.child("Desktop/three.qrl");
    commands.savePreset();
    EXPECT_EQ(files("Desktop"), "three");
    EXPECT_FALSE(rig.user.scratch.child("Desktop").exists());

    standOn("Alpha", "v1.5");
    rig.interaction.chosenFile = presetFileFor(banks, "Alpha", "one");
    commands.loadPreset();
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(names(), "Alpha/one");
    EXPECT_EQ(rig.get(slot::masterVolume), 0.3f);
    EXPECT_TRUE(rig.interaction.alerts.isEmpty());
}

TEST_F(PresetCommandTest, AFullDiskTakesNothingAway)
{
    const int pan = layerParameter(0, layerSlot::pan);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    standOn("Bank", "old");
    ASSERT_TRUE(rig.processor.getPresetStorage().save({}, true));
    juce::MemoryBlock before;
    ASSERT_TRUE(readWholeFile(presetFileFor(banks, "Bank", "old"), before));
    rig.processor.setParameterFromUi(pan, 0.2f);
#if !JUCE_WINDOWS
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, unlimited.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool saved = rig.processor.getPresetStorage().save({}, true);
    type("new");
    commands.newPreset();
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_FALSE(saved);
    EXPECT_EQ(rig.interaction.alerts.joinIntoString("#"),
              "|Could not save Presert file: Bank/old#|Could not save Presert file: Bank/new");
#endif
    juce::MemoryBlock after;
    ASSERT_TRUE(readWholeFile(presetFileFor(banks, "Bank", "old"), after));
    EXPECT_TRUE(after == before);
    EXPECT_EQ(files("Bank"), "old");
    EXPECT_EQ(names(), "Bank/old");
    EXPECT_TRUE(rig.processor.getSession().isEdited()) << "still to be saved";
    EXPECT_EQ(rig.get(pan), 0.2f);
    rig.play();
    rig.noteOn(60);
    EXPECT_GT(rig.playSeconds(0.3).peak(), 0.0005f) << "the sound goes on";
}

/** Closes the plug-in while its question is open, as a host may do. */
class ClosingInteraction : public RecordingInteraction
{
public:
    juce::String askText(const juce::String&, const juce::String&, const juce::String&) override
    {
        processor = nullptr;
        return "x";
    }

    bool confirm(const juce::String&, const juce::String&) override
    {
        processor = nullptr;
        return true;
    }

    juce::File chooseFileToSave(const juce::String&, const juce::File& suggested,
                                const juce::String&) override
    {
        processor = nullptr;
        return suggested;
    }

    juce::File chooseFileToOpen(const juce::String&, const juce::File&, const juce::String&) override
    {
        processor = nullptr;
        return chosenFile;
    }

    std::unique_ptr<PluginProcessor> processor;
};

TEST(PresetQuestions, APlugInClosedBehindAQuestionIsLeftAlone)
{
    const UserRig user;
    ClosingInteraction interaction;
    interaction.chosenFile = user.banksFolder().getChildFile("99 Default Preset/Default Preset.qrl");

    for (const char* command : {"new folder", "rename folder", "delete folder", "new preset", "rename preset",
                                "delete preset", "load preset", "save preset"})
    {
        interaction.processor = std::make_unique<PluginProcessor>(user.makeStore(), interaction);
        EXPECT_TRUE(interaction.processor->getPresetCommands().run(command));
        EXPECT_EQ(interaction.processor, nullptr) << command;
    }

    interaction.processor = std::make_unique<PluginProcessor>(user.makeStore(), interaction);
    EXPECT_FALSE(interaction.processor->getPresetStorage().save("Default Preset", false));
    EXPECT_TRUE(interaction.chosenFile.existsAsFile()) << "nothing was done";
}

} // namespace quorel::test
