// SPDX-License-Identifier: GPL-3.0-or-later
// Hold switches of the multi-control knobs: a held knob stands at its centre, so that its target stays at its
// base whatever the fader does, and comes back to where it stood when it is let go. The remembered position
// is a parameter and lives with the preset. Message thread.
#pragma once

#include "parameters/ParameterAccess.h"

namespace quorel
{

/** True while knob `t`, 0 to 15, is held. False for any other number. */
bool isHeld(const ParameterAccess& parameters, int t) noexcept;

/** Turns hold of knob `t`, 0 to 15, on or off, as a gesture of the user. Turning on what is on already, or
   off what is off, does nothing, and neither does any other number. */
void setHold(ParameterAccess& parameters, int t, bool on);

} // namespace quorel
