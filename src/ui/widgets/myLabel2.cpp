// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myLabel2.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{
namespace
{
constexpr float fontHeight = 12.0f;
} // namespace

myLabel2::myLabel2(juce::Rectangle<int> bounds, const juce::String& title, const juce::String& text,
                   juce::Colour textColour, juce::Colour backgroundColour)
    : juce::Label("myLabel2", text)
{
    setComponentID(juce::String(noParameter));
    setTitle(title);
    setBounds(bounds);
    setFont(juce::Font(fontHeight));
    setJustificationType(juce::Justification::centred);
    setColour(textColourId, textColour);
    setColour(backgroundColourId, backgroundColour);
}

} // namespace quorel
