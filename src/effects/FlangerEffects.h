// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxSlot;

/** Fields of "Flanger" and "Tape Flanger". */
struct FlangerFields
{
    float flangeFeedback = 0.0f, flangeLength = 0.0f, flangeDepth = 0.0f, flangePanDepth = 0.0f;
    std::uint32_t flangePhase = 0, flangeInc = 0;
    float flangeGainL = 0.0f, flangeGainR = 0.0f;
};

void flangerUpdate(FxSlot& slot);
void flangerProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void tapeFlangerUpdate(FxSlot& slot);
void tapeFlangerProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                        int num);
} // namespace quorel
