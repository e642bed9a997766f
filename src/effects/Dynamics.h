// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxContext;

struct CompressorState
{
    float env[2] = {}, peak[2] = {}, gain[2] = {1.0f, 1.0f};
    float thresholdLin = 1.0f, thresholdDb = 0.0f;
    float attack = 0.0f, release = 0.0f; ///< one-pole coefficients
    float slope = 0.0f, post = 0.0f;
    float lookL[256] = {}, lookR[256] = {};
};

/** A gate's states are 1 closed, 2 opening, 3 holding, 4 decaying. HQ Reverb's gate uses index 0. */
struct GateState
{
    float threshold = 0.0f, attackStep = 0.0f, holdSamples = 0.0f, decayStep = 0.0f;
    float env[2] = {}, gain[2] = {}, hold[2] = {};
    std::int32_t state[2] = {1, 1};
};

void compressorUpdate(CompressorState& f, FxContext& c);
void compressorProcess(CompressorState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                       float* wetRight, int num);
void noiseGateUpdate(GateState& f, FxContext& c);
void noiseGateProcess(GateState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                      float* wetRight, int num);

/** Gates both channels in place by the louder one. */
void gateLinked(GateState& gate, float* left, float* right, int num);
} // namespace quorel
