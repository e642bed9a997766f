// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

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

// clang-format off
inline constexpr FxType flangerType{"Flanger", {{
    {"Length", fxtext::upTo50Ms, 0.15f},
    {"Width", fxtext::percent, 1.0f},
    // Runs at half the rate shown when it is free.
    {"Speed", fxtext::lfoSpeed(3), 0.43f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
    {"Feedback", fxtext::signedPercent, 0.91f, fxtext::bipolar},
    {"Pan", fxtext::percent},
    // A one-pole: its corner is lower than the text, at 3.2 Hz x 2^(11 p).
    {"LP Filter", fxtext::hertz, 0.92f},
    {"HP Filter", fxtext::hertz, 0.19f},
}}};

inline constexpr FxType tapeFlangerType{"Tape Flanger", flangerType.parameters};
// clang-format on

void flangerUpdate(FlangerState& f, FxContext& c);
void flangerProcess(FlangerState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
void tapeFlangerUpdate(FlangerState& f, FxContext& c);
void tapeFlangerProcess(FlangerState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                        float* wetRight, int num);
} // namespace quorel
