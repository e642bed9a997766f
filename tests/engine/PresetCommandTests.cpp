// SPDX-License-Identifier: GPL-3.0-or-later
// What a user does with presets and folders, on real files, and the road of a preset under real blocks and
// timers.
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/PresetNames.h"
#include "presets/StateChunk.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

#if !JUCE_WINDOWS
#include <csignal>
#include <sys/resource.h>
#endif

namespace quorel::test
{

class PresetCommandTest : public testing::Test
{
protected:
    using Modifier = PresetCommands::Modifier;

    /** A preset file of its own master volume, so that a load can be told from others. */
    void makePreset(const juce::String& folder, const juce::String& name, float volume = 0.5f)
    {
        const auto file = presetFileFor(banks, folder, name);
        StateChunk chunk;
        chunk.presetName = name;
        chunk.folderName = folder;
        chunk.parameters.assign(numHostParameters, 0.0f);
        chunk.parameters[slot::masterVolume] = volume;
        juce::MemoryBlock bytes;
        writeStateChunk(chunk, bytes);
        ASSERT_TRUE(replaceFile(file, bytes));
    }

    bool waitForPreset()
    {
        return rig.playUntil([&] { return !rig.processor.getTransition().presetBusy.load(); }, 30000);
    }

    /** Makes a preset the current one without the wait of its load. */
    void standOn(const juce::String& folder, const juce::String& preset)
    {
        rig.processor.setNames(preset, folder);
        commands.refreshLists();
    }

    juce::String files(const juce::String& folder)
    {
        return listPresets(childNamed(banks, folder)).joinIntoString("|");
    }

    juce::String folders() { return library.getFolderNames().joinIntoString("|"); }

    juce::String lastAlert() { return rig.interaction.alerts[rig.interaction.alerts.size() - 1]; }

    juce::String names() { return rig.processor.getFolderName() + "/" + rig.processor.getPresetName(); }

    void type(const char* text) { rig.interaction.typedText = juce::String::fromUTF8(text); }

    ProcessorRig rig;
    PresetLibrary& library = rig.processor.getPresetLibrary();
    PresetCommands& commands = rig.processor.getPresetCommands();
    const juce::File banks = rig.user.banksFolder();
};

TEST_F(PresetCommandTest, ASwapUnderNotesReachesSilenceBeforeTheInstrumentGoes)
{
    ASSERT_TRUE(rig.load(0, "Orlen"));
    rig.processor.setNames("First", "Bank");
    ASSERT_TRUE(rig.processor.savePreset("First", true));
    makePreset("Bank", "Second", 0.4f);
    commands.refreshLists();
    rig.noteOn(60);
    rig.playSeconds(0.3);
    const float loud = rig.play().peak();
    ASSERT_GT(loud, 0.001f);

    commands.selectPreset(1);
    EXPECT_EQ(names(), "Bank/Second");
    EXPECT_FALSE(rig.processor.requestPresetLoad("Bank", "First")) << "one change at a time";
    commands.selectPreset(0);
    commands.newFolder();
    commands.deletePreset();
    EXPECT_TRUE(rig.interaction.textQuestions.isEmpty() && rig.interaction.questions.isEmpty());

    // The held note sinks over 501 blocks; no block jumps by more than the sound's own swing.
    float last = loud;

    for (int block = 0; block < 500; ++block)
    {
        ProcessorRig::pump(block % 50 == 0 ? 60 : 0);
        ASSERT_TRUE(rig.processor.getLayer(0).hasInstance()) << "gone in block " << block;
        const float peak = rig.play().peak();
        ASSERT_LE(peak, loud * (1.02f - 0.002f * static_cast<float>(block)) * 3.0f) << block;
        last = peak;
    }

    EXPECT_LT(last, 0.01f * loud);
    rig.play(2);
    EXPECT_TRUE(waitForPreset());
    EXPECT_FALSE(rig.processor.getLayer(0).hasInstance());
    EXPECT_EQ(rig.get(slot::masterVolume), 0.4f);

    // And back, where a new note sounds as before.
    commands.selectPreset(0);
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(rig.processor.getLayer(0).getPluginName(), "Orlen");
    rig.play(8);
    rig.noteOn(60);
    EXPECT_GT(rig.playSeconds(0.3).peak(), 0.3f * loud);
}

TEST_F(PresetCommandTest, WithoutAudioNothingIsLoaded)
{
    makePreset("Bank", "A", 0.3f);
    standOn("Bank", "");
    ASSERT_TRUE(commands.selectPresetByName("A"));
    ProcessorRig::pump(1500);
    EXPECT_TRUE(rig.processor.getTransition().presetBusy.load());
    EXPECT_EQ(rig.get(slot::masterVolume), 0.63f);
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(rig.get(slot::masterVolume), 0.3f);
}

TEST_F(PresetCommandTest, BadFilesAndVanishedFoldersEndTheRoadAllTheSame)
{
    const auto folder = childNamed(banks, "Bad");
    makePreset("Bad", "good", 0.3f);
    juce::MemoryBlock good;
    ASSERT_TRUE(readWholeFile(presetFileFor(banks, "Bad", "good"), good));
    const auto put = [&](const char* name, juce::MemoryBlock bytes)
    { ASSERT_TRUE(replaceFile(folder.getChildFile(name), bytes)); };
    put("empty.qrl", {});
    put("foreign.qrl", {"RIFF....WAVEfmt ", 16});
    auto cut = good;
    cut.setSize(3000);
    put("short.qrl", cut);
    ASSERT_TRUE(folder.getChildFile("folder.qrl").createDirectory());
    ASSERT_TRUE(replaceFile(folder.getChildFile("huge.qrl"), good));
    std::error_code error;
    std::filesystem::resize_file(pathOf(folder.getChildFile("huge.qrl")), 2147483648u, error);

    const std::pair<const char*, const char*> cases[] = {
        {"empty", nullptr},
        {"foreign", nullptr},
        {"short", "|restoring chunk too short"},
        {"folder", "|Could not load Presert file: Bad/folder"},
        {"huge", "|Could not load Presert file: Bad/huge"},
        {"../99 Default Preset/Default Preset",
         "|Could not load Presert file: Bad/../99 Default Preset/Default Preset"},
        {"gone", "|Could not load Presert file: Bad/gone"},
    };

    for (const auto& [name, alert] : cases)
    {
        rig.interaction.alerts.clear();
        standOn("Bad", "");
        ASSERT_TRUE(commands.selectPresetByName(name)) << name;

        if (juce::String(name) == "gone")
            folder.deleteRecursively();

        ASSERT_TRUE(waitForPreset()) << name;
        EXPECT_EQ(rig.interaction.alerts.joinIntoString("#"), alert == nullptr ? "" : alert) << name;
        EXPECT_EQ(rig.get(slot::masterVolume), 0.63f) << "the defaults are in force: " << name;
        EXPECT_EQ(rig.processor.getTransition().fadeGain.load(), 1.0f) << name;
    }
}

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
    EXPECT_FALSE(rig.processor.getTransition().presetBusy.load()) << "no load is started";

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
    rig.processor.setCurrentView(0.1f);
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
    commands.deletePreset();
    EXPECT_EQ(names(), "Bank/");
    EXPECT_FALSE(rig.processor.getTransition().presetBusy.load());
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
    EXPECT_FALSE(rig.processor.getTransition().presetBusy.load()) << "both were cancelled";

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

TEST_F(PresetCommandTest, ListsStepsAndMenusFollowTheDisk)
{
    for (int i = 1; i <= 33; ++i)
        makePreset("Many", juce::String(i).paddedLeft('0', 2), 0.01f * static_cast<float>(i));

    childNamed(banks, "Void").createDirectory();
    standOn("Many", "01");
    EXPECT_EQ(folders(), "99 Default Preset|Many|Void");
    auto menu = commands.presetMenu();
    EXPECT_TRUE(menu.items.empty());
    ASSERT_EQ(menu.subMenus.size(), 2u);
    EXPECT_EQ(menu.subMenus[0].title, "Presets 1 - 32");
    EXPECT_EQ(menu.subMenus[1].title, "Presets 33 - 33");
    EXPECT_EQ(menu.subMenus[1].items[0].id, 39);
    EXPECT_TRUE(menu.subMenus[0].items[0].ticked && !menu.subMenus[1].items[0].ticked);
    EXPECT_EQ(menu.commands[3].text, "load preset");
    presetFileFor(banks, "Many", "33").deleteFile();
    menu = commands.presetMenu();
    EXPECT_EQ(menu.items.size(), 32u);
    EXPECT_TRUE(menu.subMenus.empty());
    const auto folderMenu = commands.folderMenu();
    EXPECT_EQ(folderMenu.items[1].id, 6);
    EXPECT_TRUE(folderMenu.items[1].ticked);
    EXPECT_EQ(folderMenu.commands[2].text, "delete folder");

    commands.folderMenuChosen(0);
    commands.presetMenuChosen(0);
    commands.presetMenuChosen(6);
    commands.presetMenuChosen(7 + 32);
    commands.folderMenuChosen(8);
    EXPECT_FALSE(rig.processor.getTransition().presetBusy.load()) << "none of these is there";
    commands.selectPreset(0);
    EXPECT_FALSE(rig.processor.getTransition().presetBusy.load()) << "it is current already";

    EXPECT_TRUE(commands.previousPreset()) << "at the end it is loaded again";
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(names(), "Many/01");
    EXPECT_EQ(rig.get(slot::masterVolume), 0.01f);
    commands.presetMenuChosen(7 + 31);
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(names(), "Many/32");
    EXPECT_TRUE(commands.stepPreset(-1));
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(names(), "Many/31");

    EXPECT_TRUE(commands.nextFolder()) << "empty: chosen, and nothing loaded";
    EXPECT_EQ(names(), "Void/31");
    EXPECT_FALSE(rig.processor.getTransition().presetBusy.load());
    EXPECT_FALSE(commands.stepPreset(1));
    EXPECT_FALSE(commands.nextFolder());
    EXPECT_TRUE(commands.previousFolder());
    EXPECT_EQ(names(), "Many/01") << "a folder's first preset";
    EXPECT_FALSE(commands.previousFolder()) << "busy";
    EXPECT_TRUE(waitForPreset());
    childNamed(banks, "Many").deleteRecursively();
    EXPECT_FALSE(commands.selectFolder(1)) << "it has gone meanwhile";
    commands.refreshLists();
    EXPECT_EQ(library.getPresetCount(), 0);
    EXPECT_EQ(library.getCurrentFolderIndex(), -1);
}

TEST_F(PresetCommandTest, ClicksSelectSearchAndFilter)
{
    for (const char* name : {"a", "b", "c", "d", "e"})
        makePreset("Bank", name);

    makePreset("Other", "cc", 0.2f);
    standOn("Bank", "a");
    const auto selection = [&]
    {
        juce::StringArray items;

        for (const int i : library.getSelectedPresets())
            items.add(juce::String(i));

        return items.joinIntoString(",");
    };

    commands.clickPreset(3, Modifier::control);
    commands.clickPreset(3, Modifier::control);
    commands.clickPreset(0, Modifier::control);
    EXPECT_EQ(selection(), "0");
    commands.clickPreset(3, Modifier::shift);
    EXPECT_EQ(selection(), "3") << "a range starts afresh";
    commands.clickPreset(1, Modifier::shift);
    EXPECT_EQ(selection(), "3,1,2");
    EXPECT_EQ(library.getRangeStart(), 1);
    commands.clickPreset(4, Modifier::shift);
    EXPECT_EQ(selection(), "3,1,2,4");
    commands.clickPreset(2, Modifier::control);
    EXPECT_EQ(selection(), "3,1,4");
    EXPECT_EQ(library.getRangeStart(), -1);

    commands.toggleCategory(1);
    EXPECT_EQ(rig.get(10), 0.0f) << "not while several are selected";
    commands.clickPreset(9, Modifier::none);
    EXPECT_EQ(selection(), "3,1,4") << "no entry there";
    commands.clickPreset(0, Modifier::none);
    EXPECT_EQ(selection(), "");
    commands.toggleCategory(1);
    commands.toggleCategory(65);
    EXPECT_EQ(rig.get(10), 2.5f / 4096.0f);
    EXPECT_EQ(rig.get(15), 1024.5f / 4096.0f);
    EXPECT_TRUE(rig.processor.edited.load());
    commands.toggleCategory(65);
    EXPECT_EQ(rig.get(15), 0.5f / 4096.0f);
    ASSERT_TRUE(rig.processor.savePreset({}, true));
    EXPECT_TRUE(library.isIndexStale());
    commands.refreshIndex();

    commands.toggleFilterCategory(1);
    ASSERT_EQ(library.getFilteredCount(), 1);
    EXPECT_EQ(library.getFilteredPreset(0).name, "a");
    commands.toggleFilterCategory(2);
    EXPECT_EQ(library.getFilteredCount(), 0);
    commands.clearCategoryFilter();
    EXPECT_EQ(library.getFilteredCount(), 7);
    library.setSearchText("C");
    library.searchPresets();
    ASSERT_EQ(library.getFilteredCount(), 2);
    commands.clickFolder(2, true);
    library.searchPresets();
    ASSERT_EQ(library.getFilteredCount(), 1);
    EXPECT_EQ(names(), "Bank/a") << "a folder limits the results, and loads nothing";
    commands.clickResult(0, Modifier::none);
    EXPECT_EQ(names(), "Other/cc");
    EXPECT_EQ(library.getCurrentFolderIndex(), 2);
    commands.clickFolder(0, false);
    EXPECT_EQ(names(), "Other/cc") << "busy";
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(rig.get(slot::masterVolume), 0.2f);
    commands.clearCategories();
    EXPECT_EQ(rig.get(10), 0.0f);
}

TEST_F(PresetCommandTest, OriginalAndEditedSoundChangePlaces)
{
    const int pan = layerParameter(0, layerSlot::pan);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    const juce::String longName = "A name that is longer than the 32 bytes of a chunk";
    rig.processor.setNames(longName, "Bank");
    ASSERT_TRUE(rig.processor.savePreset({}, true));
    auto& comparison = rig.processor.getOriginalComparison();
    EXPECT_FALSE(comparison.showOriginal());
    EXPECT_FALSE(comparison.showEdited());

    rig.processor.setParameterFromUi(pan, 0.2f);
    comparison.update();
    EXPECT_FALSE(comparison.isShowingOriginal());
    rig.set(slot::controllerMap + 7, 0.51f);
    ASSERT_TRUE(comparison.showOriginal());
    EXPECT_TRUE(comparison.isShowingOriginal());
    EXPECT_EQ(rig.get(pan), 0.5f);
    EXPECT_EQ(rig.processor.getPresetName(), longName);
    EXPECT_EQ(rig.get(slot::controllerMap + 7), 0.51f) << "bindings are no part of the comparison";
    EXPECT_EQ(rig.processor.getLayer(0).getPluginName(), "Orlen");
    ProcessorRig::pump(200);
    EXPECT_TRUE(comparison.isShowingOriginal()) << "reports of the instrument are no edits";
    EXPECT_TRUE(rig.processor.edited.load());
    ASSERT_TRUE(comparison.showEdited());
    EXPECT_EQ(rig.get(pan), 0.2f);

    // An edit of the original makes it the edited sound.
    ASSERT_TRUE(comparison.showOriginal());
    rig.processor.setParameterFromUi(pan, 0.3f);
    ProcessorRig::pump(100);
    EXPECT_FALSE(comparison.isShowingOriginal());
    EXPECT_FALSE(comparison.showEdited());
    ASSERT_TRUE(rig.processor.savePreset({}, true));
    ProcessorRig::pump(100);
    EXPECT_TRUE(comparison.isShowingOriginal());
    EXPECT_EQ(listPresets(childNamed(banks, "Bank"))[0], longName) << "the name is whole on the disk";
    EXPECT_EQ(library.getCurrentPresetIndex(), 0);
}

TEST_F(PresetCommandTest, AFullDiskTakesNothingAway)
{
    const int pan = layerParameter(0, layerSlot::pan);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    standOn("Bank", "old");
    ASSERT_TRUE(rig.processor.savePreset({}, true));
    juce::MemoryBlock before;
    ASSERT_TRUE(readWholeFile(presetFileFor(banks, "Bank", "old"), before));
    rig.processor.setParameterFromUi(pan, 0.2f);
#if !JUCE_WINDOWS
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, unlimited.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool saved = rig.processor.savePreset({}, true);
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
    EXPECT_TRUE(rig.processor.edited.load()) << "still to be saved";
    EXPECT_EQ(rig.get(pan), 0.2f);
    rig.play();
    rig.noteOn(60);
    EXPECT_GT(rig.playSeconds(0.3).peak(), 0.0005f) << "the sound goes on";
}

/** Closes the plug-in while its question is open, as a host can. */
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
    EXPECT_FALSE(interaction.processor->savePreset("Default Preset", false));
    EXPECT_TRUE(interaction.chosenFile.existsAsFile()) << "nothing was done";
}

} // namespace quorel::test
