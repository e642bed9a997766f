// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

void phaserUpdate(PhaserState& f, FxContext& c);
void phaserProcess(PhaserState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                   float* wetRight, int num);
void anaPhaserUpdate(PhaserState& f, FxContext& c);
void anaPhaserProcess(PhaserState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                      float* wetRight, int num);
} // namespace quorel
