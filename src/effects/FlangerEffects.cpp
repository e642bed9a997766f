// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FlangerEffects.h"

#include "effects/DelayLine.h"
#include "effects/EffectMath.h"
#include "effects/FxContext.h"
#include "effects/Lfo.h"
#include "effects/ModLine.h"
#include "effects/TapeRun.h"

namespace quorel
{
namespace
{
constexpr std::uint32_t modLineMask = fxModLineLength - 1;

float flangerDistance(FlangerState& f, const float* sineUnipolar)
{
    f.phase = lfoAdvance(f.phase, f.inc);
    return (f.depth * sineUnipolar[f.phase >> 8] + 1.0f - f.depth) * f.length + 10.0f;
}

void panFlanger(FlangerState& f, const float* sineBipolar, std::uint32_t sampleCount)
{
    if ((sampleCount & 15) != 0)
        return;

    const float q = sineBipolar[f.phase >> 8] * f.panDepth + 0.5f;
    f.gainL = clampUnit(2.0f - 2.0f * q);
    f.gainR = clampUnit(2.0f * q);
}

template <bool plain>
void runTapeFlanger(FlangerState& state, FxContext& c, TapeRun tape, const float* x, const float* y,
                    float* wetLeft, float* wetRight, int num)
{
    FlangerState f = state;
    ToneRun tone(c.tone);
    const bool runs = c.tape.guard == 0;
    std::uint32_t count = c.sampleCount;
    float distance = 0.0f;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        distance = flangerDistance(f, c.sines->unipolar);
        const Quad read =
            runs ? tape.process<plain>(Quad{x[t], y[t], 0.0f, 0.0f}, TapeRun::stepFor(distance, distance))
                 : Quad{};
        panFlanger(f, c.sines->bipolar, count);
        const Quad out = tone.tick(read);
        wetLeft[t] = heldForLine(out[0] * f.gainL);
        wetRight[t] = heldForLine(out[1] * f.gainR);
    }

    state = f;
    tone.store();
    tape.store();
    tapeSetDistances(c.tape, distance, distance);
}
} // namespace

void flangerUpdate(FlangerState& f, FxContext& c)
{
    const float* p = c.param;
    const double length = static_cast<double>(c.sampleRate) * 0.05 * static_cast<double>(p[0]) + 44.0;
    f.length = static_cast<float>(std::min(length, 16383.0));
    f.depth = p[1] * 0.99f;
    f.inc = lfoInc(c, p[2], p[3]);
    f.feedback = p[4] * 1.98f - 0.99f + fxTiny;
    f.panDepth = p[5] * 0.5f;
    setToneFilters(c.tone, p[6], p[7], c.invSampleRate);
}

void flangerProcess(FlangerState& state, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num)
{
    FlangerState f = state;
    ToneFilter tone = c.tone;
    std::uint32_t count = c.sampleCount;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        const float d = flangerDistance(f, c.sines->unipolar);
        float l = modLineRead(c.memory->modLineL, count, d);
        float r = modLineRead(c.memory->modLineR, count, d);
        panFlanger(f, c.sines->bipolar, count);
        c.memory->modLineR[count & modLineMask] = heldForLine(y[t] - l * f.feedback) + fxTiny;
        c.memory->modLineL[count & modLineMask] = heldForLine(x[t] - r * f.feedback) + fxTiny;
        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        wetLeft[t] = heldForLine(l * f.gainL);
        wetRight[t] = heldForLine(r * f.gainR);
    }

    state = f;
    c.tone = tone;
}

void tapeFlangerUpdate(FlangerState& f, FxContext& c)
{
    flangerUpdate(f, c);
    tapeSetFilter(c.tape, 1.0f, 0.0f);
    c.tape.feedbackL = c.tape.feedbackR = f.feedback;
    c.tape.crossL = c.tape.crossR = 0.0f;
}

void tapeFlangerProcess(FlangerState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                        float* wetRight, int num)
{
    const TapeRun tape(c.tape);
    if (tape.isPlain())
        runTapeFlanger<true>(f, c, tape, x, y, wetLeft, wetRight, num);
    else
        runTapeFlanger<false>(f, c, tape, x, y, wetLeft, wetRight, num);
}
} // namespace quorel
