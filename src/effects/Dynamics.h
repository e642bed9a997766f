// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxSlot;

struct CompressorFields
{
    float compEnv[2] = {}, compPeak[2] = {}, compGain[2] = {1.0f, 1.0f};
    float compThresholdLin = 1.0f, compThresholdDb = 0.0f;
    float compAttack = 0.0f, compRelease = 0.0f; ///< one-pole coefficients
    float compSlope = 0.0f, compPost = 0.0f;
    float compLookL[256] = {}, compLookR[256] = {};
};

/** A gate's states are 1 closed, 2 opening, 3 holding, 4 decaying. HQ Reverb's gate uses index 0. */
struct GateFields
{
    float gateThreshold = 0.0f, gateAttackStep = 0.0f, gateHoldSamples = 0.0f, gateDecayStep = 0.0f;
    float gateEnv[2] = {}, gateGain[2] = {}, gateHold[2] = {};
    std::int32_t gateState[2] = {1, 1};
};

void compressorUpdate(FxSlot& slot);
void compressorProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                       int num);
void noiseGateUpdate(FxSlot& slot);
void noiseGateProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);

/** Gates both channels in place by the louder one. */
void gateLinked(GateFields& gate, float* left, float* right, int num);
} // namespace quorel
