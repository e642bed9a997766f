// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SoundWriter.h"

namespace quorel::bank
{

/** Sets name, position and knobs of a multi-control. A target's base is where it stands when its knob is assigned, so
    this comes after all else. */
void setMultiControl(SoundWriter& sound, int group, const TextSection& section);

} // namespace quorel::bank
