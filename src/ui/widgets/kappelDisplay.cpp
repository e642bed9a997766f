// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/kappelDisplay.h"

#include "ui/widgets/WidgetTools.h"

#include <cmath>

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

} // namespace

kappelDisplay::kappelDisplay(juce::Rectangle<int> bounds, int parameterId, PluginProcessor& pluginProcessor)
    : KeyboardSurface(juce::AccessibilityRole::staticText)
    , processor(pluginProcessor)
    , parameter(parameterId)
{
    setUpControl(*this, "kappel", parameterId);
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

void kappelDisplay::setSteps(int from, int to, bool on)
{
    int mask = pattern();

    for (int step = juce::jmin(from, to); step <= juce::jmax(from, to); ++step)
        mask = on ? mask | 1 << step : mask & ~(1 << step);

    if (mask == pattern())
        return;

    // Half a step above the mask, so that no rounding on the way loses a bit.
    processor.setParameterFromUi(parameter, static_cast<float>((mask + 0.5) / 65536.0));
    repaint();
}

int kappelDisplay::stepAt(const juce::MouseEvent& event) const
{
    return static_cast<int>(std::floor(event.position.x / (cellStep * scale)));
}

void kappelDisplay::mouseDown(const juce::MouseEvent& event)
{
    const int step = stepAt(event);

    if (step < 0 || step >= steps || !event.mods.isLeftButtonDown())
        return;

    painting = Painting{step, (pattern() >> step & 1) == 0};
    processor.beginUserGesture(parameter);
    setSteps(step, step, painting->sets);
}

void kappelDisplay::mouseDrag(const juce::MouseEvent& event)
{
    if (!painting)
        return;

    // A fast mouse skips steps.
    const int step = juce::jlimit(0, steps - 1, stepAt(event));
    setSteps(painting->step, step, painting->sets);
    painting->step = step;
}

kappelDisplay::~kappelDisplay()
{
    endPainting();
}

void kappelDisplay::mouseUp(const juce::MouseEvent&)
{
    endPainting();
}

void kappelDisplay::endPainting()
{
    if (painting)
        processor.endUserGesture(parameter);

    painting.reset();
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
    setSteps(keyboardStepIndex, keyboardStepIndex, (pattern() >> keyboardStepIndex & 1) == 0);
    return true;
}

juce::String kappelDisplay::patternText() const
{
    juce::String text;
    for (int step = 0; step < steps; ++step)
        text += (pattern() >> step & 1) != 0 ? "x" : "-";
    return text;
}

} // namespace quorel
