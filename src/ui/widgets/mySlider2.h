// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/FilmSlider.h"

namespace quorel
{

/** A vertical fader: its cap goes to the mouse, or, with Shift held, follows it finely from where it is. */
class mySlider2 : public FilmSlider
{
public:
    mySlider2(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, int parameterId,
              const CBitmap* faderFilm, int numFrames, PluginProcessor& pluginProcessor);

    void mouseDown(const juce::MouseEvent& event) override;
    void paint(juce::Graphics& g) override;
};

} // namespace quorel
