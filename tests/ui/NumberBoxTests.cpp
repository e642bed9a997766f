// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's boxes of numbers, which are typed, turned, dragged and stepped.
#include "EditorTest.h"

#include "parameters/ParameterCodings.h"

#include <algorithm>
#include <tuple>

namespace quorel::test
{

class NumberBoxTest : public EditorTest
{
protected:
    NumberBoxTest() { open(); }

    static juce::String text(juce::Slider& box)
    {
        return dynamic_cast<juce::Label&>(*box.getChildComponent(0)).getText();
    }

    void type(juce::Component& box, const juce::String& text)
    {
        window->doubleClick(box, box.getLocalBounds().getCentre());
        window->typeLine(text);
    }
};

TEST_F(NumberBoxTest, KeysAreTypedTurnedAndChosen)
{
    constexpr int keyMin = layerParameter(0, layerSlot::keyMin);
    auto& key = *window->find<juce::Slider>(keyMin);
    const juce::Point<int> middle{20, 8};
    const auto note = [&] { return paramToInt(engine.get(keyMin), 0, 127); };
    const std::tuple<const char*, int, const char*> notes[] = {
        {"60", 60, "C3"},   {"bb-1", 22, "A#-1"}, {"F#3", 66, "F#3"}, {"H2", 66, "F#3"},  {"", 66, "F#3"},
        {"200", 127, "G8"}, {"-5", 0, "C-2"},     {" 24 ", 24, "C0"}, {"1.2.3", 24, "C0"}};

    for (const auto& [typed, number, name] : notes)
    {
        type(key, typed);
        EXPECT_EQ(note(), number) << typed;
        EXPECT_EQ(text(key), name) << typed;
    }

    window->doubleClick(key, middle);
    window->type("9");
    window->key(juce::KeyPress::escapeKey);
    EXPECT_EQ(note(), 24) << "Escape leaves all as it was";

    window->wheel(key, middle, 0.1f);
    EXPECT_EQ(note(), 25);
    window->wheel(key, middle, -2.0f);
    EXPECT_EQ(note(), 24);
    engine.set(keyMin, 0.5f);
    passes();
    window->drag(key, middle, middle.translated(0, -25), TestWindow::leftButton + TestWindow::shift);
    EXPECT_NEAR(engine.get(keyMin), 0.51f, 1e-5f);

    window->click(key, TestWindow::rightButton);
    const auto texts = window->menuTexts();
    EXPECT_EQ(texts[0] + texts[1], "(Layer1 Keyboard Range Min)(E3)");
    ASSERT_TRUE(window->chooseFromMenu("Increase"));
    EXPECT_EQ(note(), 65);
}

TEST_F(NumberBoxTest, TransposeStepsBySemitonesWithinTheRange)
{
    auto& box = *window->find<juce::Slider>(layerParameter(0, layerSlot::transpose));
    const auto semitones = [this] { return paramToInt(engine.getLayer(0, layerSlot::transpose), -24, 24); };

    // Every step counts, though most fractions of 48 aren't exact.
    for (int wanted = 1; wanted <= 25; ++wanted)
    {
        window->click(button("Transpose up"));
        EXPECT_EQ(semitones(), std::min(wanted, 24));
    }

    passes();
    box.grabKeyboardFocus();

    for (int wanted = 23; wanted >= -25; --wanted)
    {
        window->key(juce::KeyPress::downKey);
        EXPECT_EQ(semitones(), std::max(wanted, -24));
        EXPECT_EQ(text(box), juce::String(std::max(wanted, -24)));
    }

    window->click(button("Transpose up"));
    window->click(button("Transpose down"));
    EXPECT_EQ(semitones(), -24);
    // The text takes no mouse: the drag goes through it, and shows what it does.
    engine.setLayer(0, layerSlot::transpose, 0.5f);
    passes();
    window->drag(box, {10, 8}, {10, -17});
    EXPECT_EQ(semitones(), 4);
    EXPECT_EQ(text(box), "4");
}

TEST_F(NumberBoxTest, ATempoCanBeTypedToTheFraction)
{
    auto& box = titled<juce::Slider>("Tempo");
    const auto bpm = [this] { return engine.processor.getTempo().bpm(); };
    const auto typed = [&](const juce::String& text)
    {
        type(box, text);
        passes();
        return bpm();
    };
    EXPECT_EQ(typed("98.5"), 98.5);
    EXPECT_EQ(text(box), "BPM 98.5");
    EXPECT_FALSE(box.hasKeyboardFocus(true)) << "The arrow keys are the presets' again";
    EXPECT_EQ(typed("fast"), 98.5) << "What is no number changes nothing";
    EXPECT_EQ(typed("9000"), 500.0);
    window->wheel(box, {20, 7}, -0.2f);
    EXPECT_EQ(bpm(), 499.0);
    window->click(box, TestWindow::rightButton);
    ASSERT_TRUE(window->chooseFromMenu("Halve"));
    EXPECT_EQ(bpm(), 249.5);
    EXPECT_FALSE(engine.processor.getSession().isEdited()) << "The tempo is no part of the preset";
}

} // namespace quorel::test
