// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myLabelFont.h"

#include "ui/widgets/BitmapText.h"

namespace quorel
{

myLabelFont::myLabelFont(juce::Rectangle<int> bounds, const juce::String& text, const CBitmap* glyphStrip,
                         juce::Colour textColour)
    : BitmapLabel(bounds, text, glyphStrip)
{
    setColour(textColourId, textColour);
}

void myLabelFont::paint(juce::Graphics& g)
{
    g.setColour(findColour(textColourId));
    drawBitmapCells(g, strip, getText());
}

} // namespace quorel
