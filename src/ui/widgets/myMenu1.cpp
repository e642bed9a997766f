// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myMenu1.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{

myMenu1::myMenu1(juce::Rectangle<int> bounds, juce::ComboBox::Listener* listener)
    : MenuBox(bounds, listener, "menu", noParameter, nullptr)
{
}

} // namespace quorel
