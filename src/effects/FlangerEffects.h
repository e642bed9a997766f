// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxContext;

/** "Flanger" and "Tape Flanger". */
struct FlangerState
{
    float feedback = 0.0f, length = 0.0f, depth = 0.0f, panDepth = 0.0f;
    std::uint32_t phase = 0, inc = 0;
    float gainL = 0.0f, gainR = 0.0f;
};

void flangerUpdate(FlangerState& f, FxContext& c);
void flangerProcess(FlangerState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
void tapeFlangerUpdate(FlangerState& f, FxContext& c);
void tapeFlangerProcess(FlangerState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                        float* wetRight, int num);
} // namespace quorel
