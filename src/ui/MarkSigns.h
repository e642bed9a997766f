// SPDX-License-Identifier: GPL-3.0-or-later
// The heart of a favourite and the star of a rating, as shapes that fill a box.
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel
{

inline juce::Path heartIn(juce::Rectangle<float> box)
{
    juce::Path heart;
    heart.startNewSubPath(0.5f, 1.0f);
    heart.cubicTo(-0.35f, 0.35f, 0.15f, -0.25f, 0.5f, 0.22f);
    heart.cubicTo(0.85f, -0.25f, 1.35f, 0.35f, 0.5f, 1.0f);
    heart.closeSubPath();
    heart.applyTransform(
        juce::AffineTransform::scale(box.getWidth(), box.getHeight()).translated(box.getX(), box.getY()));
    return heart;
}

inline juce::Path starIn(juce::Rectangle<float> box)
{
    constexpr int points = 5;
    constexpr float innerPart = 0.42f;
    const float outer = juce::jmin(box.getWidth(), box.getHeight()) * 0.5f;
    juce::Path star;
    star.addStar(box.getCentre(), points, outer * innerPart, outer);
    return star;
}

} // namespace quorel
