// SPDX-License-Identifier: GPL-3.0-or-later
// The multi-control panel in a real window, under mouse and keyboard.
#include "EditorRig.h"

#include "engine/MultiControlMenu.h"
#include "parameters/HoldSwitches.h"
#include "parameters/ParameterCodings.h"
#include "ui/MultiControlPage.h"

namespace quorel::test
{

class MultiControlPageTest : public PageTest<MultiControlPage>
{
protected:
    static constexpr int pan = 233;
    static constexpr int panNumber = 2;

    /** Of a number or a name. */
    template <typename Id>
    juce::Component& control(const Id& id)
    {
        auto* found = window.find(id);
        EXPECT_NE(found, nullptr) << id;
        return *found;
    }

    /** What stands under knob `t`: the two lines over its target button. */
    juce::StringArray lines(int t)
    {
        const auto box = control("multimenubutton" + juce::String(t)).getBounds();
        juce::StringArray texts;

        for (auto* child : page.getChildren())
            if (const auto* label = dynamic_cast<juce::Label*>(child);
                label != nullptr && box.contains(label->getBounds()))
                texts.add(label->getText());

        return texts;
    }
};

TEST_F(MultiControlPageTest, FadersAndKnobsMoveTheirTarget)
{
    rig.set(pan, 0.5f);
    rig.set(slot::multiAssignment + 4, encodeParamInt(panNumber));
    // A fader goes to the mouse, and with Shift from where it is.
    auto& fader = control(1351);
    window.click(fader, {20, 84});
    EXPECT_NEAR(rig.get(1351), 0.5f, 0.01f);
    const float before = rig.get(1351);
    window.drag(fader, {20, 150}, {20, 125}, TestWindow::leftButton + TestWindow::shift);
    EXPECT_NEAR(rig.get(1351), before + 0.01f, 1e-5f);
    window.drag(fader, {28, 150}, {28, -100});
    EXPECT_FLOAT_EQ(rig.get(1351), 1.0f);
    auto& knob = control(1358);
    window.drag(knob, {23, 23}, {23, 73});
    EXPECT_NEAR(rig.get(1358), 0.5f - 50.0f / 250.0f, 0.02f);
    EXPECT_NEAR(rig.get(pan), 0.5f + (rig.get(1358) - 0.5f) * 2.0f, 1e-4f);
    window.doubleClick(fader, {28, 80});
    EXPECT_EQ(rig.get(1351), 0.0f);
    EXPECT_NEAR(rig.get(pan), 0.5f, 1e-4f);
    window.doubleClick(knob, {23, 23});
    EXPECT_EQ(rig.get(1358), 0.5f);
}

TEST_F(MultiControlPageTest, AHeldKnobTakesNoInput)
{
    constexpr int t = 5;
    rig.set(slot::multiKnob + t, 0.2f);
    page.refresh();
    auto& knob = control(slot::multiKnob + t);
    auto& hold = control(slot::multiHold + t);
    window.click(hold);
    EXPECT_TRUE(isHeld(rig.processor, t));
    EXPECT_EQ(dynamic_cast<juce::Slider&>(knob).getValue(), 0.5);
    window.drag(knob, {23, 23}, {23, 3});
    window.wheel(knob, {23, 23}, 0.5f);
    window.doubleClick(knob, {23, 23});
    window.click(knob, TestWindow::rightButton);
    EXPECT_FALSE(TestWindow::menuIsOpen());
    EXPECT_EQ(rig.get(slot::multiKnob + t), 0.5f);
    window.click(hold);
    EXPECT_FALSE(isHeld(rig.processor, t));
    EXPECT_EQ(rig.get(slot::multiKnob + t), 0.2f);
    EXPECT_TRUE(knob.isEnabled());

    // A sound that was saved with the knob held, or a host that turns the switch.
    rig.set(slot::multiHold + t, 1.0f);
    page.refresh();
    EXPECT_FALSE(knob.isEnabled());
}

TEST_F(MultiControlPageTest, TargetsAreChosenFromTheirMenu)
{
    ASSERT_TRUE(rig.engine.load(1, "Hexley"));
    const auto hosted = rig.processor.getLayer(1).getParameterNames()[61];
    window.click(control("multimenubutton9"));
    EXPECT_EQ(window.menuTexts().joinIntoString("|"), "Layer 1|Layer 2|Layer 3|Layer 4|none");
    // Opens the sub-menu, and so leaves a menu open.
    window.chooseFromMenu("Layer 2");
    EXPECT_EQ(window.menuTexts().size(), 18);
    EXPECT_TRUE(window.chooseFromMenu("Easy Parameter 1 : " + hosted));
    EXPECT_EQ(rig.processor.multiControls().targetParameter(9), 510);
    EXPECT_EQ(rig.host.refreshes, 1);
    EXPECT_EQ(lines(9).joinIntoString("|"), "Layer 2 : Easy Parameter 1|" + hosted);
    window.click(control("multimenubutton9"));
    EXPECT_TRUE(window.chooseFromMenu("none"));
    EXPECT_EQ(rig.get(slot::multiAssignment + 9), 0.0f);
    EXPECT_EQ(lines(9).joinIntoString("|"), "---|");
}

TEST_F(MultiControlPageTest, NamesAreTyped)
{
    auto& label = dynamic_cast<juce::Label&>(control(2));
    EXPECT_EQ(label.getText(), "Multicontrol 3");
    window.click(label);
    auto* editor = label.getCurrentTextEditor();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    window.type("Filters and some more text");
    page.refresh();
    EXPECT_TRUE(label.isBeingEdited()) << "a refresh leaves what is being typed";
    window.key(juce::KeyPress::returnKey);
    EXPECT_EQ(label.getText(), "Filters and some more t");
    EXPECT_EQ(multiControlName(rig.processor, 2), "Filters and some more t");
}

} // namespace quorel::test
