// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ChoiceButton.h"

#include "parameters/ParameterLayout.h"
#include "ui/EditorColours.h"

namespace quorel
{

namespace
{
constexpr float fontHeight = 12.0f;
constexpr int inset = 6;
constexpr float corner = 2.0f;
constexpr float signSize = 7.0f;
constexpr float crossWidth = 1.5f;
} // namespace

ChoiceButton::ChoiceButton(juce::Rectangle<int> bounds, juce::Button::Listener* listener,
                           const juce::String& caption, Sign shownSign)
    : juce::Button(caption)
    , sign(shownSign)
{
    setBounds(bounds);
    setComponentID(juce::String(noParameter));
    setTitle(caption);
    setTriggeredOnMouseDown(true);
    setMouseClickGrabsKeyboardFocus(false);
    setHasFocusOutline(true);
    addListener(listener);
    setChoice({});
}

void ChoiceButton::setChoice(const juce::String& choice)
{
    const auto shown = choice.isEmpty() ? getName() : getName() + ": " + choice;

    if (shown == text)
        return;

    text = shown;
    setTitle(text);
    repaint();
}

void ChoiceButton::paintButton(juce::Graphics& g, bool highlighted, bool down)
{
    auto box = getLocalBounds().toFloat();
    g.setColour(highlighted || down ? colours::raised.brighter(0.15f) : colours::raised);
    g.fillRoundedRectangle(box, corner);

    if (hasKeyboardFocus(true))
    {
        g.setColour(colours::amber);
        g.drawRoundedRectangle(box.reduced(0.5f), corner, 1.0f);
    }

    box.reduce(inset, 0);
    const auto place = box.removeFromRight(signSize).withSizeKeepingCentre(signSize, signSize);
    g.setColour(colours::brightText);

    if (sign == Sign::menu)
    {
        const auto half = place.reduced(0.0f, signSize / 4.0f);
        juce::Path triangle;
        triangle.addTriangle(half.getTopLeft(), half.getTopRight(), {half.getCentreX(), half.getBottom()});
        g.fillPath(triangle);
    }
    else
    {
        g.drawLine({place.getTopLeft(), place.getBottomRight()}, crossWidth);
        g.drawLine({place.getTopRight(), place.getBottomLeft()}, crossWidth);
    }

    g.setFont(fontHeight);
    g.drawText(text, box.withTrimmedRight(inset), juce::Justification::centredLeft);
}

} // namespace quorel
