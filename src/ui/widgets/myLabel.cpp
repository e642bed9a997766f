// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myLabel.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{

myLabel::myLabel(juce::Rectangle<int> bounds, const juce::String& text)
    : juce::Label("myLabel", text)
{
    setComponentID(juce::String(noParameter));
    setBounds(bounds);
    setFont(juce::Font(static_cast<float>(getHeight()), juce::Font::bold));
    setJustificationType(juce::Justification::centred);
    setBorderSize({});
}

} // namespace quorel
