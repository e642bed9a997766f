// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SoundWriter.h"

namespace quorel::bank
{

/** Sets name, position and knobs of a multi-control. Comes after everything else, because a target's base is
    where it stands when its knob is assigned. */
void setMultiControl(SoundWriter& sound, int group, const TextSection& section);

} // namespace quorel::bank
