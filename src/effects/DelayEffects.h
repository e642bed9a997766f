// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

#include <cstdint>

namespace quorel
{
struct FxContext;

/** Slow change of the delays' lengths. */
struct DelayModulation
{
    std::uint32_t phase = 0, rate = 0; ///< 24-bit LFO, a step every 16 samples
    float depth = 0.0f;
};

/** "Mono Delay" and "Stereo Delay". */
struct DelayState
{
    DelayModulation modulation;
    float lengthL = 0.0f, lengthR = 0.0f; ///< samples
    float targetL = 0.0f, targetR = 0.0f; ///< the same, modulated
    float smoothL = 0.0f, smoothR = 0.0f; ///< read distances
    float feedbackL = 0.0f, feedbackR = 0.0f, crossL = 0.0f, crossR = 0.0f;
    std::uint8_t crossOn = 0;
};

/** "Mono Tape Delay" and "Stereo Tape Delay"; the tape is the slot's. */
struct TapeDelayState
{
    DelayModulation modulation;
    float paramL = 0.0f, paramR = 0.0f; ///< length parameters
    float widen = 0.0f;                 ///< extra samples of the right channel
};

// clang-format off
inline constexpr FxType monoDelayType{"Mono Delay", {{
    {"Length", fxtext::delay(1), 0.54f},
    {"Sync", fxtext::halves(fxtext::offOn), 1.0f},
    {"Feedback", fxtext::signedPercent, 0.6f, fxtext::bipolar},
    // A one-pole: its corner is lower than the text, at 3.2 Hz x 2^(11 p), on tape at 6.4 Hz x 2^(10 p).
    {"LP Filter", fxtext::hertz, 0.92f},
    {"HP Filter", fxtext::hertz, 0.19f},
    {"Widen", fxtext::percent},
    {"Mod Amt", fxtext::percent},
    // Runs at twice the rate shown.
    {"Mod Speed", fxtext::lfoRate},
}}};

inline constexpr FxType stereoDelayType{"Stereo Delay", {{
    {"Left Delay", fxtext::delay(2), 0.67f},
    {"Right Delay", fxtext::delay(2), 0.57f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
    {"Feedback", fxtext::signedPercent, 0.69f, fxtext::bipolar},
    {"CrossFeed", fxtext::signedPercent, 0.5f, fxtext::bipolar},
    {"Feed Equal", fxtext::choice(fxtext::offOn), 1.0f},
    // A one-pole: its corner is lower than the text, at 3.2 Hz x 2^(11 p), on tape at 6.4 Hz x 2^(10 p).
    {"LP Filter", fxtext::hertz, 0.91f},
    {"HP Filter", fxtext::hertz, 0.19f},
    {"Mod Amt", fxtext::percent},
    // Runs at twice the rate shown.
    {"Mod Speed", fxtext::lfoRate},
}}};

inline constexpr FxType monoTapeDelayType{"Mono Tape Delay", monoDelayType.parameters};

inline constexpr FxType stereoTapeDelayType{"Stereo Tape Delay", stereoDelayType.parameters};
// clang-format on

void monoDelayUpdate(DelayState& f, FxContext& c);
void stereoDelayUpdate(DelayState& f, FxContext& c);
void delayProcess(DelayState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                  float* wetRight, int num);

void monoTapeDelayUpdate(TapeDelayState& f, FxContext& c);
void stereoTapeDelayUpdate(TapeDelayState& f, FxContext& c);
void tapeDelayProcess(TapeDelayState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                      float* wetRight, int num);
} // namespace quorel
