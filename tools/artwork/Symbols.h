// SPDX-License-Identifier: GPL-3.0-or-later
// Small pictograms, drawn to fill a square.
#pragma once

#include "Surfaces.h"

namespace quorel::artwork
{

/** A loudspeaker, struck out when `muted`, with sound waves otherwise. */
void drawSpeaker(juce::Graphics& g, Rect area, juce::Colour colour, bool muted);

/** A quaver. */
void drawNote(juce::Graphics& g, Rect area, juce::Colour colour);

/** An open book, or a question mark in a circle. */
void drawBook(juce::Graphics& g, Rect area, juce::Colour colour, bool asQuestion);

/** A filled triangle that points left or right. */
void drawArrow(juce::Graphics& g, Rect area, juce::Colour colour, bool left);

/** A filled triangle that points down: a menu opens here. */
void drawMenuMark(juce::Graphics& g, Rect area, juce::Colour colour);

/** The maker's word mark, its capitals `height` high. Returns its width. */
float drawLogo(juce::Graphics& g, juce::Point<float> topLeft, float height, juce::Colour top,
               juce::Colour bottom, juce::Colour accent);

} // namespace quorel::artwork
