// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

void combUpdate(CombState& f, FxContext& c);
void combProcess(CombState& f, FxContext& c, const float* x, const float* y, float* wetLeft, float* wetRight,
                 int num);
} // namespace quorel
