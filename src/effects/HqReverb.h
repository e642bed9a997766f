// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxSlot;

struct HqReverbFields
{
    std::int32_t preDelaySamples = 1; ///< at most 65535
    std::int32_t spreadSamples = 0;   ///< at most 65535
    float lengthModRate1 = 0.0f, lengthModRate2 = 0.0f;
};

void reverbInit(FxSlot& slot);
void hqReverbClear(FxSlot& slot);
void hqReverbUpdate(FxSlot& slot);
void hqReverbProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
} // namespace quorel
