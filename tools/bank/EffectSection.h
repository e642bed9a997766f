// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SoundWriter.h"

namespace quorel::bank
{

/** Switches a block on with the type and values of its section. Parameters that it doesn't name rest. */
void setEffect(SoundWriter& sound, int block, const TextSection& section);

} // namespace quorel::bank
