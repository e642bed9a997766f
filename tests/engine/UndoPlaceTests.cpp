// SPDX-License-Identifier: GPL-3.0-or-later
// A sound that comes back comes with its own names, file and original, whatever was on its way or has moved meanwhile.
#include "engine/LayerClipboard.h"
#include "engine/PresetCommandRig.h"

#include <thread>

namespace quorel::test
{

class UndoPlaceTest : public PresetCommandTest
{
protected:
    void SetUp() override
    {
        PresetCommandTest::SetUp();
        makePreset("Bank", "a", 0.1f);
        makePreset("Bank", "b", 0.2f);
        makePreset("Bank", "c", 0.3f);
        makePreset("Other", "x", 0.7f);
        standOn("Bank", "a");
        commands.refreshIndex();
    }

    void edit(float value)
    {
        rig.processor.setParameterFromUi(layerParameter(0, layerSlot::volume), value);
        rig.pump(150);
    }

    void undo()
    {
        EXPECT_TRUE(rig.processor.getUndo().undo());
        EXPECT_TRUE(waitForPreset());
        rig.pump(150);
    }

    float volume() { return rig.get(slot::masterVolume); }

    /** A host's thread hands over Bank/c, changed; this one goes on while it is awaited. */
    std::thread bringProject()
    {
        choose("c");
        const auto state = rig.state();
        StateChunk chunk;
        EXPECT_EQ(readStateChunk(state.getData(), state.getSize(), chunk), ChunkStatus::valid);
        chunk.parameters[slot::masterVolume] = 0.66f;
        project.reset();
        writeStateChunk(chunk, project);
        choose("a");
        choose("b");
        std::thread host(
            [this]
            { rig.processor.setStateInformation(project.getData(), static_cast<int>(project.getSize())); });

        while (rig.processor.getSoundChange().awaitedReason() != ChangeReason::project)
            std::this_thread::yield();

        return host;
    }

    bool isEdited() { return rig.processor.getSession().isEdited(); }

    juce::MemoryBlock project;
};

TEST_F(UndoPlaceTest, TwoQuickLoadsLeaveTheFirstItsOwnOriginal)
{
    choose("a");
    edit(0.77f);
    commands.nextPreset();
    commands.nextPreset();
    ASSERT_TRUE(waitForPreset());
    undo();
    EXPECT_EQ(names(), "Bank/b");
    EXPECT_FALSE(isEdited());
    edit(0.66f);
    ASSERT_TRUE(rig.processor.getOriginalComparison().showOriginal());
    ASSERT_TRUE(waitForPreset());
    EXPECT_EQ(volume(), 0.2f) << "the original of another preset";
}

TEST_F(UndoPlaceTest, AProjectOnItsWayKeepsItsOwnNames)
{
    auto host = bringProject();
    commands.loadPlace({"Other", "x"});
    host.join();
    ASSERT_TRUE(waitForPreset());
    undo();
    EXPECT_EQ(volume(), 0.66f);
    EXPECT_EQ(names(), "Bank/c");

    // Nobody knows whether it is what the file holds.
    rig.interaction.confirmAnswer = false;
    commands.savePreset();
    EXPECT_EQ(chunkOf("Bank", "b").parameters[slot::masterVolume], 0.2f);
    EXPECT_EQ(chunkOf("Bank", "c").parameters[slot::masterVolume], 0.3f);
}

TEST_F(UndoPlaceTest, NothingIsUndoneWhileAProjectIsAwaited)
{
    auto host = bringProject();
    EXPECT_FALSE(rig.processor.getUndo().undo());
    pumpUntil([&] { return !rig.processor.getSoundChange().awaitedReason(); }, 5000);
    host.join();
    ASSERT_TRUE(waitForPreset());
    EXPECT_EQ(volume(), 0.66f);
    EXPECT_FALSE(rig.processor.getUndo().canUndo());
}

TEST_F(UndoPlaceTest, AMovedPresetTakesNoOtherAlong)
{
    choose("a");
    choose("b");
    commands.onSelection().moveTo({{"Bank", "b"}}, "Other");
    EXPECT_EQ(names(), "Other/b");
    undo();
    EXPECT_EQ(names(), "Bank/a");
    EXPECT_TRUE(rig.processor.getUndo().redo());
    ASSERT_TRUE(waitForPreset());
    EXPECT_EQ(names(), "Other/b");
}

TEST_F(UndoPlaceTest, TheSoundOfADeletedPresetComesBack)
{
    commands.loadPlace({"Other", "x"});
    ASSERT_TRUE(waitForPreset());
    ASSERT_TRUE(rig.load(0, "Tarn"));
    edit(0.5f);
    rig.interaction.confirmAnswer = true;
    commands.deletePreset();
    rig.pump(150);
    EXPECT_FALSE(rig.processor.getLayer(0).hasInstance());
    undo();
    EXPECT_TRUE(rig.processor.getLayer(0).hasInstance());
    EXPECT_EQ(names(), "Other/x");
}

TEST_F(UndoPlaceTest, WhatWasBeforeASaveIsAnEditOfTheFile)
{
    choose("a");
    choose("b");
    copyLayerTo(rig.processor, 0, 1);
    rig.pump(150);
    commands.savePreset();
    EXPECT_FALSE(isEdited());
    undo();
    EXPECT_TRUE(isEdited());
    EXPECT_TRUE(rig.processor.getUndo().redo());
    ASSERT_TRUE(waitForPreset());
    EXPECT_FALSE(isEdited());
}

} // namespace quorel::test
