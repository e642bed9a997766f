// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/Dynamics.h"
#include "effects/FxTypes.h"

#include <cstdint>

namespace quorel
{
struct FxContext;
struct ReverbUnit;

struct HqReverbState
{
    std::int32_t preDelaySamples = 1; ///< at most 65535
    std::int32_t spreadSamples = 0;   ///< at most 65535
    GateState gate;                   ///< both channels by its first half
};

// clang-format off
inline constexpr FxType hqReverbType{"HQ Reverb", {{
    // Half a millisecond more than shown.
    {"PreDelay", fxtext::preDelay, 0.69f},
    {"Size", fxtext::roomSize, 0.79f},
    {"Length", fxtext::reverbLength, 0.75f},
    {"Damp", fxtext::percent, 0.09f},
    {"Spread", fxtext::percent},
    // One-poles: their corners lie at a third of the text.
    {"LP Filter", fxtext::hertz, 0.97f},
    {"HP Filter", fxtext::hertz, 0.06f},
    // -60 to 0 dB in the sound.
    {"Gate Limit", fxtext::decibels(-40, 0)},
    {"Gate Hold", fxtext::time},
    {"Gate Decay", fxtext::time},
}}};
// clang-format on

/** `units` are the three that run in parallel. */
void hqReverbUpdate(HqReverbState& f, ReverbUnit* units, FxContext& c);
void hqReverbProcess(HqReverbState& f, ReverbUnit* units, FxContext& c, const float* x, const float* y,
                     float* wetLeft, float* wetRight, int num);
} // namespace quorel
