// SPDX-License-Identifier: GPL-3.0-or-later
// The built-in images as files in memory, found by name.
#pragma once

#include "platform/PlatformSeamData.h"
#include "resources/ImageList.h"

#include <cstddef>
#include <juce_core/juce_core.h>

namespace quorel
{

/** Names of all images, in the order of `imageList`. */
const juce::StringArray& imageNames();

/** The form in which names are stored: lower case, blanks and full stops as "_", all else but letters, digits
    and "_" left out. So "key Edit.png" and "key_Edit_png" are one name. */
juce::String foldedImageName(const juce::String& name);

/** Row of an image, or -1. The name is folded first. */
int imageRowOf(const juce::String& name);

/** The PNG or JPEG file of a row, 0 to `numImages` - 1. */
BuiltInBytes imageFile(int row);

/** Pixels to a layout pixel. */
enum class Resolution
{
    single,
    doubled
};

/** Number of PNG files that a row's image is drawn from. A film has one for every `framesPerTile` frames,
    side by side, so that only those near shown frames need decoding. Any other image has itself at single
    resolution, and at double resolution one file, or none if it isn't drawn there. */
int numTiles(int row, Resolution resolution);

/** One of these files. */
BuiltInBytes tileFile(int row, Resolution resolution, int tile);

} // namespace quorel
