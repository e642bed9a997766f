// SPDX-License-Identifier: GPL-3.0-or-later
// Metal, glass and light: what everything is made of. The one light comes from straight above, so upper edges
// of what stands out are bright and its lower ones dark, and the other way round for what is sunk in.
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel::artwork
{

using Rect = juce::Rectangle<float>;

juce::Path roundedRect(Rect area, float radius);

/** Fills with a gradient from top to bottom of the area. */
void fillShaded(juce::Graphics& g, const juce::Path& shape, Rect area, juce::Colour top, juce::Colour bottom);

/** Horizontally brushed metal: lines that differ by next to nothing, cheap to store. */
void brushed(juce::Graphics& g, Rect area, juce::Colour top, juce::Colour bottom, float strength);

/** A plate that stands out from the ground, with a shadow below it. */
void raisedPlate(juce::Graphics& g, Rect area, float radius, juce::Colour top, juce::Colour bottom);

/** A flat area sunk into the ground a little, for a group of controls. */
void inset(juce::Graphics& g, Rect area, float radius);

/** A window of dark glass, for read-outs and lists. */
void glass(juce::Graphics& g, Rect area, float radius = 2.0f);

/** A line cut into metal: across (height 0) or down (width 0). */
void groove(juce::Graphics& g, juce::Point<float> from, juce::Point<float> to);

/** A hexagon socket screw. */
void screw(juce::Graphics& g, juce::Point<float> centre, float radius);

} // namespace quorel::artwork
