// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

#include <cstdint>

namespace quorel
{
struct FxContext;

/** The cross-coupled pair of combs; positions and delays in 1/256 sample. */
struct CombState
{
    std::int32_t comb1Delay = 513, comb2Delay = 513;
    std::int32_t comb1Pos = 0, comb2Pos = 0;
    std::uint32_t comb1PhaseInc = 0, comb2PhaseInc = 0, comb1Phase = 0, comb2Phase = 0;
    float comb1Gain = 0.0f, comb2Gain = 0.0f, comb1Depth = 0.0f, comb2Depth = 0.0f;
    float comb1Now = 0.0f, comb2Now = 0.0f;
};

// clang-format off
inline constexpr FxType combType{"Comb Filter", {{
    {"Freq 1", fxtext::hertz, 0.1f},
    {"Feed 1", fxtext::signedPercent, 0.75f, fxtext::bipolar},
    {"Mod Amt 1", fxtext::percent},
    {"Mod Spd 1", fxtext::lfoNote},
    {"Freq 2", fxtext::hertz, 0.75f},
    {"Feed 2", fxtext::signedPercent, 0.5f, fxtext::bipolar},
    {"Mod Amt 2", fxtext::percent},
    {"Mod Spd 2", fxtext::lfoNote},
}}};
// clang-format on

void combUpdate(CombState& f, FxContext& c);
void combProcess(CombState& f, FxContext& c, const float* x, const float* y, float* wetLeft, float* wetRight,
                 int num);
} // namespace quorel
