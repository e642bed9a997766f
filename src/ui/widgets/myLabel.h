// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Bold text, as high as its box, in the middle. */
class myLabel : public juce::Label
{
public:
    myLabel(juce::Rectangle<int> bounds, const juce::String& text);
};

} // namespace quorel
