// SPDX-License-Identifier: GPL-3.0-or-later
// The effects page and the EQ panels, under the mouse, on a real processor.
#include "EditorRig.h"
#include "effects/FxTypes.h"
#include "parameters/ParameterCodings.h"
#include "ui/FxPage.h"
#include "ui/Geometry.h"
#include "ui/LayerEqPanel.h"

#include <gtest/gtest.h>

#include <set>

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

class FxPageTest : public testing::Test
{
protected:
    FxPageTest()
    {
        rig.host.onRefresh = [this] { page.refresh(); };
        page.refresh();
    }

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

    EditorRig rig;
    FxPage page{rig.processor, rig.host, rig.images};
    TestWindow window{page};
};

} // namespace

TEST_F(FxPageTest, ChoosingATypeStartsTheEffect)
{
    constexpr int block = 2;
    rig.set(slot::fxMix + block, 0.1f);
    rig.set(slot::fxVolume + block, 0.0f);
    for (int j = 0; j < numFxParameters; ++j)
        rig.set(fxParameter(block, j), 0.123f);

    window.click(*window.find(slot::fxType + block));
    const auto types = window.menuTexts();
    ASSERT_EQ(types.size(), fxTypeCount);
    EXPECT_EQ(types[0], "None");
    EXPECT_EQ(types[fxTypeCount - 1], "AutoWah");
    ASSERT_TRUE(window.chooseFromMenu("HQ Reverb"));
    TestWindow::pump();

    EXPECT_EQ(rig.host.refreshes, 1);
    EXPECT_FLOAT_EQ(rig.get(slot::fxType + block), typeValue(6));
    EXPECT_EQ(rig.get(slot::fxOn + block), 1.0f);
    // Audible at once: full mix, in the middle, at the volume that every slot starts with.
    EXPECT_EQ(rig.get(slot::fxMix + block), 1.0f);
    EXPECT_EQ(rig.get(slot::fxPan + block), 0.5f);
    EXPECT_EQ(rig.get(slot::fxVolume + block), 0.75f);
    const float expected[] = {0.69f, 0.79f, 0.75f, 0.09f, 0.0f, 0.97f, 0.06f, 0.0f, 0.0f, 0.0f};
    for (int j = 0; j < numFxParameters; ++j)
        EXPECT_FLOAT_EQ(rig.get(fxParameter(block, j)), expected[j]) << j;
    EXPECT_TRUE(rig.processor.getSession().isEdited());
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
        EXPECT_EQ(window.find<juce::ComboBox>(slot::fxType + block)->getText(),
                  juce::String(fxTypes[static_cast<size_t>(type)].name));
        ++block;
    }
}

TEST_F(FxPageTest, KnobsShowNamesFilmsAndReturnToWhatWasSet)
{
    rig.set(fxParameter(0, 2), 0.31f);
    setType(0, 1);
    const auto onePage = TestWindow::picture(page);
    auto& feedback = *window.find<myKnob>(fxParameter(0, 2));
    EXPECT_NEAR(feedback.getValue(), 0.31, 1e-6);
    window.drag(feedback, {23, 23}, {23, 3});
    EXPECT_NEAR(rig.get(fxParameter(0, 2)), 0.39f, tolerance);
    window.doubleClick(feedback, {23, 23});
    EXPECT_NEAR(rig.get(fxParameter(0, 2)), 0.31f, tolerance);

    // "Feedback" has its zero in the middle, the same knob of the reverb has not: other films.
    const auto bipolar = TestWindow::picture(feedback);
    setType(0, 6);
    const auto unipolar = TestWindow::picture(feedback);
    bool differs = false;
    for (int y = 0; y < bipolar.getHeight(); ++y)
        for (int x = 0; x < bipolar.getWidth(); ++x)
            differs |= bipolar.getPixelAt(x, y) != unipolar.getPixelAt(x, y);
    EXPECT_TRUE(differs);
}

TEST_F(FxPageTest, StepsOfTheRhythmGate)
{
    constexpr int block = 3;
    setType(block, kappel);
    const int left = fxParameter(block, 5);
    auto& row = *window.find<kappelDisplay>(left);

    window.click(row, {5, 7});
    window.click(row, {155, 7});
    window.click(row, {42, 7});
    // Past the last step.
    window.click(row, {162, 7});
    EXPECT_EQ(row.pattern(), 1 << 0 | 1 << 15 | 1 << 4);
    EXPECT_EQ(rig.get(fxParameter(block, 6)), 0.0f);
    const auto pixel = [&](int step) { return TestWindow::picture(row).getPixelAt(step * 10 + 4, 6); };
    EXPECT_EQ(pixel(4), juce::Colour(0xffb58308));
    EXPECT_EQ(pixel(5), juce::Colours::black);

    const float before = rig.get(left);
    window.click(row, {42, 7});
    window.click(row, {42, 7});
    EXPECT_NEAR(rig.get(left), before, 1.0f / 65536.0f);

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
        window.key(juce::KeyPress(juce::KeyPress::spaceKey));
        expected ^= 1 << step;
        EXPECT_EQ(row.pattern(), expected) << step;
        EXPECT_NE(TestWindow::picture(row).getPixelAt(step * 10, 6), juce::Colours::black) << "the cursor";
        window.key(juce::KeyPress(juce::KeyPress::rightKey));
    }
    auto* spoken = row.getAccessibilityHandler()->getValueInterface();
    EXPECT_EQ(spoken->getCurrentValueAsString(), "-xxx-xxxxxxxxxx-")
        << "all but steps 0, 4 and 15 are on now";
}

TEST_F(FxPageTest, DragOnTheCurveMovesTheNearestBand)
{
    auto& screen = *window.find("EQlcd");
    const auto frequency = [](int band)
    { return slot::masterEq + eqSlot::bands + 4 * band + eqSlot::bandFreq; };
    const auto width = [&](int band) { return frequency(band) + 1; };
    const auto gain = [&](int band) { return frequency(band) + 2; };
    // Band 1 stands in the middle; towards the top is louder.
    const GestureCount gestures(rig.processor);
    window.drag(screen, {180, 61}, {346 * 6 / 10, 122 / 4});
    EXPECT_EQ(gestures.begun, 2) << "frequency and gain";
    EXPECT_EQ(gestures.ended, 2);
    EXPECT_NEAR(rig.get(frequency(1)), 0.6f, 0.004f);
    EXPECT_NEAR(rig.get(gain(1)), 0.75f, 0.01f);
    EXPECT_FLOAT_EQ(rig.get(frequency(0)), 0.25f);
    EXPECT_FLOAT_EQ(rig.get(frequency(2)), 0.75f);

    const float before = rig.get(frequency(1));
    const float gainBefore = rig.get(gain(1));
    window.drag(screen, {205, 30}, {207 + 35, 90}, TestWindow::leftButton + TestWindow::shift);
    EXPECT_NEAR(rig.get(width(1)), 0.3f, 0.02f);
    EXPECT_EQ(rig.get(frequency(1)), before);
    EXPECT_EQ(rig.get(gain(1)), gainBefore);

    // Outside it stays at the ends; the right button does nothing.
    window.drag(screen, {300, 60}, {500, -50});
    EXPECT_EQ(rig.get(frequency(2)), 1.0f);
    EXPECT_EQ(rig.get(gain(2)), 1.0f);
    window.drag(screen, {80, 60}, {20, 10}, TestWindow::rightButton);
    EXPECT_FLOAT_EQ(rig.get(frequency(0)), 0.25f);

    // The keyboard moves the band that the mouse was at last, then the next.
    screen.grabKeyboardFocus();
    window.key(juce::KeyPress(juce::KeyPress::upKey));
    EXPECT_NEAR(rig.get(gain(0)), 0.51f, tolerance);
    window.key(juce::KeyPress(juce::KeyPress::leftKey));
    EXPECT_NEAR(rig.get(frequency(0)), 0.24f, tolerance);
    const float widthBefore = rig.get(width(1));
    window.key(juce::KeyPress(juce::KeyPress::returnKey));
    window.key(juce::KeyPress(juce::KeyPress::rightKey, juce::ModifierKeys::shiftModifier, 0));
    EXPECT_NEAR(rig.get(width(1)), widthBefore + 0.01f, tolerance);

    // The wheel is the width; a double click resets its band.
    const float oldWidth = rig.get(width(1));
    window.wheel(screen, {207, 30}, 0.2f);
    EXPECT_NEAR(rig.get(width(1)), oldWidth + 0.02f, tolerance);
    rig.set(gain(1), 0.9f);
    window.doubleClick(screen, {207, 20});
    EXPECT_EQ(rig.get(frequency(1)), 0.5f);
    EXPECT_FLOAT_EQ(rig.get(width(1)), 0.2f);
    EXPECT_EQ(rig.get(gain(1)), 0.5f);
}

TEST_F(FxPageTest, CurveShowsTheGainAtItsFrequency)
{
    auto& screen = dynamic_cast<TEQScreen&>(*window.find("EQlcd"));
    const auto set = [&](int band, float f, float bw, float g)
    {
        const int first = slot::masterEq + eqSlot::bands + 4 * band + eqSlot::bandFreq;
        rig.set(first, f);
        rig.set(first + 1, bw);
        rig.set(first + 2, g);
    };

    // The peak has the gain itself, far from it there is none; 1.0 stands for 20 dB.
    for (const float g : {0.0f, 0.25f, 0.75f, 1.0f})
    {
        set(0, 0.5f, 0.2f, g);
        EXPECT_NEAR(screen.responseAt(0, 173), 2.0 * static_cast<double>(g) - 1.0, 0.01) << g;
        EXPECT_NEAR(screen.responseAt(0, 10), 0.0, 0.01) << g;
    }
    // Flat at 0 dB, whatever the width; wider bands reach further.
    set(1, 0.5f, 0.9f, 0.5f);
    for (const int x : {0, 173, 345})
        EXPECT_EQ(screen.responseAt(1, x), 0.0);
    set(1, 0.5f, 0.2f, 1.0f);
    set(2, 0.5f, 0.6f, 1.0f);
    EXPECT_GT(screen.responseAt(2, 120), screen.responseAt(1, 120));

    // The picture: the fill of a boosted band stands above the middle line, not below.
    for (int band = 0; band < numEqBands; ++band)
        set(band, 0.5f, 0.4f, band == 0 ? 1.0f : 0.5f);
    const auto picture = TestWindow::picture(screen);
    EXPECT_NE(picture.getPixelAt(173, 30), juce::Colours::black);
    EXPECT_EQ(picture.getPixelAt(173, 100), juce::Colours::black);

    // A curve of each hue alone, at its top, can be seen as well as text.
    for (int band = 0; band < numEqBands; ++band)
    {
        for (int other = 0; other < numEqBands; ++other)
            set(other, 0.5f, 0.4f, other == band ? 0.7f : 0.5f);
        const auto curve = TestWindow::picture(screen);
        float best = 0.0f;
        for (int y = 30; y < 50; ++y)
            best = juce::jmax(best, contrastOf(curve.getPixelAt(173, y), juce::Colours::black));
        EXPECT_GE(best, leastContrast) << band;
    }
}

TEST_F(FxPageTest, MasterEqControlsStandAndWork)
{
    std::set<int> missing;
    for (int parameter = slot::masterEq; parameter <= slot::masterEqEnd; ++parameter)
        if (!isShown(parameter))
            missing.insert(parameter);
    EXPECT_TRUE(missing.empty());
    window.click(*window.find(slot::masterEq));
    EXPECT_EQ(rig.get(slot::masterEq), 1.0f);
    window.drag(*window.find(slot::masterEq + eqSlot::highPassFreq), {23, 23}, {23, -2});
    EXPECT_NEAR(rig.get(slot::masterEq + eqSlot::highPassFreq), 0.1f, tolerance);
    EXPECT_EQ(window.find(slot::masterEq)->getAccessibilityHandler()->getTitle(), "Master EQ On");
}

TEST(LayerEqPanelTest, IsTheEqOfItsLayer)
{
    EditorRig rig;
    LayerEqPanel panel(rig.processor, rig.host, rig.images, 2);
    panel.refresh();
    TestWindow window(panel);

    for (int n = layerSlot::eq; n <= layerSlot::eqEnd; ++n)
        EXPECT_NE(window.find(layerParameter(2, n)), nullptr) << n;
    EXPECT_EQ(window.find("EQlcd")->getPosition(), juce::Point<int>(736, 35));
    EXPECT_NEAR(window.find<myKnob>(layerParameter(2, 390))->getDoubleClickReturnValue(), 0.75, 1e-6);
    EXPECT_NEAR(window.find<myKnob>(layerParameter(2, 394))->getDoubleClickReturnValue(), 1.0, 1e-6);
    window.click(*window.find(layerParameter(2, 393)));
    EXPECT_EQ(rig.get(layerParameter(2, 393)), 1.0f);
    window.drag(*window.find("EQlcd"), {86, 61}, {86, 0});
    EXPECT_EQ(rig.get(layerParameter(2, layerSlot::eq + eqSlot::bands + eqSlot::bandGain)), 1.0f);
}

} // namespace quorel::test
