// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

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

// clang-format off
inline constexpr FxType compressorType{"Compressor", {{
    {"Threshold", fxtext::decibels(-40, 0), 0.5f},
    // A dB over the threshold is lowered by 2^(7 p - 7) dB: by little, but at the end of the knob.
    {"Ratio", fxtext::ratio, 0.29f},
    // Time constants of 2^(7 p) ms and 2^(10 p) ms, not as shown.
    {"Attack", fxtext::envelope, 0.2f},
    {"Release", fxtext::envelope, 0.2f},
    {"Post-Boost", fxtext::decibels(-20, 20), 0.5f},
}}};

inline constexpr FxType noiseGateType{"Noise-Gate", {{
    {"Threshold", fxtext::decibels(-40, 0)},
    // 2^(8 p) ms; "Off" is 1 ms.
    {"Attack", fxtext::envelope},
    {"Hold", fxtext::time},
    {"Decay", fxtext::time},
}}};
// clang-format on

void compressorUpdate(CompressorState& f, FxContext& c);
void compressorProcess(CompressorState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                       float* wetRight, int num);
void noiseGateUpdate(GateState& f, FxContext& c);
void noiseGateProcess(GateState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                      float* wetRight, int num);

/** Gates both channels in place by the louder one. */
void gateLinked(GateState& gate, float* left, float* right, int num);
} // namespace quorel
