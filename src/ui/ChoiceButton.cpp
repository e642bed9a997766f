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
constexpr float triangleWidth = 7.0f;
constexpr float triangleHeight = 4.0f;
} // namespace

ChoiceButton::ChoiceButton(juce::Rectangle<int> bounds, juce::Button::Listener* listener,
                           const juce::String& caption)
    : juce::Button(caption)
{
    setBounds(bounds);
    setComponentID(juce::String(noParameter));
    setTitle(caption);
    setTriggeredOnMouseDown(true);
    setMouseClickGrabsKeyboardFocus(false);
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
    const auto sign = box.removeFromRight(triangleWidth).withSizeKeepingCentre(triangleWidth, triangleHeight);
    juce::Path triangle;
    triangle.addTriangle(sign.getTopLeft(), sign.getTopRight(), {sign.getCentreX(), sign.getBottom()});
    g.setColour(colours::brightText);
    g.fillPath(triangle);
    g.setFont(fontHeight);
    g.drawText(text, box.withTrimmedRight(inset), juce::Justification::centredLeft);
}

} // namespace quorel
