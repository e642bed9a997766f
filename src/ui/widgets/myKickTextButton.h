// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "resources/CBitmap.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** A push button that shows text of the first character set in the middle of a fill. Acts when the mouse goes
    down. */
class myKickTextButton : public juce::ImageButton
{
public:
    /** `glyphStrip` outlives the button. */
    myKickTextButton(juce::Rectangle<int> bounds, juce::Button::Listener* listener,
                     const juce::String& shownText, const CBitmap* glyphStrip, juce::Colour textColour,
                     juce::Colour backgroundColour);

    void setColours(juce::Colour textColour, juce::Colour backgroundColour);

protected:
    void paintButton(juce::Graphics& g, bool highlighted, bool down) override;

private:
    const CBitmap& strip;
    juce::Colour ink;
    juce::Colour fill;
};

} // namespace quorel
