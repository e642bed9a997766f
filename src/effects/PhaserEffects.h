// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxSlot;

/** Fields of "Phaser" and "Ana. Phaser". Stage states are left, right and two unused lanes side by side. */
struct PhaserFields
{
    static constexpr int mostStages = 9;

    float phaserGainL = 0.0f, phaserGainR = 0.0f, phaserPanDepth = 0.0f, phaserCoef = 0.0f;
    float phaserFeedback = 0.0f, phaserPitch = 0.0f, phaserWidth = 0.0f, phaserQ = 0.5f;
    std::int32_t phaserSpread = 0; ///< delay of the left wet signal, samples
    std::int32_t phaserStages = 1; ///< one more than there are all-passes
    std::uint32_t phaserInc = 0, phaserPhase = 0;
    float apA1 = 0.0f, apA2 = 0.0f, apB0 = 0.0f;
    float phaserLast[4] = {}; ///< output of the last stage, fed back
    float phaserX1[mostStages][4] = {}, phaserX2[mostStages][4] = {};
    float phaserY1[mostStages][4] = {}, phaserY2[mostStages][4] = {};
};

void auxRingClear(FxSlot& slot);
void phaserUpdate(FxSlot& slot);
void phaserProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void anaPhaserUpdate(FxSlot& slot);
void anaPhaserProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
} // namespace quorel
