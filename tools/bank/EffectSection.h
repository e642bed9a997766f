// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SoundWriter.h"

namespace quorel::bank
{

/** Switches a block on with the type and the values that its section names; what it doesn't name rests. */
void setEffect(SoundWriter& sound, int block, const TextSection& section);

} // namespace quorel::bank
