// SPDX-License-Identifier: GPL-3.0-or-later
// What a painter gets: one frame of one image, in layout pixels.
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel::artwork
{

/** A frame to be drawn. The context counts in layout pixels from the frame's top left at any resolution. */
struct Canvas
{
    juce::Graphics& g;
    /** Folded name of the image, without its ending. */
    juce::String name;
    int width;
    int height;
    /** 0 to `frames` - 1. */
    int frame;
    int frames;

    juce::Rectangle<float> bounds() const { return {static_cast<float>(width), static_cast<float>(height)}; }

    /** Lower state of a two-state image. */
    bool isDown() const { return frame == 1; }

    /** Position of a film, 0 to 1. */
    float value() const { return static_cast<float>(frame) / static_cast<float>(juce::jmax(1, frames - 1)); }
};

// One painter to a subject. Each returns false for an image that isn't its own.

bool paintKnob(const Canvas& canvas);
bool paintFader(const Canvas& canvas);
bool paintHeaderButton(const Canvas& canvas);
bool paintSwitch(const Canvas& canvas);
bool paintReadout(const Canvas& canvas);
bool paintPage(const Canvas& canvas);
bool paintBackPanel(const Canvas& canvas);
bool paintStripPanel(const Canvas& canvas);
bool paintBitmapFont(const Canvas& canvas);
bool paintInstrumentIcon(const Canvas& canvas);
bool paintOrnament(const Canvas& canvas);

} // namespace quorel::artwork
