// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel::artwork
{

/** The program's icon, `size` pixels wide and high: the word mark's first letter on a plate. */
juce::Image drawProgramIcon(int size);

/** The icon of a preset file: a sheet of paper with the program's icon on it. */
juce::Image drawDocumentIcon(int size);

/** All of `iconSizes` side by side, as a PNG file. */
juce::MemoryBlock programIcons();

} // namespace quorel::artwork
