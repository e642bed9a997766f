// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel::artwork
{

/** An ARGB image as a small PNG file: 8 bits a channel, without alpha where all pixels are opaque, with a
    palette where 256 colours do. */
juce::MemoryBlock pngOf(const juce::Image& image);

} // namespace quorel::artwork
