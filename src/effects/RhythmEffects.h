// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxSlot;

/** Fields of "AutoPan", "Tremelo" and "Kappel". */
struct RhythmFields
{
    float panAmount = 0.0f, panSmooth = 0.0f, panNow = 0.0f, panTarget = 0.0f;
    std::int32_t panWave = 0;
    std::uint32_t panPhase = 0, panInc = 0;

    float tremAmount = 0.0f, tremSmooth = 0.0f, tremNow = 0.0f, tremTarget = 0.0f;
    std::int32_t tremWave = 0;
    std::uint32_t tremPhase = 0, tremInc = 0;

    float kapStepRate = 0.0f, kapSpeedFactor = 0.0f, kapPosition = 0.0f;
    float kapSmoothC = 1.0f, kapSmoothK = 1.0f;
    float kapSwing = 0.5f, kapSwingA = 0.0f, kapSwingB = 0.0f;
    float kapMaskLeft = 0.0f, kapMaskRight = 0.0f; ///< the two patterns as they came, 16 bits / 65535.9
    std::int32_t kapStepCount = 0, kapSyncMode = 0, kapChannelMode = 0;
    float kapGainL = 0.0f, kapGainR = 0.0f, kapStepNowL = 0.0f, kapStepNowR = 0.0f;
    float kapStepsL[16] = {}, kapStepsR[16] = {}; ///< 0 or 1
};

void autoPanUpdate(FxSlot& slot);
void autoPanProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void tremeloUpdate(FxSlot& slot);
void tremeloProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void kappelUpdate(FxSlot& slot);
void kappelProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
} // namespace quorel
