// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SoundWriter.h"

namespace quorel::bank
{

/** Sets what a line of a layer's section names: range, strip, sends, EQ or a switch. Passes over the lines
    for its instrument, which have been read before. */
void setLayer(SoundWriter& sound, int layer, const TextLine& line);

} // namespace quorel::bank
