// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/BitmapLabel.h"

namespace quorel
{

/** Text of the second character set in small cells of one width. */
class myLabelFont : public BitmapLabel
{
public:
    myLabelFont(juce::Rectangle<int> bounds, const juce::String& text, const CBitmap* glyphStrip,
                juce::Colour textColour);

    void paint(juce::Graphics& g) override;
};

} // namespace quorel
