// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxSlot;

/** Fields of "Filter", "Bass", "WahWah Delay", "AutoWah" and "Widener". */
struct FilterFields
{
    std::int32_t filterType = 0, fltWave = 0;
    float fltCutoff = 0.0f, fltQ = 0.0f, fltVowel = 0.0f, fltLfoAmt = 0.0f, fltDrive = 0.0f,
          fltModWheel = 0.0f;
    std::uint32_t fltPhase = 0, fltLfoInc = 0;

    float bassPre = 0.0f, bassDrive = 0.0f, bassPost = 0.0f;
    float bassLpStateL = 0.0f, bassLpStateR = 0.0f;

    float wahLow = 0.0f, wahHigh = 0.0f, wahSmooth = 0.0f, wahRes = 0.0f, wahNow = 0.0f;
    float wahDelay = 0.0f, wahDelaySmooth = 0.0f, wahFeed = 0.0f, wahVolume = 0.0f;
    std::int32_t wahWave = 0;
    std::uint32_t wahPhase = 0, wahInc = 0;

    std::uint8_t awBand = 0;
    float awLow = 0.0f, awHigh = 0.0f, awSense = 0.0f, awRes = 0.0f, awCoef = 0.99609375f, awEnv = 0.0f;

    float widenLength = 0.0f, widenDepth = 0.0f, widenRate = 0.0f, widenPhase = 0.0f;
};

void filterUpdate(FxSlot& slot);
void filterEffectProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                         int num);
void bassUpdate(FxSlot& slot);
void bassProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void wahWahDelayUpdate(FxSlot& slot);
void wahWahDelayProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                        int num);
void autoWahUpdate(FxSlot& slot);
void autoWahProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void widenerUpdate(FxSlot& slot);
void widenerProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
} // namespace quorel
