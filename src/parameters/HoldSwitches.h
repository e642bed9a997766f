// SPDX-License-Identifier: GPL-3.0-or-later
// Hold switches of the multi-control knobs: a held knob stands at its centre, so that its target stays at its
// base whatever the fader does, and returns to where it stood when it is let go. The position remembered is a
// parameter, and so part of the preset. Any thread, one at a time for a knob.
#pragma once

#include "parameters/ParameterAccess.h"

namespace quorel
{

/** True while knob `t`, 0 to 15, is held. False for any other number. */
bool isHeld(const ParameterAccess& parameters, int t) noexcept;

/** Holds knob `t`, 0 to 15, or lets it go, as a gesture of the user. Does nothing if it is so already, or for
    any other number. */
void setHold(ParameterAccess& parameters, int t, bool on);

} // namespace quorel
