// SPDX-License-Identifier: GPL-3.0-or-later
// The files that the build puts into the program's read-only data.
#pragma once

#include "resources/ImageTable.h"

namespace quorel
{

/** All images in one block. It starts with the word "QART" and three 32-bit little-endian numbers: images
    (n), tiles (t), and the block's size. Then follow 6 n numbers: offset and size of the image's file, first
    tile and number of tiles at single and at double resolution; then 2 t numbers: offset and size of the
    tile's file. Offsets count from the start of the block. */
BuiltInBytes imageBlock() noexcept;

/** TrueType files of the editor's typeface. */
BuiltInBytes regularFontFile() noexcept;
BuiltInBytes boldFontFile() noexcept;

/** The program's icons side by side, as a PNG file. */
BuiltInBytes iconFile() noexcept;

} // namespace quorel
