// SPDX-License-Identifier: GPL-3.0-or-later
// One sound takes the place of another: the road of a preset under real blocks and timers, and the comparison
// of the edited with the original sound.
#include "PresetCommandRig.h"
#include "support/OpenWindow.h"

#include <filesystem>
#include <thread>
#include <utility>

namespace quorel::test
{

using SoundChangeTest = PresetCommandTest;

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

    rig.set(slot::controllerMap + 20, 0.51f);
    commands.selectPreset(1);
    EXPECT_EQ(names(), "Bank/Second");

    // The held note fades over 0.668 s, without a jump larger than the sound's own swings.
    constexpr int numBlocks = 114;
    float last = loud;

    for (int block = 0; block < numBlocks; ++block)
    {
        ProcessorRig::pump(block % 20 == 0 ? 60 : 0);
        ASSERT_TRUE(rig.processor.getLayer(0).hasInstance()) << "gone in block " << block;
        const float peak = rig.play().peak();
        ASSERT_LE(peak, loud * (1.02f - static_cast<float>(block) / numBlocks) * 3.0f) << block;
        last = peak;
    }

    EXPECT_LT(last, 0.02f * loud);
    rig.play(2);
    EXPECT_TRUE(waitForPreset());
    EXPECT_FALSE(rig.processor.getLayer(0).hasInstance());
    EXPECT_EQ(rig.get(slot::masterVolume), 0.4f);
    EXPECT_EQ(rig.get(slot::controllerMap + 20), 0.51f)
        << "bindings belong to the project, not to the preset";
}

TEST_F(SoundChangeTest, WithoutAudioAPresetLoadsAllTheSame)
{
    makePreset("Bank", "A", 0.3f);
    makePreset("Bank", "B", 0.4f);
    standOn("Bank", "");
    auto& change = rig.processor.getSoundChange();

    // The host stops in the middle of a fade, and again in the middle of the fade-in.
    ASSERT_TRUE(commands.selectPresetByName("A"));
    rig.play(40);
    EXPECT_TRUE(pumpUntil([&] { return rig.get(slot::masterVolume) == 0.3f; }, 1500));
    EXPECT_TRUE(pumpUntil([&] { return !change.isUnderWay(); }, 3000));
    EXPECT_FALSE(change.holdsDisplay());

    // A project that is saved before the load has the new sound, not the old one under a new name.
    ASSERT_TRUE(change.requestPreset("Bank", "B"));
    const auto saved = rig.state();
    EXPECT_EQ(rig.get(slot::masterVolume), 0.3f) << "too early for this test";
    EXPECT_EQ(rig.processor.getParameter(slot::masterVolume), 0.4f)
        << "a host that keeps the values beside the state would write the old ones back";
    EXPECT_TRUE(pumpUntil([&] { return !change.isUnderWay(); }, 3000));
    ProcessorRig other;
    other.restore(saved);
    EXPECT_EQ(other.get(slot::masterVolume), 0.4f);
    EXPECT_EQ(other.processor.getPresetName(), "B");
    EXPECT_EQ(change.getFade().gain(), 1.0f);
}

TEST_F(SoundChangeTest, WhatCantBeLoadedLeavesThePresentSound)
{
    const auto folder = childNamed(banks, "Bad");
    makePreset("Bad", "good", 0.3f);
    const auto good = bytesOf("Bad", "good");
    const auto put = [&](const char* name, juce::MemoryBlock bytes)
    { ASSERT_TRUE(replaceFile(folder.getChildFile(name), bytes)); };
    put("empty.qrl", {});
    put("foreign.qrl", {"RIFF....WAVEfmt ", 16});
    put("short.qrl", {good.getData(), 3000});
    ASSERT_TRUE(folder.getChildFile("folder.qrl").createDirectory());
    put("huge.qrl", good);
    std::error_code error;
    std::filesystem::resize_file(folder.getChildFile("huge.qrl").getFullPathName().toStdString(), 2147483648u,
                                 error);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    rig.set(slot::masterVolume, 0.4f);
    standOn("Bad", "good");

    for (const char* name :
         {"empty", "foreign", "short", "folder", "huge", "../99 Default Preset/Default Preset", "gone"})
    {
        EXPECT_FALSE(commands.selectPresetByName(name)) << name;
        EXPECT_EQ(takeAlerts(), "|Could not load Presert file: Bad/" + juce::String(name));
        EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay()) << name;
        EXPECT_EQ(names(), "Bad/good") << name;
    }

    EXPECT_EQ(rig.get(slot::masterVolume), 0.4f);
    EXPECT_EQ(rig.processor.getLayer(0).getPluginName(), "Orlen");

    // One that vanishes once it has been asked for is loaded all the same.
    ASSERT_TRUE(commands.selectPresetByName("good"));
    folder.deleteRecursively();
    ASSERT_TRUE(waitForPreset());
    EXPECT_EQ(rig.get(slot::masterVolume), 0.3f);
}

TEST_F(SoundChangeTest, AProjectThatCantBeReadLeavesThePresentSound)
{
    ASSERT_TRUE(rig.load(0, "Orlen"));
    const auto good = rig.state();
    rig.processor.setNames("Mine", "Kept");
    const auto withByte = [&](int offset, char byte)
    {
        auto bytes = good;
        bytes[offset] = byte;
        return bytes;
    };
    constexpr int magic = 0;
    constexpr int version = 20;
    const juce::String unreadable = "|The project's sound can't be read. The present sound stays.";
    const std::pair<juce::MemoryBlock, juce::String> cases[] = {
        {{}, {}},
        {{"abc", 3}, unreadable},
        {withByte(magic, 'x'), unreadable},
        {withByte(version, 2), unreadable},
        {{good.getData(), 3000}, "|restoring chunk too short"},
    };

    for (const auto& [bytes, alert] : cases)
    {
        rig.restore(bytes);
        EXPECT_EQ(takeAlerts(), alert);
        EXPECT_EQ(names(), "Kept/Mine");
        EXPECT_TRUE(rig.processor.getLayer(0).hasInstance());
        EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay());
    }

    rig.processor.setStateInformation(nullptr, 0);
}

TEST_F(SoundChangeTest, TheNewestSoundAskedForWins)
{
    makePreset("Bank", "A", 0.3f);
    makePreset("Bank", "B", 0.4f);
    makePreset("Bank", "C", 0.2f);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    rig.set(slot::masterVolume, 0.5f);
    rig.processor.setNames("Project's", "Elsewhere");
    const auto project = rig.state();
    auto& change = rig.processor.getSoundChange();
    // A project arrives in each stage of a preset's road, and a preset in each stage of another one's.
    for (const auto stage :
         {ChangeState::fadingOut, ChangeState::waiting, ChangeState::settling, ChangeState::fadingIn})
    {
        SCOPED_TRACE(static_cast<int>(stage));
        const auto reach = [&]
        { return rig.playUntil([&] { return change.getFade().getState() == stage; }, 5000); };
        ASSERT_TRUE(change.requestPreset("Bank", "A"));
        ASSERT_TRUE(reach());
        rig.restore(project);
        EXPECT_EQ(rig.get(slot::masterVolume), 0.5f) << "a project is there at once";
        ASSERT_TRUE(waitForPreset());
        EXPECT_EQ(names(), "Elsewhere/Project's");
        EXPECT_EQ(rig.get(slot::masterVolume), 0.5f) << "and stays";
        EXPECT_EQ(rig.processor.getLayer(0).getPluginName(), "Orlen");

        ASSERT_TRUE(change.requestPreset("Bank", "A"));
        ASSERT_TRUE(reach());
        ASSERT_TRUE(change.requestPreset("Bank", "B"));
        ASSERT_TRUE(change.requestPreset("Bank", "C"));
        ASSERT_TRUE(waitForPreset());
        EXPECT_EQ(names(), "Bank/C");
        EXPECT_EQ(rig.get(slot::masterVolume), 0.2f);
        EXPECT_FALSE(rig.processor.getLayer(0).hasInstance());
    }

    // An empty preset ends what is on its way, too.
    ASSERT_TRUE(change.requestPreset("Bank", "A"));
    rig.play(20);
    ASSERT_TRUE(rig.processor.getPresetStorage().createEmpty("Empty"));
    ASSERT_TRUE(waitForPreset());
    EXPECT_FALSE(rig.playUntil([&] { return rig.get(slot::masterVolume) != 0.63f; }, 500));
    EXPECT_EQ(names(), "Bank/Empty");
    EXPECT_EQ(takeAlerts(), "");
}

TEST_F(SoundChangeTest, ASaveWhileAWindowGoesAwayHasTheSoundAskedFor)
{
    ASSERT_TRUE(rig.load(0, "Orlen"));
    ASSERT_TRUE(rig.load(2, "Tarn"));
    const auto project = rig.state();
    bool closed = false;
    rig.processor.getLayer(0).setWindow(std::make_unique<OpenWindow>(closed));
    rig.restore(project);
    EXPECT_TRUE(closed);
    ProcessorRig::pump(800);
    ASSERT_FALSE(rig.processor.getLayer(2).hasInstance()) << "the wait is over too early for this test";
    EXPECT_TRUE(rig.state() == project);
}

TEST_F(SoundChangeTest, HostsThreadsNeitherWaitForABusyMessageThreadNorLoseAnything)
{
    ASSERT_TRUE(rig.load(1, "Hexley"));
    rig.set(slot::masterVolume, 0.35f);
    const auto project = rig.state();
    rig.set(slot::masterVolume, 0.6f);

    // This thread, which is the message thread, does nothing while a host saves, restores and saves again.
    std::thread host(
        [&]
        {
            auto millis = [start = juce::Time::getMillisecondCounterHiRes()]() mutable
            {
                const auto last = std::exchange(start, juce::Time::getMillisecondCounterHiRes());
                return start - last;
            };
            const auto before = rig.state();
            EXPECT_LT(millis(), 200.0);
            EXPECT_EQ(before.getSize(), project.getSize());
            rig.restore(project);
            EXPECT_LT(millis(), 700.0);
            EXPECT_TRUE(rig.state() == project) << "the newest sound asked for";
            EXPECT_LT(millis(), 200.0);
            rig.restore(juce::MemoryBlock("no state", 8));
            EXPECT_LT(millis(), 200.0);
        });
    host.join();
    EXPECT_EQ(rig.get(slot::masterVolume), 0.6f);
    EXPECT_TRUE(rig.interaction.alerts.isEmpty()) << "nobody but the message thread shows boxes";
    EXPECT_TRUE(rig.playUntil([&] { return rig.get(slot::masterVolume) == 0.35f; }, 3000)) << "it follows";
    EXPECT_EQ(rig.interaction.alerts.size(), 1);

    // What the user asks for after it, before the message thread has taken it up, is newer.
    makePreset("Bank", "A", 0.3f);
    std::thread late([&] { rig.restore(project); });
    late.join();
    ASSERT_TRUE(rig.processor.getSoundChange().requestPreset("Bank", "A"));
    ASSERT_TRUE(waitForPreset());
    EXPECT_EQ(rig.get(slot::masterVolume), 0.3f);
    EXPECT_EQ(names(), "Bank/A");
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

TEST_F(SoundChangeTest, AProjectIsTheOriginalOfItsEdits)
{
    const int pan = layerParameter(0, layerSlot::pan);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    rig.set(pan, 0.2f);
    rig.processor.setNames("Mine", "Bank");
    ProcessorRig other;
    other.restore(rig.state());
    auto& comparison = other.processor.getOriginalComparison();
    ASSERT_TRUE(other.playUntil([&] { return !other.processor.getSoundChange().isUnderWay(); }));
    EXPECT_FALSE(other.processor.getSession().isEdited());
    other.processor.setParameterFromUi(pan, 0.9f);
    ASSERT_TRUE(comparison.showOriginal());
    EXPECT_EQ(other.get(pan), 0.2f);
    EXPECT_EQ(other.processor.getLayer(0).getPluginName(), "Orlen");
    EXPECT_EQ(other.processor.getPresetName(), "Mine");
    ASSERT_TRUE(comparison.showEdited());
    EXPECT_EQ(other.get(pan), 0.9f);

    // While a preset is on its way there is nothing to compare.
    ASSERT_TRUE(other.processor.getSoundChange().requestPreset("99 Default Preset", "Default Preset"));
    EXPECT_FALSE(comparison.showOriginal());
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
    EXPECT_EQ(rig.get(slot::controllerMap + 7), 0.51f) << "bindings are no part of the comparison";
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
    EXPECT_EQ(files("Bank"), longName) << "the name is whole on the disk";
}

} // namespace quorel::test
