// SPDX-License-Identifier: GPL-3.0-or-later
// Text in a bitmap font: a strip of 40 glyphs, one under the other, each a mask for the current colour.
#pragma once

#include "resources/CBitmap.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** The two orders of the glyphs: the first has no digit 9. */
enum class GlyphSet
{
    first,
    second
};

/** Row of a character's glyph, upper and lower case alike. A character outside the set has the row of a
    stand-in; the blank has -1: it draws nothing, but takes up room. */
int glyphRow(GlyphSet set, juce::juce_wchar character);

/** Height of a glyph of a strip. */
int glyphHeight(const CBitmap& strip);

/** Size of a text as `drawBitmapText` draws it. */
juce::Point<int> bitmapTextSize(const CBitmap& strip, const juce::String& text);

/** Draws a text of the first set with its top left corner at `position`. */
void drawBitmapText(juce::Graphics& g, const CBitmap& strip, const juce::String& text,
                    juce::Point<int> position);

/** Fills `box` and draws a text of the first set in its middle. */
void drawBitmapTextBox(juce::Graphics& g, const CBitmap& strip, const juce::String& text,
                       juce::Rectangle<int> box, juce::Colour textColour, juce::Colour backgroundColour);

/** Draws a text of the second set in cells of 8 by 9 pixels, from the top left corner. */
void drawBitmapCells(juce::Graphics& g, const CBitmap& strip, const juce::String& text);

} // namespace quorel
