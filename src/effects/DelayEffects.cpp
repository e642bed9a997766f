// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/DelayEffects.h"

#include "effects/DelayLine.h"
#include "effects/EffectMath.h"
#include "effects/FxContext.h"
#include "effects/Lfo.h"
#include "effects/SyncTables.h"
#include "effects/TapeRun.h"

namespace quorel
{
namespace
{
constexpr float longestLength = 262142.0f;
constexpr std::uint32_t lineMask = fxLineLength - 1;

float widenSamples(float p)
{
    return std::exp2(8.0f * p) * 4.0f;
}

void setDelayLengths(DelayState& f, const FxContext& c, float pL, float pR, float pWiden, float pSync)
{
    if (pSync > 0.5f)
    {
        f.lengthL = syncedDelay(pL, c.samplesPerWhole);
        f.lengthR = syncedDelay(pR, c.samplesPerWhole) + widenSamples(pWiden);
    }
    else
    {
        f.lengthL = std::exp2(12.0f * pL) / 1000.0f * c.sampleRate + 1.0f;
        f.lengthR = std::exp2(12.0f * pR) / 1000.0f * c.sampleRate + 1.0f + widenSamples(pWiden);
    }

    f.lengthL = std::min(f.lengthL, longestLength);
    f.lengthR = std::min(f.lengthR, longestLength);
}

void setModulation(DelayModulation& modulation, const FxContext& c, float pAmount, float pSpeed)
{
    modulation.depth = pAmount * pAmount;
    modulation.rate = delayModRate(pSpeed, c.invSampleRate);
}

float signOf(float x)
{
    return x > 0.0f ? 1.0f : (x < 0.0f ? -1.0f : 0.0f);
}

// Feedback with which a line loses the same level in the same time as the other one.
float equalFeedback(float other, float ownLength, float otherLength)
{
    return signOf(other) * std::exp(ownLength / otherLength * std::log(std::abs(other) + 0.0001f));
}

void switchCrossOff(DelayState& f)
{
    f.crossL = f.crossR = 0.0f;
    f.crossOn = 0;
}

float advanceModulation(DelayModulation& modulation, const float* sineUnipolar)
{
    modulation.phase = lfoAdvance(modulation.phase, modulation.rate);
    return modulation.depth * 0.125f * sineUnipolar[modulation.phase >> 8] + 1.0f;
}

template <bool plain>
void runTapeDelay(TapeDelayState& f, FxContext& c, TapeRun tape, const float* x, const float* y,
                  float* wetLeft, float* wetRight, int num)
{
    const bool runs = c.tape.guard == 0;
    TapeRun::Step step = tape.step();

    for (int t = 0; t < num; ++t)
    {
        const std::uint32_t sampleCount = c.sampleCount + 1 + static_cast<std::uint32_t>(t);

        if ((sampleCount & 15) == 0)
        {
            const float mod = advanceModulation(f.modulation, c.sines->unipolar);
            tapeSetLengths(c.tape, f.paramL, f.paramR, 0.0f, f.widen, mod);
            step = tape.step();
        }

        const Quad out = runs ? tape.process<plain>(Quad{x[t], y[t], 0.0f, 0.0f}, step) : Quad{};
        wetLeft[t] = out[0];
        wetRight[t] = out[1];
    }

    tape.store();
}
} // namespace

void monoDelayUpdate(DelayState& f, FxContext& c)
{
    const float* p = c.param;
    setDelayLengths(f, c, p[0], p[0], p[5], p[1]);
    f.feedbackL = f.feedbackR = p[2] * 1.98f - 0.99f + fxTiny;
    switchCrossOff(f);
    setToneFilters(c.tone, p[3], p[4], c.invSampleRate);
    setModulation(f.modulation, c, p[6], p[7]);
}

void stereoDelayUpdate(DelayState& f, FxContext& c)
{
    const float* p = c.param;
    setDelayLengths(f, c, p[0], p[1], 0.0f, p[2]);
    f.feedbackL = f.feedbackR = p[3] * 1.98f - 0.99f + fxTiny;
    f.crossL = f.crossR = p[4] * 1.98f - 0.99f;

    if (std::abs(f.crossL) < 0.03f)
        switchCrossOff(f);

    if (p[5] > 0.5f)
    {
        switchCrossOff(f);
        if (f.lengthL > f.lengthR)
            f.feedbackR = equalFeedback(f.feedbackL, f.lengthR, f.lengthL);
        else
            f.feedbackL = equalFeedback(f.feedbackR, f.lengthL, f.lengthR);
    }
    else if (std::abs(f.crossL) > 0.0f)
    {
        const float s = std::max(1.0f, std::abs(f.feedbackL) + std::abs(f.crossL) + 0.0001f);
        f.feedbackL /= s;
        f.crossL = -f.crossL / s;
        f.feedbackR = f.feedbackR / s + fxTiny;
        f.crossR = fxTiny - f.crossR / s;
        f.crossOn = 1;
        if (std::abs(f.crossL) < 0.02f)
            switchCrossOff(f);
    }

    setToneFilters(c.tone, p[6], p[7], c.invSampleRate);
    setModulation(f.modulation, c, p[8], p[9]);
}

void delayProcess(DelayState& state, FxContext& c, const float* x, const float* y, float* wetLeft,
                  float* wetRight, int num)
{
    DelayState f = state;
    ToneFilter tone = c.tone;
    std::uint32_t sampleCount = c.sampleCount, writeCount = c.writeCount;

    for (int t = 0; t < num; ++t)
    {
        ++sampleCount;
        ++writeCount;

        if ((sampleCount & 15) == 0)
        {
            const float m = advanceModulation(f.modulation, c.sines->unipolar);
            f.targetL = std::min(m * f.lengthL, 262143.0f);
            f.targetR = std::min(m * f.lengthR, 262143.0f);
            f.smoothL = glideDistance(f.smoothL, f.targetL, 10.0f);
            f.smoothR = glideDistance(f.smoothR, f.targetR, 10.0f);
        }

        const float a = lineRead(c.memory->lineL, lineMask, writeCount, f.smoothL);
        const float b = lineRead(c.memory->lineR, lineMask, writeCount, f.smoothR);
        float l = x[t] - a * f.feedbackL;
        float r = y[t] - b * f.feedbackR;

        if (f.crossOn)
        {
            l = l - b * f.crossL;
            r = r - a * f.crossR;
        }

        l = l + fxTiny;
        r = r + fxTiny;
        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        c.memory->lineL[writeCount & lineMask] = heldForLine(l);
        c.memory->lineR[writeCount & lineMask] = heldForLine(r);
        wetLeft[t] = a;
        wetRight[t] = b;
    }

    state = f;
    c.tone = tone;
}

void monoTapeDelayUpdate(TapeDelayState& f, FxContext& c)
{
    const float* p = c.param;
    c.tape.syncOn = p[1] > 0.5f ? 1 : 0;
    c.tape.samplesPerWhole = c.tape.sampleRate * 240.0f / c.bpm;
    f.paramL = f.paramR = p[0];
    f.widen = widenSamples(p[5]);
    c.tape.feedEqual = 0;
    tapeSetFeedback(c.tape, p[2] * 1.98f - 0.99f, 0.0f);
    tapeSetFilter(c.tape, p[3], p[4]);
    setModulation(f.modulation, c, p[6], p[7]);
}

void stereoTapeDelayUpdate(TapeDelayState& f, FxContext& c)
{
    const float* p = c.param;
    c.tape.syncOn = p[2] > 0.5f ? 1 : 0;
    c.tape.samplesPerWhole = c.tape.sampleRate * 240.0f / c.bpm;
    tapeSetLengths(c.tape, p[0], p[1], 0.0f, 0.0f, 1.0f);
    f.paramL = p[0];
    f.paramR = p[1];
    f.widen = 0.0f;
    c.tape.feedEqual = p[5] > 0.5f ? 1 : 0;
    tapeSetFeedback(c.tape, p[3] * 1.98f - 0.99f, p[4] * 1.98f - 0.99f);
    tapeSetFilter(c.tape, p[6], p[7]);
    setModulation(f.modulation, c, p[8], p[9]);
}

void tapeDelayProcess(TapeDelayState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                      float* wetRight, int num)
{
    const TapeRun tape(c.tape);
    if (tape.isPlain())
        runTapeDelay<true>(f, c, tape, x, y, wetLeft, wetRight, num);
    else
        runTapeDelay<false>(f, c, tape, x, y, wetLeft, wetRight, num);
}
} // namespace quorel
