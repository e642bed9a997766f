// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{
/** Impulse responses of "Amp Sim", in the order of its "Type" list. */
extern const float ampTaps[6][64];

/** Filters of "Cabinet": rows 0 to 3 "None", "Fender", "Marshall", "Off Axis" up to 80 kHz, 4 to 7 the same
    above. */
extern const float cabFeed[8][32];
extern const float cabBack[8][32];
extern const float cabGain[8];
} // namespace quorel
