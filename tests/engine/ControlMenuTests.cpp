// SPDX-License-Identifier: GPL-3.0-or-later
// What menus and switches of single controls do, without a window: the right-click menu, hold, and the
// targets of the multi-control knobs.
#include "engine/ControlMenu.h"
#include "engine/MultiControlMenu.h"
#include "parameters/HoldSwitches.h"
#include "parameters/ParameterCodings.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

#include <set>

namespace quorel::test
{

class ControlMenuTest : public testing::Test
{
protected:
    static constexpr int pan = 233;

    void run(int id, float defaultValue = 0.5f) { runControlMenuItem(rig.processor, pan, defaultValue, id); }

    juce::String binding() { return controlMenu(rig.processor, pan, "Pan", "0")[3].text; }

    int boundTo(int controller) { return decodeParamInt(rig.get(slot::controllerMap + controller)); }

    void turn(int controller, int value)
    {
        rig.send(juce::MidiMessage::controllerEvent(3, controller, value));
        rig.play();
    }

    ProcessorRig rig;
};

TEST_F(ControlMenuTest, ValueCommandsWriteAndMarkThePresetEdited)
{
    const std::vector<std::tuple<int, float, float>> steps{
        {controlMenuId::setToDefault, 0.9f, 0.7f}, {controlMenuId::setToMinimum, 0.9f, 0.0f},
        {controlMenuId::setToMaximum, 0.9f, 1.0f}, {controlMenuId::setToMid, 0.9f, 0.5f},
        {controlMenuId::increase, 0.25f, 0.26f},   {controlMenuId::increase, 0.995f, 1.0f},
        {controlMenuId::decrease, 0.25f, 0.24f},   {controlMenuId::decrease, 0.005f, 0.0f}};

    for (const auto& [id, from, to] : steps)
    {
        rig.set(pan, from);
        rig.processor.getSession().markSaved();
        run(id, 0.7f);
        EXPECT_FLOAT_EQ(rig.get(pan), to) << id;
        EXPECT_TRUE(rig.processor.getSession().isEdited());
    }

    std::set<float> values;

    for (int i = 0; i < 20; ++i)
    {
        run(controlMenuId::setToRandom);
        values.insert(rig.get(pan));
    }

    EXPECT_GT(values.size(), 10u);
    EXPECT_GT(*values.rbegin() - *values.begin(), 0.3f);
}

TEST_F(ControlMenuTest, ControllersAreTiedAndFreed)
{
    rig.processor.getSession().markSaved();
    run(controlMenuId::latchToMidi);
    turn(21, 127);
    EXPECT_EQ(rig.get(pan), 1.0f) << "the message that teaches it counts";
    EXPECT_EQ(binding(), "Midi CC : 21");
    EXPECT_TRUE(rig.processor.getSession().isEdited());
    turn(21, 0);
    EXPECT_EQ(rig.get(pan), 0.0f);
    EXPECT_EQ(rig.processor.getMidiInput().getMonitor().lastControllerNumber(), 21);

    // Latching again frees the controller at once. Another control's unlatching isn't this one's.
    run(controlMenuId::latchToMidi);
    EXPECT_EQ(boundTo(21), 0);
    runControlMenuItem(rig.processor, pan + 1, 0.5f, controlMenuId::unlatchMidi);
    EXPECT_EQ(rig.processor.getControllerMap().waitingParameter(), pan);
    run(controlMenuId::unlatchMidi);
    turn(22, 0);
    EXPECT_EQ(binding(), "Not Latched");

    // The number that an untied control gives back is the slot before the table.
    rig.set(slot::controllerMap - 1, 0.3f);
    rig.interaction.typedText = " 127 ";
    run(controlMenuId::setMidiController);
    EXPECT_EQ(boundTo(127), pan);
    EXPECT_EQ(rig.get(slot::controllerMap - 1), 0.5f);

    for (const char* refused : {"", "128", "-1", "mod wheel", "20x", "99999999999999999999"})
    {
        rig.interaction.typedText = refused;
        run(controlMenuId::setMidiController);
        EXPECT_EQ(binding(), "Midi CC : 127") << refused;
    }

    EXPECT_EQ(rig.interaction.textQuestions[1], "|Enter MIDI Controller number:|127");
    rig.interaction.typedText = "0007";
    run(controlMenuId::setMidiController);
    EXPECT_EQ(boundTo(127), 0);
    EXPECT_EQ(boundTo(7), pan);

    // Several controllers may name one parameter: the highest shows. Numbers outside the table do nothing.
    rig.set(slot::controllerMap + 90, encodeParamInt(pan));
    EXPECT_EQ(binding(), "Midi CC : 90");
    rig.set(slot::controllerMap + 5, encodeParamInt(1507));
    turn(5, 64);

    for (const int outside : {-1, 0, 1507, noParameter})
    {
        EXPECT_TRUE(controlMenu(rig.processor, outside, {}, {}).empty());
        runControlMenuItem(rig.processor, outside, 0.5f, controlMenuId::latchToMidi);
    }

    EXPECT_EQ(rig.processor.getControllerMap().waitingParameter(), 0);
    run(controlMenuId::clearMidi);
    EXPECT_EQ(boundTo(7), pan) << "the answer was no";
    rig.interaction.confirmAnswer = true;
    run(controlMenuId::clearMidi);

    for (int controller = 0; controller < numControllers; ++controller)
        EXPECT_EQ(rig.get(slot::controllerMap + controller), 0.0f);

    EXPECT_EQ(binding(), "Not Latched");
}

class HoldTest : public ControlMenuTest
{
protected:
    static constexpr int t = 6;
    static constexpr int knob = slot::multiKnob + t;
    static constexpr int memory = slot::multiMemory + t;
};

TEST_F(HoldTest, AHeldKnobLeavesItsTargetAtItsBase)
{
    rig.set(pan, 0.4f);
    rig.set(slot::multiAssignment + t, encodeParamInt(2));
    rig.set(slot::multiFader + 1, 0.5f);
    rig.set(knob, 0.2f);
    const float moved = 0.4f - 0.3f;
    EXPECT_NEAR(rig.get(pan), moved, 1e-6f);

    setHold(rig.processor, t, true);
    setHold(rig.processor, t, true);
    EXPECT_TRUE(isHeld(rig.processor, t));
    EXPECT_EQ(rig.get(knob), 0.5f);
    EXPECT_EQ(rig.get(memory), 0.2f);
    EXPECT_NEAR(rig.get(pan), 0.4f, 1e-6f);
    rig.set(slot::multiFader + 1, 1.0f);
    rig.set(slot::multiFader + 1, 0.5f);

    // What is remembered lives with the sound.
    const auto state = rig.state();
    rig.processor.resetAllParameters();
    rig.restore(state);
    EXPECT_TRUE(isHeld(rig.processor, t));
    setHold(rig.processor, t, false);
    setHold(rig.processor, t, false);
    EXPECT_EQ(rig.get(knob), 0.2f);
    EXPECT_EQ(rig.get(memory), 0.5f);
    EXPECT_NEAR(rig.get(pan), moved, 1e-6f);

    for (const int outside : {-1, 16, 999})
    {
        setHold(rig.processor, outside, true);
        EXPECT_FALSE(isHeld(rig.processor, outside));
    }
}

TEST_F(HoldTest, ControllersTurnSwitchesOnAndOff)
{
    const auto turned = [&](int target, int value)
    {
        rig.processor.getControllerMap().assign(target, "21");
        turn(21, value);
        return rig.get(target);
    };

    // All kinds of switches, among them one that is on at 1 alone, and one above one half.
    for (const int target : {layerParameter(1, layerSlot::solo), layerParameter(1, layerSlot::drumMode),
                             slot::masterMute, slot::fxOn, slot::masterEq})
    {
        EXPECT_EQ(turned(target, 127), 1.0f) << target;
        EXPECT_EQ(turned(target, 0), 0.0f) << target;
    }

    // Hold: the knob's place isn't lost, however often the controller says so.
    rig.set(knob, 0.2f);
    turned(slot::multiHold + t, 100);
    turned(slot::multiHold + t, 127);
    EXPECT_EQ(rig.get(knob), 0.5f);
    turned(slot::multiHold + t, 0);
    EXPECT_EQ(rig.get(knob), 0.2f);
}

TEST_F(HoldTest, OnlyWhatTheMenuHasIsATarget)
{
    chooseMultiTarget(rig.processor, t, 72);

    for (const int outside : {0, 74})
        chooseMultiTarget(rig.processor, t, outside);

    EXPECT_EQ(multiTargetText(rig.processor, t).layerLine, "Layer 4 : Easy Parameter 12");
    EXPECT_EQ(rig.processor.multiControls().targetParameter(t), 921);
    EXPECT_TRUE(multiTargetMenu(rig.processor, t)[3].subMenu[17].ticked);

    // Numbers that only a damaged preset can hold.
    for (const float damaged : {0.1f, 0.51f, 1.0f})
    {
        rig.set(slot::multiAssignment + t, damaged);
        multiTargetText(rig.processor, t);
        multiTargetMenu(rig.processor, t);
    }
}

} // namespace quorel::test
