// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/BitmapLabel.h"

namespace quorel
{

/** Text of the first character set on nothing, from the top left corner. */
class myLabelB : public BitmapLabel
{
public:
    myLabelB(juce::Rectangle<int> bounds, const juce::String& text, const CBitmap* glyphStrip);

    void paint(juce::Graphics& g) override;
};

} // namespace quorel
