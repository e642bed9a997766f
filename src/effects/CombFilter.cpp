// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/CombFilter.h"

#include "effects/DelayLine.h"
#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
#include "effects/Lfo.h"

namespace quorel
{
namespace
{
constexpr std::int32_t positionMask = 0x1fffff;

std::int32_t combDelay(float p, float sampleRate)
{
    return truncateTo(sampleRate * 256.0f / (std::exp2(10.0f * p) * 20.0f + 1.0f), 513, 0x1ffffe);
}

float combGain(float p)
{
    const float t = p - 0.5f;
    const float size = std::sqrt(std::sqrt(std::abs(t) * 2.0f));
    return t < 0.0f ? -size : size;
}
} // namespace

void combClear(FxSlot& slot)
{
    for (float* buffer : {slot.combInL, slot.combInR, slot.combOutL, slot.combOutR})
        std::fill(buffer, buffer + combLength, 0.0f);
}

void combUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.comb1Delay = combDelay(p[0], slot.sampleRate);
    slot.comb1Gain = combGain(p[1]);
    slot.comb1Depth = std::sqrt(p[2]);
    slot.comb1PhaseInc = lfoIncTempo(p[3], slot.sampleRate, slot.bpm);
    slot.comb2Delay = combDelay(p[4], slot.sampleRate);
    slot.comb2Gain = combGain(p[5]);
    slot.comb2Depth = std::sqrt(p[6]);
    slot.comb2PhaseInc = lfoIncTempo(p[7], slot.sampleRate, slot.bpm);
}

void combProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    CombFields f = slot;

    for (int t = 0; t < num; ++t)
    {
        f.comb1Phase = lfoAdvance(f.comb1Phase, f.comb1PhaseInc);
        f.comb2Phase = lfoAdvance(f.comb2Phase, f.comb2PhaseInc);
        f.comb1Now =
            (f.comb1Depth * slot.sineUnipolar[f.comb1Phase >> 8] + 1.0f - f.comb1Depth) * f.comb1Gain;
        f.comb2Now =
            (f.comb2Depth * slot.sineUnipolar[f.comb2Phase >> 8] + 1.0f - f.comb2Depth) * f.comb2Gain;
        f.comb1Pos = (f.comb1Pos + 256) & positionMask;
        f.comb2Pos = (f.comb2Pos + 256) & positionMask;
        const int r1 = ((f.comb1Pos - f.comb1Delay) >> 8) & 0x1fff, w1 = f.comb1Pos >> 8;
        const int r2 = ((f.comb2Pos - f.comb2Delay) >> 8) & 0x1fff, w2 = f.comb2Pos >> 8;

        // Each side reads the lines of the other: a mono input goes to and fro between the channels.
        slot.combInL[w1] = x[t] + fxTiny;
        const float left = heldForLine(slot.combOutR[r1] * f.comb1Now + slot.combInR[r1]) + fxTiny;
        slot.combOutL[w1] = left;
        wetLeft[t] = left + fxTiny;

        slot.combInR[w2] = y[t] + fxTiny;
        const float right = heldForLine(slot.combOutL[r2] * f.comb2Now + slot.combInL[r2]) + fxTiny;
        slot.combOutR[w2] = right;
        wetRight[t] = right + fxTiny;
    }

    static_cast<CombFields&>(slot) = f;
}
} // namespace quorel
