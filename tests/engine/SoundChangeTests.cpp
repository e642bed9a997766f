// SPDX-License-Identifier: GPL-3.0-or-later
// One sound takes the place of another: the road of a preset under real blocks and timers, and the comparison
// of the edited with the original sound.
#include "PresetCommandRig.h"

namespace quorel::test
{

class SoundChangeTest : public PresetCommandTest
{
};

TEST_F(SoundChangeTest, ASwapUnderNotesReachesSilenceBeforeTheInstrumentGoes)
{
    ASSERT_TRUE(rig.load(0, "Orlen"));
    rig.processor.setNames("First", "Bank");
    ASSERT_TRUE(rig.processor.getPresetStorage().save("First", true));
    makePreset("Bank", "Second", 0.4f);
    commands.refreshLists();
    rig.noteOn(60);
    rig.playSeconds(0.3);
    const float loud = rig.play().peak();
    ASSERT_GT(loud, 0.001f);

    commands.selectPreset(1);
    EXPECT_EQ(names(), "Bank/Second");
    EXPECT_FALSE(rig.processor.getSoundChange().requestPreset("Bank", "First")) << "one change at a time";
    commands.selectPreset(0);
    commands.newFolder();
    commands.deletePreset();
    EXPECT_TRUE(rig.interaction.textQuestions.isEmpty() && rig.interaction.questions.isEmpty());

    // The held note fades over 501 blocks, without a jump larger than the sound's own swings.
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

TEST_F(SoundChangeTest, WithoutAudioNothingIsLoaded)
{
    makePreset("Bank", "A", 0.3f);
    standOn("Bank", "");
    ASSERT_TRUE(commands.selectPresetByName("A"));
    ProcessorRig::pump(1500);
    EXPECT_TRUE(rig.processor.getSoundChange().isUnderWay());
    EXPECT_EQ(rig.get(slot::masterVolume), 0.63f);
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(rig.get(slot::masterVolume), 0.3f);
}

TEST_F(SoundChangeTest, BadFilesAndVanishedFoldersEndTheRoadAllTheSame)
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
        EXPECT_EQ(rig.processor.getSoundChange().getTransition().gain(), 1.0f) << name;
    }
}

TEST_F(SoundChangeTest, TheManagerStaysInFrontAndEveryOtherPageGivesWay)
{
    makePreset("Bank", "one");
    standOn("Bank", "");
    auto& editor = rig.processor.getEditorRequests();

    for (const auto& [before, after] :
         {std::pair(Page::presetManager, Page::presetManager), std::pair(Page::layers, Page::multiControls)})
    {
        editor.setPage(before);
        rig.set(slot::view, viewOf(before));
        ASSERT_TRUE(commands.selectPresetByName("one"));
        EXPECT_TRUE(waitForPreset());
        EXPECT_EQ(editor.getPage(), after);
        EXPECT_EQ(pageOf(rig.get(slot::view)), after);
    }

    editor.setPage(Page::presetManager);
    type("new");
    commands.newPreset();
    EXPECT_EQ(pageOf(rig.get(slot::view)), Page::presetManager);
    // A project knows nothing of the manager.
    rig.restore(rig.state());
    EXPECT_EQ(editor.getPage(), Page::multiControls);
}

TEST_F(SoundChangeTest, AProjectBringsItsNamesIntoTheLists)
{
    makePreset("Alpha", "one");
    makePreset("Beta", "two");
    standOn("Beta", "two");
    const auto state = rig.state();
    standOn("Alpha", "one");
    rig.restore(state);
    EXPECT_EQ(names(), "Beta/two");
    EXPECT_EQ(library.getFolderNames()[library.getCurrentFolderIndex()], "Beta");
    EXPECT_EQ(library.getPresetNames()[library.getCurrentPresetIndex()], "two");
}

TEST_F(SoundChangeTest, OriginalAndEditedSoundChangePlaces)
{
    const int pan = layerParameter(0, layerSlot::pan);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    const juce::String longName = "A name that is longer than the 32 bytes of a chunk";
    rig.processor.setNames(longName, "Bank");
    ASSERT_TRUE(rig.processor.getPresetStorage().save({}, true));
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
    EXPECT_TRUE(rig.processor.getSession().isEdited());
    ASSERT_TRUE(comparison.showEdited());
    EXPECT_EQ(rig.get(pan), 0.2f);

    // An edit of the original makes it the edited sound.
    ASSERT_TRUE(comparison.showOriginal());
    rig.processor.setParameterFromUi(pan, 0.3f);
    ProcessorRig::pump(100);
    EXPECT_FALSE(comparison.isShowingOriginal());
    EXPECT_FALSE(comparison.showEdited());
    ASSERT_TRUE(rig.processor.getPresetStorage().save({}, true));
    ProcessorRig::pump(100);
    EXPECT_TRUE(comparison.isShowingOriginal());
    EXPECT_EQ(listPresets(childNamed(banks, "Bank"))[0], longName) << "the name is whole on the disk";
    EXPECT_EQ(library.getCurrentPresetIndex(), 0);
}

} // namespace quorel::test
