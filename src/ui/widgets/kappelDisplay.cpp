// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/kappelDisplay.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{
namespace
{
constexpr int steps = 16;
constexpr float cellStep = 10.0f;
constexpr float cellSpan = 9.0f;
constexpr float cellHeight = 12.0f;
constexpr int frameWidth = 2;
const juce::Colour onColour{0xffb58308};
const juce::Colour offColour{0xff000000};
const juce::Colour frameColour{0xff000000};

/** The steps as text, "x" for one that is on. */
class PatternText : public juce::AccessibilityTextValueInterface
{
public:
    explicit PatternText(const kappelDisplay& row)
        : display(row)
    {
    }

    bool isReadOnly() const override { return true; }

    juce::String getCurrentValueAsString() const override
    {
        juce::String text;
        for (int step = 0; step < steps; ++step)
            text += (display.pattern() >> step & 1) != 0 ? "x" : "-";
        return text;
    }

    void setValueAsString(const juce::String&) override {}

private:
    const kappelDisplay& display;
};

} // namespace

kappelDisplay::kappelDisplay(juce::Rectangle<int> bounds, int parameterId, PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
    , parameter(parameterId)
{
    setUpControl(*this, "kappel", parameterId);
    setWantsKeyboardFocus(true);
    setBounds(bounds);
}

int kappelDisplay::pattern() const
{
    // The effect unpacks its steps with the same factor.
    return static_cast<int>(static_cast<double>(processor.readParameter(parameter)) * 65535.9);
}

void kappelDisplay::paint(juce::Graphics& g)
{
    const int mask = pattern();
    for (int step = 0; step < steps; ++step)
    {
        const float x = cellStep * scale * static_cast<float>(step);
        const int left = static_cast<int>(x);
        const juce::Rectangle<int> cell(left, 0, static_cast<int>(x + cellSpan * scale - 1.0f) - left,
                                        static_cast<int>(cellHeight * scale));
        const bool chosen = hasKeyboardFocus(false) && step == keyboardStepIndex;
        g.setColour(chosen ? findColour(juce::Label::textColourId) : frameColour);
        g.fillRect(cell);
        g.setColour((mask >> step & 1) != 0 ? onColour : offColour);
        g.fillRect(cell.reduced(frameWidth));
    }
}

void kappelDisplay::turnStep(int step)
{
    // Half a step above the mask itself, so that no rounding on the way loses a bit.
    const double value = ((pattern() ^ (1 << step)) + 0.5) / 65536.0;
    processor.setParameterFromUi(parameter, static_cast<float>(value));
    repaint();
}

void kappelDisplay::mouseDown(const juce::MouseEvent& event)
{
    const int step = static_cast<int>(event.position.x / (cellStep * scale));
    if (step >= 0 && step < steps)
        turnStep(step);
}

bool kappelDisplay::keyPressed(const juce::KeyPress& key)
{
    const bool left = key == juce::KeyPress::leftKey;
    if (left || key == juce::KeyPress::rightKey)
    {
        keyboardStepIndex = juce::jlimit(0, steps - 1, keyboardStepIndex + (left ? -1 : 1));
        repaint();
        return true;
    }
    if (key != juce::KeyPress::spaceKey && key != juce::KeyPress::returnKey)
        return false;
    turnStep(keyboardStepIndex);
    return true;
}

void kappelDisplay::focusGained(FocusChangeType)
{
    repaint();
}

void kappelDisplay::focusLost(FocusChangeType)
{
    repaint();
}

std::unique_ptr<juce::AccessibilityHandler> kappelDisplay::createAccessibilityHandler()
{
    return std::make_unique<juce::AccessibilityHandler>(
        *this, juce::AccessibilityRole::staticText, juce::AccessibilityActions(),
        juce::AccessibilityHandler::Interfaces{std::make_unique<PatternText>(*this)});
}

} // namespace quorel
