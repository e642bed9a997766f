// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ParameterListLook.h"

#include "ui/EditorColours.h"

namespace quorel
{

namespace
{
const juce::Colour ground{0xff242528};
const juce::Colour dimAmber{0xff6a500f};
} // namespace

ParameterListLook::ParameterListLook()
    : LookAndFeel_V4({ground, colours::sunken, juce::Colours::black, colours::raised, colours::brightText,
                      colours::amber, juce::Colours::white, dimAmber, colours::brightText})
{
    setColour(juce::Slider::trackColourId, colours::amber);
    setColour(juce::Slider::thumbColourId, colours::brightText);
    setColour(juce::ScrollBar::thumbColourId, juce::Colours::grey);
    setColour(juce::ToggleButton::tickColourId, colours::amber);
}

} // namespace quorel
