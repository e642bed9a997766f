// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SoundWriter.h"

namespace quorel::bank
{

/** Sets the part of an EQ unit that the line names, and switches the unit on. False if it names none. */
bool setEq(SoundWriter& sound, int unit, const TextLine& line);

} // namespace quorel::bank
