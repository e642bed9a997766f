// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel::artwork
{

/** The image as a PNG file, as small as trying gets it: 8 bits a channel, without alpha where all pixels are
    opaque, with a palette where 256 colours do; one filter for all rows or the best for each, whichever
    comes out smaller. */
juce::MemoryBlock pngOf(const juce::Image& image);

} // namespace quorel::artwork
