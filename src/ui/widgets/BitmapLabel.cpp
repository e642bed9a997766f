// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/BitmapLabel.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{

BitmapLabel::BitmapLabel(juce::Rectangle<int> bounds, const juce::String& text, const CBitmap* glyphStrip)
    : juce::Label("myLabel", text)
    , strip(*glyphStrip)
{
    setComponentID(juce::String(noParameter));
    setBounds(bounds);
}

} // namespace quorel
