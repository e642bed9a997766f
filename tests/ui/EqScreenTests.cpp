// SPDX-License-Identifier: GPL-3.0-or-later
// The EQ of the effects page and of a layer's panel: curve, mouse and keyboard.
#include "EditorRig.h"

#include "ui/FxPage.h"
#include "ui/LayerEqPanel.h"

namespace quorel::test
{

namespace
{
constexpr float tolerance = 1e-5f;

class EqScreenTest : public PageTest<FxPage>
{
protected:
    static int frequency(int band) { return slot::masterEq + eqSlot::bands + 4 * band + eqSlot::bandFreq; }

    static int width(int band) { return frequency(band) + 1; }

    static int gain(int band) { return frequency(band) + 2; }

    void setBand(int band, float f, float bandwidth, float g)
    {
        rig.set(frequency(band), f);
        rig.set(width(band), bandwidth);
        rig.set(gain(band), g);
    }

    TEQScreen& screen{dynamic_cast<TEQScreen&>(*window.find("EQlcd"))};
};
} // namespace

TEST_F(EqScreenTest, DragsWheelAndKeysMoveTheNearestBand)
{
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
    window.key(juce::KeyPress::upKey);
    EXPECT_NEAR(rig.get(gain(0)), 0.51f, tolerance);
    window.key(juce::KeyPress::leftKey);
    EXPECT_NEAR(rig.get(frequency(0)), 0.24f, tolerance);
    const float oldWidth = rig.get(width(1));
    window.key(juce::KeyPress::returnKey);
    window.key(juce::KeyPress(juce::KeyPress::rightKey, juce::ModifierKeys::shiftModifier, 0));
    EXPECT_NEAR(rig.get(width(1)), oldWidth + 0.01f, tolerance);

    // The wheel is the width; a double click resets its band.
    window.wheel(screen, {207, 30}, 0.2f);
    EXPECT_NEAR(rig.get(width(1)), oldWidth + 0.03f, tolerance);
    rig.set(gain(1), 0.9f);
    window.doubleClick(screen, {207, 20});
    EXPECT_EQ(rig.get(frequency(1)), 0.5f);
    EXPECT_FLOAT_EQ(rig.get(width(1)), 0.2f);
    EXPECT_EQ(rig.get(gain(1)), 0.5f);
}

TEST_F(EqScreenTest, CurveShowsTheGainAtItsFrequency)
{
    // The peak has the gain itself, far from it there is none; 1.0 stands for 20 dB.
    for (const float g : {0.0f, 0.25f, 0.75f, 1.0f})
    {
        setBand(0, 0.5f, 0.2f, g);
        EXPECT_NEAR(screen.responseAt(0, 173), 2.0 * static_cast<double>(g) - 1.0, 0.01) << g;
        EXPECT_NEAR(screen.responseAt(0, 10), 0.0, 0.01) << g;
    }
    // Flat at 0 dB, whatever the width; wider bands reach further.
    setBand(1, 0.5f, 0.9f, 0.5f);
    for (const int x : {0, 173, 345})
        EXPECT_EQ(screen.responseAt(1, x), 0.0);
    setBand(1, 0.5f, 0.2f, 1.0f);
    setBand(2, 0.5f, 0.6f, 1.0f);
    EXPECT_GT(screen.responseAt(2, 120), screen.responseAt(1, 120));

    // A curve of each hue alone can be seen as well as text; its fill stands above the middle line alone.
    for (int band = 0; band < numEqBands; ++band)
    {
        for (int other = 0; other < numEqBands; ++other)
            setBand(other, 0.5f, 0.4f, other == band ? 0.7f : 0.5f);
        const auto curve = TestWindow::picture(screen);
        float best = 0.0f;
        for (int y = 30; y < 50; ++y)
            best = juce::jmax(best, contrastOf(curve.getPixelAt(173, y), juce::Colours::black));
        EXPECT_GE(best, leastContrast) << band;
        EXPECT_NE(curve.getPixelAt(173, 55), juce::Colours::black);
        EXPECT_EQ(curve.getPixelAt(173, 100), juce::Colours::black);
    }
}

TEST_F(EqScreenTest, KnobsAndSwitchesStandForTheirParameters)
{
    LayerEqPanel panel(rig.processor, rig.host, rig.images, 2);
    panel.refresh();
    TestWindow panelWindow(panel);
    const std::pair<TestWindow*, int> eqs[] = {{&window, slot::masterEq},
                                               {&panelWindow, layerParameter(2, layerSlot::eq)}};

    for (const auto& [shown, first] : eqs)
    {
        for (int parameter = first; parameter <= first + slot::masterEqEnd - slot::masterEq; ++parameter)
            EXPECT_TRUE(shown->find(parameter) != nullptr && shown->find(parameter)->isShowing())
                << parameter;

        shown->click(*shown->find(first));
        EXPECT_EQ(rig.get(first), 1.0f);
        const int highPass = first + eqSlot::highPassFreq;
        shown->drag(*shown->find(highPass), {23, 23}, {23, -2});
        EXPECT_NEAR(rig.get(highPass), 0.1f, tolerance);
        const auto middle = shown->find("EQlcd")->getLocalBounds().getCentre();
        shown->drag(*shown->find("EQlcd"), middle, middle.withY(0));
        EXPECT_EQ(rig.get(first + eqSlot::bands + 4 + eqSlot::bandGain), 1.0f);
    }
}

} // namespace quorel::test
