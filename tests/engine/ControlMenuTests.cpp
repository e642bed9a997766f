// SPDX-License-Identifier: GPL-3.0-or-later
// What menus and switches of single controls do, without a window: the right-click menu, hold, and the
// targets of the multi-control knobs.
#include "engine/ControlMenu.h"
#include "engine/MultiControlMenu.h"
#include "parameters/HoldSwitches.h"
#include "parameters/ParameterCodings.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

namespace quorel::test
{

class ControlMenuTest : public testing::Test
{
protected:
    static constexpr int pan = 233;

    void run(int id, float defaultValue = 0.5f) { runControlMenuItem(rig.processor, pan, defaultValue, id); }

    juce::String row(size_t i) { return controlMenu(rig.processor, pan, "Pan", "0")[i].text; }

    int boundTo(int controller) { return decodeParamInt(rig.get(slot::controllerMap + controller)); }

    ProcessorRig rig;
};

TEST_F(ControlMenuTest, TheMenuTellsAndOffersWhatBelongsToTheControl)
{
    const auto menu = controlMenu(rig.processor, pan, "Name", "text");
    ASSERT_EQ(menu.size(), 18u);
    EXPECT_EQ(menu[0].text, "Name");
    EXPECT_EQ(menu[1].text, "text");
    EXPECT_EQ(menu[3].text, "Not Latched");
    juce::StringArray commands;
    int separators = 0;
    int id = 3;

    for (const auto& entry : menu)
    {
        separators += entry.isSeparator() ? 1 : 0;
        EXPECT_EQ(entry.enabled, entry.id != controlMenuId::information);

        if (entry.id >= 3 && entry.id < controlMenuId::information)
        {
            EXPECT_EQ(entry.id, id++);
            commands.add(entry.text);
        }
    }

    EXPECT_EQ(separators, 3);
    EXPECT_EQ(commands.joinIntoString("|"), "Set To Default|Set To Minimum|Set To Maximum|Set To Mid|Set To "
                                            "Random|Increase|Decrease|Set Value|Latch To Midi|Unlatch "
                                            "Midi|Set Midi CC|Clear Midi");

    for (const int outside : {-1, 0, 1507, noParameter})
    {
        EXPECT_TRUE(controlMenu(rig.processor, outside, {}, {}).empty());
        runControlMenuItem(rig.processor, outside, 0.5f, controlMenuId::latchToMidi);
    }

    EXPECT_EQ(rig.processor.getControllerMap().waitingParameter(), 0);
}

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

    float lowest = 1.0f;
    float highest = 0.0f;

    for (int i = 0; i < 100; ++i)
    {
        run(controlMenuId::setToRandom);
        lowest = juce::jmin(lowest, rig.get(pan));
        highest = juce::jmax(highest, rig.get(pan));
    }

    EXPECT_LT(lowest, 0.2f);
    EXPECT_GT(highest, 0.8f);
    rig.interaction.typedText = "-50";
    run(controlMenuId::setValue);
    EXPECT_NEAR(rig.get(pan), 0.25f, 1e-6f);
}

TEST_F(ControlMenuTest, ControllersAreTiedAndFreed)
{
    run(controlMenuId::latchToMidi);
    rig.send(juce::MidiMessage::controllerEvent(3, 21, 127));
    rig.play();
    EXPECT_EQ(rig.get(pan), 1.0f);
    EXPECT_EQ(row(3), "Midi CC : 21");

    // Latching again frees the controller at once.
    run(controlMenuId::latchToMidi);
    EXPECT_EQ(boundTo(21), 0);
    run(controlMenuId::unlatchMidi);
    rig.send(juce::MidiMessage::controllerEvent(3, 22, 0));
    rig.play();
    EXPECT_EQ(row(3), "Not Latched");

    // The number that an untied control gives back is the slot before the table.
    rig.set(slot::controllerMap - 1, 0.3f);
    rig.interaction.typedText = "127";
    run(controlMenuId::setMidiController);
    EXPECT_EQ(rig.interaction.textQuestions[0], "|Enter MIDI Controller number:|");
    EXPECT_EQ(boundTo(127), pan);
    EXPECT_EQ(rig.get(slot::controllerMap - 1), 0.5f);

    for (const char* refused : {"", "128", "-1", "mod wheel", "99999999999999999999"})
    {
        rig.interaction.typedText = refused;
        run(controlMenuId::setMidiController);
        EXPECT_EQ(row(3), "Midi CC : 127") << refused;
    }

    EXPECT_EQ(rig.interaction.textQuestions[1], "|Enter MIDI Controller number:|127");
    rig.interaction.typedText = "0007";
    run(controlMenuId::setMidiController);
    EXPECT_EQ(boundTo(127), 0);
    EXPECT_EQ(boundTo(7), pan);
    run(controlMenuId::clearMidi);
    EXPECT_EQ(boundTo(7), pan) << "the answer was no";
    rig.interaction.confirmAnswer = true;
    run(controlMenuId::clearMidi);

    for (int controller = 0; controller < numControllers; ++controller)
        EXPECT_EQ(rig.get(slot::controllerMap + controller), 0.0f);

    EXPECT_EQ(row(3), "Not Latched");
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
    auto& map = rig.processor.getControllerMap();
    const auto turn = [&](int target, int value)
    {
        map.assign(target, "21");
        rig.send(juce::MidiMessage::controllerEvent(1, 21, value));
        rig.play();
        return rig.get(target);
    };

    // All kinds of switches, among them one that is on at 1 alone, and one above one half.
    for (const int target : {layerParameter(1, layerSlot::solo), layerParameter(1, layerSlot::drumMode),
                             slot::masterMute, slot::fxOn, slot::masterEq})
    {
        EXPECT_EQ(turn(target, 127), 1.0f) << target;
        EXPECT_EQ(turn(target, 0), 0.0f) << target;
    }

    // Hold: the knob's place isn't lost, however often the controller says so.
    rig.set(knob, 0.2f);
    turn(slot::multiHold + t, 100);
    turn(slot::multiHold + t, 127);
    EXPECT_EQ(rig.get(knob), 0.5f);
    turn(slot::multiHold + t, 0);
    EXPECT_EQ(rig.get(knob), 0.2f);
}

TEST_F(HoldTest, TargetsAreListedChosenAndShown)
{
    ASSERT_TRUE(rig.load(1, "Hexley"));
    const auto& names = rig.processor.getLayer(1).getParameterNames();
    auto menu = multiTargetMenu(rig.processor, t);
    ASSERT_EQ(menu.size(), 5u);
    int id = 1;

    for (size_t layer = 0; layer < 4; ++layer)
    {
        EXPECT_EQ(menu[layer].text, "Layer " + juce::String(layer + 1));
        ASSERT_EQ(menu[layer].subMenu.size(), 18u);

        for (const auto& entry : menu[layer].subMenu)
            EXPECT_EQ(entry.id, id++);
    }

    EXPECT_EQ(menu[4].text, "none");
    EXPECT_EQ(menu[4].id, 73);
    EXPECT_TRUE(menu[4].ticked);
    EXPECT_EQ(menu[0].subMenu[2].text, "FX1 Send");
    EXPECT_EQ(menu[0].subMenu[6].text, "Easy Parameter 1 : ---");
    EXPECT_EQ(menu[1].subMenu[17].text, "Easy Parameter 12 : " + names[95]);

    const std::vector<std::tuple<int, int, const char*, juce::String>> choices{
        {1, 232, "Layer 1 : Volume", ""},
        {18 + 7, 510, "Layer 2 : Easy Parameter 1", names[61]},
        {36 + 18, 721, "Layer 3 : Easy Parameter 12", ""},
        {72, 921, "Layer 4 : Easy Parameter 12", ""}};

    for (const auto& [choice, parameter, layerLine, nameLine] : choices)
    {
        chooseMultiTarget(rig.processor, t, choice);
        EXPECT_EQ(rig.processor.multiControls().targetParameter(t), parameter);
        EXPECT_EQ(multiTargetText(rig.processor, t).layerLine, layerLine);
        EXPECT_EQ(multiTargetText(rig.processor, t).nameLine, nameLine);
        menu = multiTargetMenu(rig.processor, t);
        EXPECT_TRUE(menu[static_cast<size_t>((choice - 1) / 18)]
                        .subMenu[static_cast<size_t>((choice - 1) % 18)]
                        .ticked);
    }

    chooseMultiTarget(rig.processor, t, 0);
    chooseMultiTarget(rig.processor, t, 74);
    EXPECT_EQ(rig.processor.multiControls().targetParameter(t), 921);
    chooseMultiTarget(rig.processor, t, noMultiTargetId);
    EXPECT_EQ(rig.get(slot::multiAssignment + t), 0.0f);
    EXPECT_EQ(multiTargetText(rig.processor, t).layerLine, "---");

    // Numbers that only a damaged preset can hold.
    for (const float damaged : {0.1f, 0.51f, 1.0f})
    {
        rig.set(slot::multiAssignment + t, damaged);
        multiTargetText(rig.processor, t);
        multiTargetMenu(rig.processor, t);
    }
}

TEST_F(HoldTest, GroupNamesKeepToTheirSlots)
{
    EXPECT_EQ(multiControlName(rig.processor, 3), "Multicontrol 4");
    setMultiControlName(rig.processor, 1, "Twenty-three characters and more");
    EXPECT_EQ(multiControlName(rig.processor, 1), "Twenty-three characters");
    setMultiControlName(rig.processor, 2, juce::String(juce::CharPointer_UTF8("Fl\xc3\xb6te")));
    EXPECT_EQ(multiControlName(rig.processor, 2), "Fl_te");
    setMultiControlName(rig.processor, 0, "");
    EXPECT_EQ(multiControlName(rig.processor, 0), "");
    EXPECT_EQ(multiControlName(rig.processor, 3), "Multicontrol 4");
}

} // namespace quorel::test
