// SPDX-License-Identifier: GPL-3.0-or-later
// The small triangle by which a menu is known.
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel
{

/** Pixels that the mark takes at the right end of a menu's box. */
constexpr int menuMarkRoom = 11;

/** At the right end of a box; in the corner of a tall one, whose text starts at the top. */
void drawMenuMark(juce::Graphics& g, juce::Rectangle<int> box);

} // namespace quorel
