// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/ReadoutBox.h"

#include "parameters/ParameterCodings.h"
#include "ui/widgets/ParameterAccessibility.h"
#include "ui/widgets/WidgetTools.h"

#include <cmath>

namespace quorel
{

juce::String noteName(int note)
{
    static constexpr const char* names[] = {"C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"};
    note = juce::jlimit(0, 127, note);
    return names[note % 12] + juce::String(note / 12 - 2);
}

ReadoutBox::ReadoutBox(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, const char* kind,
                       int parameterId, const CBitmap* backgroundImage, float fontHeight,
                       int labelWidthAdjust, PluginProcessor& pluginProcessor)
    : juce::Slider(RotaryVerticalDrag, NoTextBox)
    , processor(pluginProcessor)
    , parameter(parameterId)
    , image(backgroundImage)
{
    setUpControl(*this, kind, parameterId);
    setWantsKeyboardFocus(true);
    setRange(0.0, 1.0);
    setBounds(boundsOnImage(bounds, image, 1));

    label.setFont(juce::Font(fontHeight, juce::Font::bold));
    label.setJustificationType(juce::Justification::centred);
    label.setInterceptsMouseClicks(false, false);
    label.setAccessible(false);
    label.setBounds(getLocalBounds().withWidth(getWidth() + labelWidthAdjust));
    addAndMakeVisible(label);

    if (listener != nullptr)
        addListener(listener);
}

int ReadoutBox::numberOf(float value) const noexcept
{
    return paramToInt(value, minimum, maximum);
}

void ReadoutBox::update(float value)
{
    const float limited = clampUnit(value);
    setValue(static_cast<double>(limited), juce::dontSendNotification);
    label.setText(textOf(numberOf(limited)), juce::dontSendNotification);
}

void ReadoutBox::valueChanged()
{
    label.setText(textOf(numberOf(static_cast<float>(getValue()))), juce::dontSendNotification);
}

void ReadoutBox::paint(juce::Graphics& g)
{
    if (image != nullptr)
        image->paint(g, getLocalBounds().toFloat());
}

double ReadoutBox::numberStep() const noexcept
{
    return maximum == minimum ? 1.0 : 1.0 / std::abs(maximum - minimum);
}

bool ReadoutBox::keyPressed(const juce::KeyPress& key)
{
    const int direction = arrowDirection(key);
    if (direction != 0)
    {
        // The middle of the next number's range, so that rounding can't lead to a neighbour.
        const int next = numberOf(static_cast<float>(getValue())) + direction;
        moveSlider(*this, juce::jlimit(0.0, 1.0, (next - minimum + 0.5) * numberStep()));
    }
    return direction != 0;
}

juce::String ReadoutBox::getTextFromValue(double value)
{
    return textOf(numberOf(static_cast<float>(value)));
}

std::unique_ptr<juce::AccessibilityHandler> ReadoutBox::createAccessibilityHandler()
{
    return makeSliderAccessibility(*this, parameter, processor, numberStep());
}

} // namespace quorel
