// SPDX-License-Identifier: GPL-3.0-or-later
// Colours that several parts of the editor share.
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel::colours
{

/** Headings, levels, and whatever the keyboard is at. */
inline const juce::Colour amber{0xffc38a00};
/** Ground of what is selected or can be pressed, and frames. */
inline const juce::Colour raised{0xff404040};
/** Ground of fields and displays. */
inline const juce::Colour sunken{0xff111112};
inline const juce::Colour brightText{0xffd3d3d3};
inline const juce::Colour captionText{0xff969696};

} // namespace quorel::colours
