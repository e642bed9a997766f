// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxSlot;

/** Fields of the two plain delays, and the modulation that the tape delays share. */
struct DelayFields
{
    std::uint32_t modPhase = 0, modRate = 0; ///< 24-bit LFO, a step every 16 samples
    float modDepth = 0.0f;
    float lengthL = 0.0f, lengthR = 0.0f; ///< samples
    float targetL = 0.0f, targetR = 0.0f; ///< the same, modulated
    float smoothL = 0.0f, smoothR = 0.0f; ///< read distances
    float feedbackL = 0.0f, feedbackR = 0.0f, crossL = 0.0f, crossR = 0.0f;
    std::uint8_t crossOn = 0;
};

struct TapeDelayFields
{
    float tapeParamL = 0.0f, tapeParamR = 0.0f; ///< length parameters
    float tapeWiden = 0.0f;                     ///< extra samples of the right channel
};

void delayClear(FxSlot& slot);
void monoDelayUpdate(FxSlot& slot);
void stereoDelayUpdate(FxSlot& slot);
void delayProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);

void tapeClear(FxSlot& slot);
void monoTapeDelayUpdate(FxSlot& slot);
void stereoTapeDelayUpdate(FxSlot& slot);
void tapeDelayProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
} // namespace quorel
