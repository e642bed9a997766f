// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

#include <array>
#include <cstdint>

namespace quorel
{
struct FxContext;

/** "AutoPan" or "Tremelo" (spelt so): a gain that glides after an LFO. */
struct SweepState
{
    float amount = 0.0f, smooth = 0.0f, now = 0.0f, target = 0.0f;
    std::int32_t wave = 0;
    std::uint32_t phase = 0, inc = 0;
};

struct KappelState
{
    float stepRate = 0.0f, speedFactor = 0.0f, position = 0.0f;
    float smoothC = 1.0f, smoothK = 1.0f;
    float swing = 0.5f, swingA = 0.0f, swingB = 0.0f;
    float maskLeft = 0.0f, maskRight = 0.0f; ///< the two patterns as they came, 16 bits / 65535.9
    std::int32_t stepCount = 0, syncMode = 0, channelMode = 0;
    float gainL = 0.0f, gainR = 0.0f, stepNowL = 0.0f, stepNowR = 0.0f;
    float stepsL[16] = {}, stepsR[16] = {}; ///< 0 or 1
};

inline constexpr std::array kappelSides{"Left & Right", "Left only", "Right only"};
inline constexpr std::array kappelSyncs{"Off", "On", "Auto"};

// clang-format off
inline constexpr FxType autoPanType{"AutoPan", {{
    {"Wave", fxtext::choice(fxtext::lfoWaves)},
    {"Amount", fxtext::percent, 1.0f},
    {"Smooth", fxtext::noText},
    // Takes "Amount" for its sync; when free it runs at half the rate shown.
    {"Speed", fxtext::autoPanSpeed, 0.48f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
}}};

inline constexpr FxType tremeloType{"Tremelo", {{
    {"Wave", fxtext::choice(fxtext::lfoWaves)},
    {"Amount", fxtext::percent, 1.0f},
    {"Smooth", fxtext::noText},
    // Runs at half the rate shown when it is free.
    {"Speed", fxtext::lfoSpeed(4), 0.48f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
}}};

inline constexpr FxType kappelType{"Kappel", {{
    {"Speed", fxtext::lfoNote, 0.46f},
    {"Smooth", fxtext::percent, 0.7f},
    {"Mode", fxtext::choice(kappelSides)},
    {"Sync", fxtext::choice(kappelSyncs)},
    {"Swing", fxtext::percent},
}}};
// clang-format on

void sweepUpdate(SweepState& f, FxContext& c);
void autoPanProcess(SweepState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
void tremeloProcess(SweepState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
void kappelUpdate(KappelState& f, FxContext& c);
void kappelProcess(KappelState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                   float* wetRight, int num);
} // namespace quorel
