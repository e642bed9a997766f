// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

#include <array>
#include <cstdint>

namespace quorel
{
struct FxContext;

struct RingModState
{
    std::int32_t type = 0;
    float amount = 0.0f, inc = 0.0f, phase = 0.0f;
};

struct DistortState
{
    float sat = 0.0f, rect = 0.0f, limit = 0.0f, post = 0.0f, tone = 0.0f;
    float modWheelAmt = 0.0f, emp = 0.0f;
};

struct MultiDistortState
{
    std::int32_t type = 0;
    float pre = 0.0f, amount1 = 0.0f, amount2 = 0.0f, normalize = 0.0f, post = 0.0f;
    float envInL = 0.0f, envInR = 0.0f, envOutL = 0.0f, envOutR = 0.0f;
};

struct LowFiState
{
    float levels = 1.0f, invLevels = 1.0f, cut = 0.0f, modWheelAmt = 0.0f, cutSmooth = 0.0f;
    float holdL = 0.0f, holdR = 0.0f;
    std::int32_t hold = 1; ///< samples that each one taken is held for
};

struct WaveshaperState
{
    float top = 0.0f, bottom = 0.0f, rect = 0.0f, low = 0.0f, modAmt = 0.0f;
    std::uint32_t phase = 0, inc = 0;
};

struct ClipperState
{
    float drive = 0.0f, upper = 0.0f, lower = 0.0f, post = 0.0f;
};

inline constexpr std::array ringWaves{"Sine", "Saw", "Sqr", "Tri", "L+R"};
inline constexpr std::array multiDistortTypes{"None",     "Atan",      "Cos",       "Cross",
                                              "Foldover", "Fuzz",      "Limiter",   "Overdrive",
                                              "Power",    "Rectifier", "Saturator", "Square"};

// clang-format off
inline constexpr FxType ringModType{"Ring-Mod", {{
    {"Type", fxtext::choice(ringWaves)},
    {"Freq", fxtext::hertz, 0.5f},
    {"Amount", fxtext::percent, 1.0f},
}}};

inline constexpr FxType distortType{"Distort", {{
    {"Limit", fxtext::percent, 0.88f},
    {"Rect", fxtext::signedPercent, 0.72f, fxtext::bipolar},
    {"Sat", fxtext::percent, 0.57f},
    {"Tone", fxtext::hertz, 0.46f},
    {"Emp", fxtext::percent, 0.81f},
    // -30 to +10 dB in the sound.
    {"Post-Boost", fxtext::boost, 0.28f},
    {"Mod Whl", fxtext::signedPercent, 0.5f, fxtext::bipolar},
}}};

inline constexpr FxType multiDistortType{"Multi Distort", {{
    {"Type", fxtext::choice(multiDistortTypes)},
    {"PreBoost", fxtext::decibels(-30, 30), 0.5f},
    {"Amount 1", fxtext::percent},
    {"Amount 2", fxtext::percent},
    {"Normalize", fxtext::percent},
    {"LP Filter", fxtext::hertz, 1.0f},
    {"HP Filter", fxtext::hertz},
    {"Post-Boost", fxtext::decibels(-30, 30), 0.5f},
}}};

inline constexpr FxType lowFiType{"Low Fi", {{
    {"Bits", fxtext::bits, 0.52f},
    // Of 44.1 kHz, whatever the rate.
    {"Sample", fxtext::heldRate, 0.95f},
    {"LP Filter", fxtext::hertz, 1.0f},
    {"Mod Whl", fxtext::signedPercent, 0.45f, fxtext::bipolar},
}}};

inline constexpr FxType waveshaperType{"Waveshaper", {{
    {"Top", fxtext::percent},
    {"Bottom", fxtext::percent},
    {"Rect", fxtext::signedPercent, 0.0f, fxtext::bipolar},
    {"Low", fxtext::hertz, 1.0f},
    {"Mod Amt", fxtext::percent},
    {"Mod Spd", fxtext::lfoNote},
}}};

inline constexpr FxType clipperType{"Clipper", {{
    {"Drive", fxtext::decibels(-30, 30), 0.5f},
    {"Tone", fxtext::hertz, 0.28f},
    {"Limit", fxtext::percent, 0.2f},
    {"Symmetry", fxtext::centredPercent, 0.5f, fxtext::bipolar},
    // A one-pole: its corner is lower than the text, at 3.2 Hz x 2^(11 p).
    {"LP Filter", fxtext::hertz, 1.0f},
    {"HP Filter", fxtext::hertz},
    {"Post-Boost", fxtext::decibels(-30, 30), 0.5f},
}}};
// clang-format on

void ringModUpdate(RingModState& f, FxContext& c);
void ringModProcess(RingModState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
void distortUpdate(DistortState& f, FxContext& c);
void distortProcess(DistortState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
void multiDistortUpdate(MultiDistortState& f, FxContext& c);
void multiDistortProcess(MultiDistortState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                         float* wetRight, int num);
void lowFiUpdate(LowFiState& f, FxContext& c);
void lowFiProcess(LowFiState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                  float* wetRight, int num);
void waveshaperUpdate(WaveshaperState& f, FxContext& c);
void waveshaperProcess(WaveshaperState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                       float* wetRight, int num);
void clipperUpdate(ClipperState& f, FxContext& c);
void clipperProcess(ClipperState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
} // namespace quorel
