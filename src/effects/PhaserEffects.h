// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

#include <cstdint>

namespace quorel
{
struct FxContext;

/** "Phaser" and "Ana. Phaser". Stage states are left, right and two unused lanes side by side. */
struct PhaserState
{
    static constexpr int mostStages = 9;

    float gainL = 0.0f, gainR = 0.0f, panDepth = 0.0f, coef = 0.0f;
    float feedback = 0.0f, pitch = 0.0f, width = 0.0f, q = 0.5f;
    std::int32_t spread = 0; ///< delay of the left wet signal, samples
    std::int32_t stages = 1; ///< one more than there are all-passes
    std::uint32_t inc = 0, phase = 0;
    float apA1 = 0.0f, apA2 = 0.0f, apB0 = 0.0f;
    float last[4] = {}; ///< output of the last stage, fed back
    float x1[mostStages][4] = {}, x2[mostStages][4] = {};
    float y1[mostStages][4] = {}, y2[mostStages][4] = {};
};

// clang-format off
inline constexpr FxType phaserType{"Phaser", {{
    {"Stages", fxtext::stages, 0.5f},
    // The all-passes turn at 4.8 Hz x 2^(11 p), and as far above as "Width" takes them.
    {"Pitch", fxtext::hertz, 0.53f},
    {"Feedback", fxtext::percent, 0.57f},
    {"Width", fxtext::percent, 0.85f},
    // Runs at half the rate shown when it is free.
    {"Speed", fxtext::lfoSpeed(5), 0.44f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
    {"Spread", fxtext::percent, 0.91f},
    {"Pan", fxtext::percent, 0.68f},
}}};

inline constexpr FxType anaPhaserType{"Ana. Phaser", {{
    {"Stages", fxtext::stages, 0.5f},
    // The middle of the sweep is 15 Hz x 2^(5 p).
    {"Pitch", fxtext::hertz, 0.53f},
    {"Feedback", fxtext::percent, 0.57f},
    {"Width", fxtext::percent, 0.85f},
    // Runs at half the rate shown when it is free.
    {"Speed", fxtext::lfoSpeed(5), 0.44f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
    // Does nothing: "Width" sets the length of the ring as well.
    {"Spread", fxtext::percent, 0.91f},
    {"Pan", fxtext::percent, 0.68f},
    {"Q", fxtext::percent},
}}};
// clang-format on

void phaserUpdate(PhaserState& f, FxContext& c);
void phaserProcess(PhaserState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                   float* wetRight, int num);
void anaPhaserUpdate(PhaserState& f, FxContext& c);
void anaPhaserProcess(PhaserState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                      float* wetRight, int num);
} // namespace quorel
