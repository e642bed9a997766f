// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myLabelC.h"

#include "ui/widgets/BitmapText.h"

namespace quorel
{

myLabelC::myLabelC(juce::Rectangle<int> bounds, const juce::String& text, const CBitmap* glyphStrip,
                   juce::Colour textColour, juce::Colour backgroundColour)
    : BitmapLabel(bounds, text, glyphStrip)
    , shownWidth(bounds.getWidth())
{
    setColour(textColourId, textColour);
    setColour(backgroundColourId, backgroundColour);
}

void myLabelC::setShownWidth(int width)
{
    shownWidth = width;
    repaint();
}

void myLabelC::paint(juce::Graphics& g)
{
    drawBitmapTextBox(g, strip, getText(), getLocalBounds().withWidth(shownWidth), findColour(textColourId),
                      findColour(backgroundColourId));
}

} // namespace quorel
