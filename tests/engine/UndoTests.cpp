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

    /** The numbers of the parameters that aren't the same. */
    juce::String differences(const std::vector<float>& wanted)
    {
        const auto now = parameters();
        juce::String numbers;

        for (size_t i = 0; i < wanted.size(); ++i)
            if (now[i] != wanted[i])
                numbers << static_cast<int>(i) << " ";

        return numbers;
    }

    /** Whether a step back restores this sound. */
    bool undoesTo(const juce::MemoryBlock& sound)
    {
        return undo.undo() && waitForPreset() && holdSameSound(rig.state(), sound);
    }

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
    const auto writeAndDone = [&](int parameter, float value, const char* what)
    {
        write(parameter, value);
        done(what);
    };

    const int fader = slot::multiFader;
    const int volume = layerParameter(0, layerSlot::volume);
    chooseMultiTarget(rig.processor, 0, 1);
    done("a target");
    writeAndDone(slot::multiKnob, 0.93f, "a knob");

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
    writeAndDone(layerParameter(0, layerSlot::keyMin), 0.6f, "one end of a range");
    writeAndDone(layerParameter(0, layerSlot::keyMax), 0.3f, "the other, which takes the first along");
    writeAndDone(layerParameter(0, layerSlot::easyValue), 0.77f, "an Easy value");
    writeAndDone(layerParameter(0, layerSlot::easyMapping), encodeParamInt(5),
                 "a mapping, which pulls a value");
    setMultiControlName(rig.processor, 0, "Bright");
    done("a name");
    writeAndDone(slot::multiAssignment, 0.0f, "a target that is taken away");

    for (int round = 0; round < 2; ++round)
    {
        for (size_t i = history.size() - 1; i-- > 0;)
        {
            ASSERT_TRUE(undo.undo());
            EXPECT_EQ(differences(history[i]), "") << "back to " << i << ", round " << round;
        }

        for (size_t i = 1; i < history.size(); ++i)
        {
            ASSERT_TRUE(undo.redo());
            EXPECT_EQ(differences(history[i]), "") << "forth to " << i << ", round " << round;
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
    rig.restore(state);
    ASSERT_TRUE(waitForPreset());
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

    EXPECT_TRUE(undoesTo(before));
    EXPECT_NEAR(playedPeak(), asMade, 0.5f * asMade);
    EXPECT_EQ(instance(), kept) << "nothing has to be loaded";
    ASSERT_TRUE(undo.redo());
    EXPECT_TRUE(holdSameSound(rig.state(), withProgram));
    ASSERT_TRUE(undo.undo());

    // Another instrument resets the layer.
    write(layerParameter(0, layerSlot::pan), 0.3f);
    const auto panned = rig.state();
    ASSERT_TRUE(rig.load(0, "Tarn2"));
    EXPECT_TRUE(undoesTo(panned));
    EXPECT_EQ(layers[0].getPluginName(), "Orlen");

    // A preset: names and the mark of the edits come back as well.
    ASSERT_TRUE(rig.processor.getSession().isEdited());
    choose("Other");
    EXPECT_FALSE(rig.processor.getSession().isEdited());
    EXPECT_FALSE(layers[0].hasInstance());
    write(slot::masterVolume, 0.2f);
    write(slot::masterMute, 1.0f);
    ASSERT_TRUE(undo.undo());
    ASSERT_TRUE(undo.undo());
    EXPECT_FALSE(rig.processor.getSession().isEdited()) << "this is the preset as it was loaded";
    EXPECT_TRUE(undoesTo(panned));
    EXPECT_TRUE(rig.processor.getSession().isEdited());
    EXPECT_NEAR(playedPeak(), asMade, 0.5f * asMade);
    EXPECT_TRUE(rig.processor.getOriginalComparison().showOriginal());
    ASSERT_TRUE(waitForPreset());
    EXPECT_FALSE(holdSameSound(rig.state(), panned));
    EXPECT_TRUE(undoesTo(panned));

    // A preset that is still on its way is undone like any other, and the newest wish wins.
    ASSERT_TRUE(commands.selectPresetByName("Other"));
    rig.play(4);
    ASSERT_TRUE(undo.undo());
    ASSERT_TRUE(undo.redo());
    EXPECT_TRUE(undoesTo(panned));
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
