// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/Dynamics.h"

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

/** `units` are the three that run in parallel. */
void hqReverbUpdate(HqReverbState& f, ReverbUnit* units, FxContext& c);
void hqReverbProcess(HqReverbState& f, ReverbUnit* units, FxContext& c, const float* x, const float* y,
                     float* wetLeft, float* wetRight, int num);
} // namespace quorel
