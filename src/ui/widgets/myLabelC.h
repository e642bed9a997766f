// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/BitmapLabel.h"

namespace quorel
{

/** Text of the first character set in the middle of a fill. */
class myLabelC : public BitmapLabel
{
public:
    myLabelC(juce::Rectangle<int> bounds, const juce::String& text, const CBitmap* glyphStrip,
             juce::Colour textColour, juce::Colour backgroundColour);

    /** Shows itself in this width alone, from the left edge: where labels overlap, they can stand apart. */
    void setShownWidth(int width);

    void paint(juce::Graphics& g) override;

private:
    int shownWidth;
};

} // namespace quorel
