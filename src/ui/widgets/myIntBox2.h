// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/ReadoutBox.h"

namespace quorel
{

/** A parameter as a whole number or as a note. */
class myIntBox2 : public ReadoutBox
{
public:
    /** The text is centred in the box's width plus `labelWidthAdjust` pixels. */
    myIntBox2(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, int parameterId,
              const CBitmap* backgroundImage, PluginProcessor& pluginProcessor, int labelWidthAdjust = 0);

    /** Shows note names, and takes them as well as numbers. */
    bool noteNames = false;

protected:
    juce::String textAt(double value) const override;
    std::optional<double> numberOfText(const juce::String& text) const override;
};

} // namespace quorel
