// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myPicture.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{

myPicture::myPicture(juce::Rectangle<int> bounds, const CBitmap* shownImage)
    : image(shownImage)
{
    setComponentID(juce::String(noParameter));
    setAccessible(false);
    setBounds(boundsOnImage(bounds, image, 1));
}

void myPicture::paint(juce::Graphics& g)
{
    g.setOpacity(1.0f);
    image->paint(g, getLocalBounds().toFloat());
}

} // namespace quorel
