// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myButton.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{

myButton::myButton(juce::Rectangle<int> bounds, juce::Button::Listener* listener,
                   const CBitmap* twoStateImage, PluginProcessor&)
    : TwoStateButton(bounds, listener, "button", noParameter, twoStateImage)
{
}

} // namespace quorel
