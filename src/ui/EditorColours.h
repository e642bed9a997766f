// SPDX-License-Identifier: GPL-3.0-or-later
// Colours that several parts of the editor share.
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <array>

namespace quorel::colours
{

/** Headings, levels, and whatever the keyboard is at. */
inline const juce::Colour amber{0xffc38a00};
/** Ground of what is selected or can be pressed, and frames. */
inline const juce::Colour raised{0xff404040};
/** Ground of fields and displays. */
inline const juce::Colour sunken{0xff111112};

// Text. All of it has to have a contrast of 4.5:1 on its ground.

/** Names, values and whatever else the user sets. */
inline const juce::Colour brightText{0xffd3d3d3};
/** Captions, and rows of lists. */
inline const juce::Colour captionText{0xffb4b4b4};
/** Rows that can't be chosen, and what stands where nothing is chosen; not on `raised`. */
inline const juce::Colour quietText{0xff9c9c9c};

/** Curves of the EQ's bands. */
inline const std::array<juce::Colour, 3> eqBands{juce::Colour(0xff2bc900), juce::Colour(0xff1c8cd4),
                                                 juce::Colour(0xffc83ce0)};

} // namespace quorel::colours
