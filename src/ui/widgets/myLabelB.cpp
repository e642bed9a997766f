// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myLabelB.h"

#include "ui/EditorColours.h"
#include "ui/widgets/BitmapText.h"

namespace quorel
{

myLabelB::myLabelB(juce::Rectangle<int> bounds, const juce::String& text, const CBitmap* glyphStrip)
    : BitmapLabel(bounds, text, glyphStrip)
{
}

void myLabelB::paint(juce::Graphics& g)
{
    g.setColour(colours::captionText);
    drawBitmapText(g, strip, getText(), {});
}

} // namespace quorel
