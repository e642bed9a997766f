// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SoundWriter.h"

namespace quorel::bank
{

/** Sets what a line of a layer's section names: range, strip, sends, EQ, switches. Lines that its instrument obeys
    have been read before: they are passed over. */
void setLayer(SoundWriter& sound, int layer, const TextLine& line);

} // namespace quorel::bank
