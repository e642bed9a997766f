// SPDX-License-Identifier: GPL-3.0-or-later
// The slots of the effects page under mouse and keyboard.
#include "EditorRig.h"

#include "effects/FxTypes.h"
#include "ui/FxPage.h"
#include "ui/Geometry.h"

namespace quorel::test
{

namespace
{
constexpr float tolerance = 1e-5f;
constexpr int kappel = 26;

/** Type parameter of an effect type. */
float typeValue(int type)
{
    return static_cast<float>(type) / 32.0f;
}

class FxPageTest : public PageTest<FxPage>
{
protected:
    void setType(int block, int type)
    {
        rig.set(slot::fxType + block, typeValue(type));
        page.refresh();
    }

    bool isShown(int parameter) const
    {
        auto* control = window.find(parameter);
        return control != nullptr && control->isShowing();
    }

    /** True if a slot shows the text. */
    bool says(int block, const juce::String& text)
    {
        const auto slot = geometry::edges(440, 200, 762, 356) + geometry::fx::slotOffset(block);
        const auto texts = TestWindow::texts(page);
        return std::any_of(texts.begin(), texts.end(),
                           [&](const PaintedText& painted)
                           { return painted.text == text && slot.toFloat().contains(painted.area); });
    }
};

} // namespace

TEST_F(FxPageTest, ChoosingATypeStartsTheEffect)
{
    constexpr int block = 2;
    // Audible at once: on, full mix, in the middle, at the volume that every slot starts with.
    const std::pair<int, float> started[] = {{slot::fxOn + block, 1.0f},     {slot::fxMix + block, 1.0f},
                                             {slot::fxPan + block, 0.5f},    {slot::fxVolume + block, 0.75f},
                                             {fxParameter(block, 0), 0.69f}, {fxParameter(block, 9), 0.0f}};

    for (const auto& [parameter, value] : started)
        rig.set(parameter, 0.123f);

    window.click(*window.find(slot::fxType + block));
    EXPECT_EQ(window.menuTexts().size(), fxTypeCount);
    ASSERT_TRUE(window.chooseFromMenu("HQ Reverb"));
    TestWindow::pump();
    EXPECT_EQ(rig.host.refreshes, 1);
    EXPECT_FLOAT_EQ(rig.get(slot::fxType + block), typeValue(6));
    EXPECT_TRUE(rig.processor.getSession().isEdited());

    for (const auto& [parameter, value] : started)
        EXPECT_FLOAT_EQ(rig.get(parameter), value) << parameter;
}

TEST_F(FxPageTest, SlotsShowWhatTheirTypesHave)
{
    const auto shownKnobs = [this](int block)
    {
        juce::String shown;
        for (int j = 0; j < numFxParameters; ++j)
            shown += isShown(fxParameter(block, j)) ? juce::String(j) : juce::String();
        return shown;
    };
    // None, mono delay, HQ reverb, and the rhythm gate, two of whose parameters are its rows of steps.
    const std::pair<int, const char*> types[] = {
        {0, ""}, {1, "01234567"}, {6, "0123456789"}, {kappel, "0123456"}};
    int block = 0;
    for (const auto& [type, knobs] : types)
    {
        setType(block, type);
        EXPECT_EQ(shownKnobs(block), knobs) << type;
        const auto* row = dynamic_cast<kappelDisplay*>(window.find(fxParameter(block, 5)));
        EXPECT_EQ(row != nullptr && row->isShowing(), type == kappel) << type;
        EXPECT_EQ(says(block, "Choose a type"), type == 0) << type;
        EXPECT_EQ(says(block, "L") && says(block, "R") && says(block, "4"), type == kappel) << type;
        ++block;
    }
}

TEST_F(FxPageTest, KnobsReturnToWhatWasSetAndHaveTheFilmOfTheirRange)
{
    const int parameter = fxParameter(0, 2);
    rig.set(parameter, 0.31f);
    setType(0, 1);
    auto& feedback = *window.find(parameter);
    window.drag(feedback, {23, 23}, {23, 3});
    EXPECT_NEAR(rig.get(parameter), 0.39f, tolerance);
    window.doubleClick(feedback, {23, 23});
    EXPECT_NEAR(rig.get(parameter), 0.31f, tolerance);

    // "Feedback" has its zero in the middle, the same knob of the reverb has not.
    const auto bipolar = TestWindow::picture(feedback);
    setType(0, 6);
    EXPECT_FALSE(samePicture(bipolar, TestWindow::picture(feedback)));
}

TEST_F(FxPageTest, StepsOfTheRhythmGate)
{
    constexpr int block = 3;
    setType(block, kappel);
    auto& row = *window.find<kappelDisplay>(fxParameter(block, 5));

    // The last is past the last step.
    for (const int x : {5, 155, 42, 162})
        window.click(row, {x, 7});

    EXPECT_EQ(row.pattern(), 1 << 0 | 1 << 15 | 1 << 4);
    EXPECT_EQ(rig.get(fxParameter(block, 6)), 0.0f);
    const auto pixel = [&](int step) { return TestWindow::picture(row).getPixelAt(step * 10 + 4, 6); };
    EXPECT_EQ(pixel(4), juce::Colour(0xffb58308));
    EXPECT_EQ(pixel(5), juce::Colours::black);

    // A drag does to all steps on its way what it does to its first, as one gesture; a fast one skips none.
    const GestureCount gestures(rig.processor);
    window.press(row, {75, 7});
    window.moveTo(row, {125, 7}, TestWindow::leftButton);
    window.moveTo(row, {300, 7}, TestWindow::leftButton);
    window.release(row, {300, 7});
    EXPECT_EQ(row.pattern(), 0xff80 | 1 << 0 | 1 << 4);
    EXPECT_EQ(gestures.begun, 1);
    EXPECT_EQ(gestures.ended, 1);
    window.drag(row, {145, 7}, {75, 7});
    EXPECT_EQ(row.pattern(), 1 << 0 | 1 << 15 | 1 << 4);

    // Every step on and off again, in any order, keeps the others. Here by the keyboard: to the left end
    // first.
    int expected = row.pattern();
    row.grabKeyboardFocus();
    for (int step = 0; step < 16; ++step)
    {
        window.key(juce::KeyPress::spaceKey);
        expected ^= 1 << step;
        EXPECT_EQ(row.pattern(), expected) << step;
        EXPECT_NE(TestWindow::picture(row).getPixelAt(step * 10, 6), juce::Colours::black) << "the cursor";
        window.key(juce::KeyPress::rightKey);
    }
    auto* spoken = row.getAccessibilityHandler()->getValueInterface();
    EXPECT_EQ(spoken->getCurrentValueAsString(), "-xxx-xxxxxxxxxx-")
        << "all but steps 0, 4 and 15 are on now";
}

} // namespace quorel::test
