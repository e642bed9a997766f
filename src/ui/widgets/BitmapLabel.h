// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "resources/CBitmap.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** What the labels in a bitmap font have in common. */
class BitmapLabel : public juce::Label
{
public:
    /** `glyphStrip` outlives the label. */
    BitmapLabel(juce::Rectangle<int> bounds, const juce::String& text, const CBitmap* glyphStrip);

protected:
    const CBitmap& strip;
};

} // namespace quorel
