// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/CombFilter.h"

#include "effects/DelayLine.h"
#include "effects/EffectMath.h"
#include "effects/FxContext.h"
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

void combUpdate(CombState& f, FxContext& c)
{
    const float* p = c.param;
    f.comb1Delay = combDelay(p[0], c.sampleRate);
    f.comb1Gain = combGain(p[1]);
    f.comb1Depth = std::sqrt(p[2]);
    f.comb1PhaseInc = lfoIncTempo(p[3], c.sampleRate, c.bpm);
    f.comb2Delay = combDelay(p[4], c.sampleRate);
    f.comb2Gain = combGain(p[5]);
    f.comb2Depth = std::sqrt(p[6]);
    f.comb2PhaseInc = lfoIncTempo(p[7], c.sampleRate, c.bpm);
}

void combProcess(CombState& state, FxContext& c, const float* x, const float* y, float* wetLeft,
                 float* wetRight, int num)
{
    CombState f = state;
    CombLines& lines = c.memory->shared.comb;

    for (int t = 0; t < num; ++t)
    {
        f.comb1Phase = lfoAdvance(f.comb1Phase, f.comb1PhaseInc);
        f.comb2Phase = lfoAdvance(f.comb2Phase, f.comb2PhaseInc);
        f.comb1Now =
            (f.comb1Depth * c.sines->unipolar[f.comb1Phase >> 8] + 1.0f - f.comb1Depth) * f.comb1Gain;
        f.comb2Now =
            (f.comb2Depth * c.sines->unipolar[f.comb2Phase >> 8] + 1.0f - f.comb2Depth) * f.comb2Gain;
        f.comb1Pos = (f.comb1Pos + 256) & positionMask;
        f.comb2Pos = (f.comb2Pos + 256) & positionMask;
        const int r1 = ((f.comb1Pos - f.comb1Delay) >> 8) & 0x1fff, w1 = f.comb1Pos >> 8;
        const int r2 = ((f.comb2Pos - f.comb2Delay) >> 8) & 0x1fff, w2 = f.comb2Pos >> 8;

        // Each side reads the lines of the other: a mono input goes to and fro between the channels.
        lines.inL[w1] = x[t] + fxTiny;
        const float left = heldForLine(lines.outR[r1] * f.comb1Now + lines.inR[r1]) + fxTiny;
        lines.outL[w1] = left;
        wetLeft[t] = left + fxTiny;

        lines.inR[w2] = y[t] + fxTiny;
        const float right = heldForLine(lines.outL[r2] * f.comb2Now + lines.inL[r2]) + fxTiny;
        lines.outR[w2] = right;
        wetRight[t] = right + fxTiny;
    }

    state = f;
}
} // namespace quorel
