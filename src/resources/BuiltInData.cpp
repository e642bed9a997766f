// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/BuiltInData.h"

namespace quorel
{

// The numbers are those of BuiltInData.rc.in.
QUOREL_BUILT_IN_FILE(imageBlock, 101, QUOREL_IMAGE_BLOCK_FILE)
QUOREL_BUILT_IN_FILE(regularFontFile, 102, QUOREL_REGULAR_FONT_FILE)
QUOREL_BUILT_IN_FILE(boldFontFile, 103, QUOREL_BOLD_FONT_FILE)
QUOREL_BUILT_IN_FILE(iconFile, 104, QUOREL_ICON_FILE)

} // namespace quorel
