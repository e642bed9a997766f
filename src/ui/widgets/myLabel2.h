// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Plain text of 12 points in colours of its own. */
class myLabel2 : public juce::Label
{
public:
    /** `title` is for screen readers. */
    myLabel2(juce::Rectangle<int> bounds, const juce::String& title, const juce::String& text,
             juce::Colour textColour, juce::Colour backgroundColour);
};

} // namespace quorel
