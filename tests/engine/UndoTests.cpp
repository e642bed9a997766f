// SPDX-License-Identifier: GPL-3.0-or-later
// What the user has done, undone and redone: through the processor, with real instruments.
#include "PresetCommandRig.h"
#include "engine/MultiControlMenu.h"
#include "parameters/ParameterCodings.h"

namespace quorel::test
{

class UndoTest : public PresetCommandTest
{
protected:
    /** A write of the user's, in an event of its own. */
    void write(int parameter, float value)
    {
        rig.processor.setParameterFromUi(parameter, value);
        ProcessorRig::pump(1);
    }

    /** The steps of one control that follow each other quickly would be taken for one. */
    static void wait() { ProcessorRig::pump(450); }

    std::vector<float> parameters()
    {
        std::vector<float> values;

        for (int i = 0; i < numHostParameters; ++i)
            values.push_back(i == slot::view ? 0.0f : rig.get(i));

        return values;
    }

    /** The first parameter that isn't the same, with both values; empty where all are. */
    static juce::String difference(const std::vector<float>& now, const std::vector<float>& wanted)
    {
        for (size_t i = 0; i < now.size(); ++i)
            if (now[i] != wanted[i])
                return juce::String(static_cast<int>(i)) + " is " + juce::String(now[i], 7) + ", not " +
                       juce::String(wanted[i], 7);

        return {};
    }

    bool settle() { return waitForPreset(); }

    float playedPeak()
    {
        rig.play(4);
        rig.noteOn(60);
        const float peak = rig.playSeconds(0.2).peak();
        rig.noteOff(60);
        rig.playSeconds(1.0);
        return peak;
    }

    UndoHistory& undo{rig.processor.getUndo()};
};

TEST_F(UndoTest, EveryGestureOnControlsGoesBackAndForthExactly)
{
    ASSERT_TRUE(rig.load(0, "Orlen"));
    ASSERT_EQ(undo.getNumSteps(), 1u);
    write(slot::masterVolume, 0.7f);
    std::vector<std::vector<float>> history{parameters()};
    const auto done = [&](const char* what)
    {
        ProcessorRig::pump(1);
        history.push_back(parameters());
        EXPECT_EQ(undo.getNumSteps(), history.size() + 1) << what;
    };

    const int fader = slot::multiFader;
    const int knob = slot::multiKnob;
    const int volume = layerParameter(0, layerSlot::volume);
    chooseMultiTarget(rig.processor, 0, 1);
    done("a target");
    write(knob, 0.93f);
    done("a knob");

    // One drag is one step, however long, and takes along what it moves.
    rig.processor.beginUserGesture(fader);

    for (const float value : {0.11f, 0.23f, 0.31f, 0.57f})
        write(fader, value);

    wait();
    write(fader, 0.49f);
    rig.processor.endUserGesture(fader);
    done("a drag");
    EXPECT_NE(rig.get(volume), history.front()[static_cast<size_t>(volume)]);

    rig.processor.setParameterFromUi(slot::fxType, 0.5f);
    rig.processor.setParameterFromUi(slot::fxOn, 1.0f);
    done("an event that writes two parameters");
    write(layerParameter(0, layerSlot::keyMin), 0.6f);
    done("one end of a range");
    write(layerParameter(0, layerSlot::keyMax), 0.3f);
    done("the other end, which takes the first along");
    write(layerParameter(0, layerSlot::easyValue), 0.77f);
    done("an Easy value");
    write(layerParameter(0, layerSlot::easyMapping), encodeParamInt(5));
    done("an Easy mapping, which pulls a value");
    setMultiControlName(rig.processor, 0, "Bright");
    done("a name");
    write(slot::multiAssignment, 0.0f);
    done("a target that is taken away");

    for (int round = 0; round < 2; ++round)
    {
        for (size_t i = history.size() - 1; i-- > 0;)
        {
            ASSERT_TRUE(undo.undo());
            EXPECT_EQ(difference(parameters(), history[i]), "") << "back to " << i << ", round " << round;
        }

        for (size_t i = 1; i < history.size(); ++i)
        {
            ASSERT_TRUE(undo.redo());
            EXPECT_EQ(difference(parameters(), history[i]), "") << "forth to " << i << ", round " << round;
        }

        EXPECT_FALSE(undo.redo());
    }

    // A new step after steps back takes their place.
    undo.undo();
    undo.undo();
    write(volume, 0.1f);
    EXPECT_FALSE(undo.canRedo());
    EXPECT_EQ(undo.getNumSteps(), history.size());
}

TEST_F(UndoTest, OnlyTheUserMakesSteps)
{
    ASSERT_TRUE(rig.load(0, "Orlen"));
    undo.clear();
    const int pan = layerParameter(1, layerSlot::pan);

    // Automation, a controller, the page, and an instrument that reports a change of its own.
    rig.set(pan, 0.1f);
    rig.processor.getControllerMap().assign(pan, "20");
    rig.send(juce::MidiMessage::controllerEvent(1, 20, 100));
    rig.play(2);
    ASSERT_NE(rig.get(pan), 0.1f);
    write(slot::view, 0.1f);
    rig.processor.getLayer(0).parameterWritten(layerSlot::easyValue, 0.3f);
    ProcessorRig::pump(100);
    EXPECT_EQ(undo.getNumSteps(), 0u);

    // Turns of the wheel are one step while they follow each other, and no step where they lead nowhere.
    for (const float value : {0.2f, 0.3f, 0.4f})
        write(pan, value);

    EXPECT_EQ(undo.getNumSteps(), 1u);
    wait();
    write(pan, 0.5f);
    write(slot::masterMute, 0.0f);
    EXPECT_EQ(undo.getNumSteps(), 2u);
    EXPECT_EQ(undo.undoText(), "Undo " + rig.processor.getParameterName(pan));

    for (int i = 0; i < 600; ++i)
        write(layerParameter(i % 2, layerSlot::volume), 0.001f * static_cast<float>(i + 1));

    EXPECT_EQ(undo.getNumSteps(), UndoHistory::maximumSteps);

    // A project starts afresh.
    const auto state = rig.state();
    rig.processor.setStateInformation(state.getData(), static_cast<int>(state.getSize()));
    ASSERT_TRUE(settle());
    EXPECT_FALSE(undo.canUndo());
}

TEST_F(UndoTest, InstrumentsProgramsAndPresetsComeBackWithTheirSound)
{
    makePreset("Bank", "Other", 0.4f);
    standOn("Bank", "Other");
    ASSERT_TRUE(rig.load(0, "Orlen"));
    ASSERT_TRUE(rig.load(1, "Fenn2"));
    auto& layers = rig.processor.getLayers();
    write(layerParameter(1, layerSlot::volume), 0.0f);
    const float asMade = playedPeak();
    ASSERT_GT(asMade, 0.001f);
    const auto before = rig.state();

    layers.chooseProgram(0, 3);
    rig.play(4);
    ProcessorRig::pump(100);
    const auto withProgram = rig.state();
    ASSERT_FALSE(holdSameSound(before, withProgram));
    const auto instance = [&] { return InstanceAccess::Use(layers[1].instanceAccess()).get(); };
    const auto* kept = instance();

    ASSERT_TRUE(undo.undo());
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay()) << "nothing has to be loaded";
    EXPECT_TRUE(holdSameSound(rig.state(), before));
    EXPECT_NEAR(playedPeak(), asMade, 0.5f * asMade);
    EXPECT_EQ(instance(), kept);
    ASSERT_TRUE(undo.redo());
    EXPECT_TRUE(holdSameSound(rig.state(), withProgram));
    ASSERT_TRUE(undo.undo());

    // Another instrument resets the layer.
    write(layerParameter(0, layerSlot::pan), 0.3f);
    const auto panned = rig.state();
    ASSERT_TRUE(rig.load(0, "Tarn2"));
    ASSERT_TRUE(undo.undo());
    ASSERT_TRUE(settle());
    EXPECT_EQ(layers[0].getPluginName(), "Orlen");
    EXPECT_TRUE(holdSameSound(rig.state(), panned));

    // A preset: names and the mark of the edits come back as well.
    const bool wasEdited = rig.processor.getSession().isEdited();
    ASSERT_TRUE(wasEdited);
    ASSERT_TRUE(commands.selectPresetByName("Other"));
    ASSERT_TRUE(settle());
    EXPECT_FALSE(rig.processor.getSession().isEdited());
    EXPECT_FALSE(layers[0].hasInstance());
    write(slot::masterVolume, 0.2f);
    write(slot::masterMute, 1.0f);
    ASSERT_TRUE(undo.undo());
    ASSERT_TRUE(undo.undo());
    EXPECT_FALSE(rig.processor.getSession().isEdited()) << "this is the preset as it was loaded";
    ASSERT_TRUE(undo.undo());
    ASSERT_TRUE(settle());
    EXPECT_TRUE(holdSameSound(rig.state(), panned));
    EXPECT_TRUE(rig.processor.getSession().isEdited());
    EXPECT_NEAR(playedPeak(), asMade, 0.5f * asMade);
    EXPECT_TRUE(rig.processor.getOriginalComparison().showOriginal());
    ASSERT_TRUE(settle());
    EXPECT_FALSE(holdSameSound(rig.state(), panned));
    ASSERT_TRUE(undo.undo());
    ASSERT_TRUE(settle());
    EXPECT_TRUE(holdSameSound(rig.state(), panned));

    // A preset that is still on its way is undone like any other, and the newest wish wins.
    ASSERT_TRUE(commands.selectPresetByName("Other"));
    rig.play(4);
    ASSERT_TRUE(undo.undo());
    ASSERT_TRUE(undo.redo());
    ASSERT_TRUE(undo.undo());
    ASSERT_TRUE(settle());
    EXPECT_TRUE(holdSameSound(rig.state(), panned));
}

TEST_F(UndoTest, MemoryStaysWithinItsBound)
{
    juce::Random random(1);
    juce::MemoryBlock large(6 * 1024 * 1024);

    for (auto& byte : large)
        byte = static_cast<char>(random.nextInt(256));

    // Noise, which can't be packed: kept for an instrument that isn't there, and saved with every sound.
    rig.processor.getLayer(2).setMissing("Nowhere");

    for (int i = 0; i < 20; ++i)
    {
        large[0] = static_cast<char>(i);
        ASSERT_TRUE(rig.processor.getLayer(2).giveState(large, 0.0f));
        undo.beforeSoundChange("step");
    }

    EXPECT_LE(undo.getBytes(), UndoHistory::maximumBytes);
    EXPECT_GE(undo.getNumSteps(), 10u);
}

} // namespace quorel::test
