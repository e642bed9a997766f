// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

#include <array>
#include <cstdint>

namespace quorel
{
struct FilterCore;
struct FxContext;

/** Settings of "Filter", from which its core is set at the control rate. */
struct FilterState
{
    std::int32_t type = 0, wave = 0;
    float cutoff = 0.0f, q = 0.0f, vowel = 0.0f, lfoAmt = 0.0f, drive = 0.0f, modWheel = 0.0f;
    std::uint32_t phase = 0, lfoInc = 0;
};

struct BassState
{
    float pre = 0.0f, drive = 0.0f, post = 0.0f;
    float lpStateL = 0.0f, lpStateR = 0.0f; ///< of the second low-pass; the first one is the slot's
};

struct WahWahDelayState
{
    float low = 0.0f, high = 0.0f, smooth = 0.0f, res = 0.0f, now = 0.0f;
    float delay = 0.0f, delaySmooth = 0.0f, feed = 0.0f, volume = 0.0f;
    std::int32_t wave = 0;
    std::uint32_t phase = 0, inc = 0;
};

struct AutoWahState
{
    std::uint8_t band = 0; ///< 1 for the band-pass
    float low = 0.0f, high = 0.0f, sense = 0.0f, res = 0.0f, coef = 0.99609375f, env = 0.0f;
};

struct WidenerState
{
    float length = 0.0f, depth = 0.0f, rate = 0.0f, phase = 0.0f;
};

inline constexpr std::array vowels{"A", "E", "I", "O", "U"};
inline constexpr std::array wahTypes{"LowPass", "BandPass"};

// The control reaches one entry further than the filter core has types: the last one plays the ring again.
inline constexpr std::array filterTypes{
    "Bypass", "6 LP",  "6 HP",  "12 LP",  "12 HP",  "12 BP", "12 N",  "12 LP2", "12 HP2", "12 BP2",
    "12 N2",  "18 LP", "18 HP", "24 LP",  "24 HP",  "24 BP", "24 N",  "24 LP2", "24 HP2", "24 BP2",
    "24 N2",  "36 LP", "36 HP", "Comb +", "Comb -", "Vox",   "Form2", "Form4",  "Ring",   "Ring"};

// clang-format off
inline constexpr FxType widenerType{"Widener", {{
    {"Amount", fxtext::percent, 1.0f},
    {"Width", fxtext::percent, 0.24f},
    // Runs at twice the rate shown.
    {"Speed", fxtext::lfoRate, 0.31f},
    // A one-pole: its corner is lower than the text, at 3.2 Hz x 2^(11 p).
    {"LP Filter", fxtext::hertz, 0.92f},
    {"HP Filter", fxtext::hertz, 0.19f},
}}};

inline constexpr FxType filterType{"Filter", {{
    {"Type", fxtext::choice(filterTypes)},
    {"Distort", fxtext::percent},
    {"Frequency", fxtext::hertz, 0.5f},
    {"Q", fxtext::percent},
    {"Vowel", fxtext::choice(vowels)},
    {"Wave", fxtext::choice(fxtext::lfoWaves)},
    {"LFO Amt", fxtext::percent, 0.5f},
    // Runs at half the rate shown when it is free.
    {"LFO Spd", fxtext::lfoSpeed(8), 0.5f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
    {"Mod Whl", fxtext::centredPercent, 0.0f, fxtext::bipolar},
}}};

inline constexpr FxType bassType{"Bass", {{
    // A one-pole: its corner is at 6.4 Hz x 2^(5 p).
    {"Freq", fxtext::bassHertz, 0.75f},
    // 0 to +30 dB in the sound.
    {"PreBoost", fxtext::decibels(-30, 0), 0.5f},
    {"Distort", fxtext::percent},
    {"Post-Boost", fxtext::decibels(-30, 30), 0.5f},
}}};

inline constexpr FxType wahWahDelayType{"WahWah Delay", {{
    {"Low Freq", fxtext::hertz},
    {"High Freq", fxtext::hertz, 1.0f},
    {"Wave", fxtext::choice(fxtext::lfoWaves)},
    {"Smooth", fxtext::noText},
    // Runs at half the rate shown when it is free.
    {"Speed", fxtext::lfoSpeed(5), 0.48f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
    {"Res", fxtext::percent, 0.5f},
    {"Delay Len", fxtext::delayNote},
    {"Delay Feed", fxtext::percent},
    {"Delay Vol", fxtext::percent},
}}};

inline constexpr FxType autoWahType{"AutoWah", {{
    {"Type", fxtext::halves(wahTypes)},
    // 20 Hz to 20 kHz, as those of "WahWah Delay", but the text has always been in percent.
    {"Low Freq", fxtext::percent, 0.25f},
    {"High Freq", fxtext::percent, 1.0f},
    {"Amount", fxtext::percent, 0.5f},
    {"Q", fxtext::percent, 0.2f},
    {"Smooth", fxtext::percent, 0.25f},
}}};
// clang-format on

void filterUpdate(FilterState& f, FxContext& c);
void filterEffectProcess(FilterState& f, FilterCore& core, FxContext& c, const float* x, const float* y,
                         float* wetLeft, float* wetRight, int num);
void bassUpdate(BassState& f, FxContext& c);
void bassProcess(BassState& f, FxContext& c, const float* x, const float* y, float* wetLeft, float* wetRight,
                 int num);
void wahWahDelayUpdate(WahWahDelayState& f, FxContext& c);
void wahWahDelayProcess(WahWahDelayState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                        float* wetRight, int num);
void autoWahUpdate(AutoWahState& f, FxContext& c);
void autoWahProcess(AutoWahState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
void widenerUpdate(WidenerState& f, FxContext& c);
void widenerProcess(WidenerState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
} // namespace quorel
