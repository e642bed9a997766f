// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "resources/CBitmap.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** An image, and nothing else. */
class myPicture : public juce::Component
{
public:
    /** `shownImage` outlives the picture. */
    myPicture(juce::Rectangle<int> bounds, const CBitmap* shownImage);

    void paint(juce::Graphics& g) override;

private:
    const CBitmap* image;
};

} // namespace quorel
