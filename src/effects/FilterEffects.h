// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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
