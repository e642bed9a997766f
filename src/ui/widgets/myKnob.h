// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/FilmSlider.h"

namespace quorel
{

/** A knob, dragged up and down. Its film has square frames, stretched to the knob's bounds. While disabled it
    takes no mouse input at all. */
class myKnob : public FilmSlider
{
public:
    myKnob(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, int parameterId,
           const CBitmap* knobFilm, PluginProcessor& pluginProcessor);

    void paint(juce::Graphics& g) override;
};

} // namespace quorel
