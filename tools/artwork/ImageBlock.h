// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel::artwork
{

/** Draws all images of the list and packs their files into one block, in the form that
    src/resources/BuiltInData.h states. With a folder, the files are written there too, those of double
    resolution under "2x". Throws `std::runtime_error` for an image that no painter knows, and for a folder
    that can't be written to. */
juce::MemoryBlock drawImageBlock(const juce::File& looseFolder);

} // namespace quorel::artwork
