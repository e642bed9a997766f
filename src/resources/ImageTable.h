// SPDX-License-Identifier: GPL-3.0-or-later
// The built-in images as files in memory, found by name.
#pragma once

#include "resources/ImageList.h"

#include <cstddef>
#include <juce_core/juce_core.h>

namespace quorel
{

/** Bytes of the program's own read-only data. */
struct BuiltInBytes
{
    const void* data = nullptr;
    size_t size = 0;
};

/** Names of all images, in the order of `imageList`. */
const juce::StringArray& imageNames();

/** The form in which names are kept: lower case, blanks and points as "_", anything else but letters, digits
    and "_" left out. So "key Edit.png" and "key_Edit_png" are one name. */
juce::String foldedImageName(const juce::String& name);

/** Row of an image, or -1. The name is folded first. */
int imageRowOf(const juce::String& name);

/** The PNG or JPEG file of a row, 0 to `numImages` - 1. */
BuiltInBytes imageFile(int row);

/** Number of PNG files that make up the double-resolution image of a row. A film has one for every
    `framesPerDoubleTile` frames, side by side, so that only those near shown frames need decoding; any other
   image is in one piece; an image that isn't drawn at double resolution has none. */
int numDoubleTiles(int row);

/** One of these files. */
BuiltInBytes doubleTileFile(int row, int tile);

} // namespace quorel
