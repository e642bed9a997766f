// SPDX-License-Identifier: GPL-3.0-or-later
// The program's icon, for its windows.
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <array>
#include <vector>

namespace quorel
{

/** Edge lengths in pixels. */
constexpr std::array<int, 7> iconSizes{16, 24, 32, 48, 64, 128, 256};

/** The icon at each of these sizes, drawn for it. Decoded with each call. */
std::vector<juce::Image> windowIcons();

} // namespace quorel
