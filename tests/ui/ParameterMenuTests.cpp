// SPDX-License-Identifier: GPL-3.0-or-later
// The menus of the editor's controls, and the glow of those that follow a controller.
#include "EditorTest.h"

namespace quorel::test
{

class ParameterMenuTest : public EditorTest
{
protected:
    ParameterMenuTest() { open(); }

    juce::StringArray openMenu(juce::Component& control)
    {
        window->click(control, TestWindow::rightButton);
        return window->menuTexts();
    }

    bool choose(juce::Component& control, const juce::String& text)
    {
        return !openMenu(control).isEmpty() && window->chooseFromMenu(text);
    }

    void sendController(int number, int value)
    {
        engine.send(juce::MidiMessage::controllerEvent(3, number, value));
        engine.play();
    }
};

TEST_F(ParameterMenuTest, AKnobIsSetAndGlowsFromRedToGreenAsItLearns)
{
    constexpr int volume = layerParameter(0, layerSlot::volume);
    engine.set(volume, 0.2f);
    passes();
    auto& knob = *window->find(volume);
    EXPECT_EQ(openMenu(knob).joinIntoString("|"),
              "(Layer1 Volume)|(-29 db)|(Not Latched)|Set To Default|Set To Minimum|Set To Maximum|Set To "
              "Mid|Set To Random|Increase|Decrease|Set Value|Latch To Midi|Unlatch Midi|Set Midi CC|Clear "
              "Midi");
    ASSERT_TRUE(window->chooseFromMenu("Set To Default"));
    EXPECT_FLOAT_EQ(engine.get(volume), 0.63f);
    engine.interaction.typedText = "-6";
    ASSERT_TRUE(choose(knob, "Set Value"));
    EXPECT_NEAR(engine.get(volume), 0.5f, 0.001f);

    const auto glow = [&]
    {
        TestWindow::pump(250);
        return knob.getComponentEffect() != nullptr;
    };
    const auto redness = [&]
    {
        const auto picture = TestWindow::picture(knob);
        int sum = 0;
        for (int y = 0; y < picture.getHeight(); ++y)
            for (int x = 0; x < picture.getWidth(); ++x)
                sum += picture.getPixelAt(x, y).getRed() - picture.getPixelAt(x, y).getGreen();
        return sum;
    };
    EXPECT_FALSE(glow());
    ASSERT_TRUE(choose(knob, "Latch To Midi"));
    EXPECT_TRUE(glow());
    const int waiting = redness();
    // The next controller that arrives is bound, and moves the knob at once.
    sendController(7, 64);
    EXPECT_NEAR(engine.get(volume), 0.5f, 0.01f);
    EXPECT_TRUE(glow());
    EXPECT_GT(waiting, redness());
    EXPECT_EQ(openMenu(knob)[2], "(Midi CC : 7)");
    ASSERT_TRUE(window->chooseFromMenu("Unlatch Midi"));
    EXPECT_FALSE(glow());
}

TEST_F(ParameterMenuTest, SwitchesLearnAndPageKeysHaveNoMenu)
{
    constexpr int solo = layerParameter(0, layerSlot::solo);
    auto& toggle = *window->find<juce::Button>(solo);
    EXPECT_EQ(openMenu(toggle).joinIntoString("|"),
              "(Layer1 Solo)|(Off)|(Not Latched)|Latch To Midi|Unlatch Midi|Set Midi CC|Clear Midi");
    ASSERT_TRUE(window->chooseFromMenu("Latch To Midi"));
    EXPECT_FALSE(toggle.getToggleState()) << "the right button switches nothing";
    sendController(30, 127);
    EXPECT_EQ(engine.get(solo), 1.0f);

    window->click(button("Layer 1 EQ panel"), TestWindow::rightButton);
    EXPECT_FALSE(TestWindow::menuIsOpen());
}

} // namespace quorel::test
