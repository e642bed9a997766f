// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/MenuBox.h"

namespace quorel
{

/** A menu without a parameter. */
class myMenu1 : public MenuBox
{
public:
    myMenu1(juce::Rectangle<int> bounds, juce::ComboBox::Listener* listener);
};

} // namespace quorel
