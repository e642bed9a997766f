// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/DelayEffects.h"

#include "effects/DelayLine.h"
#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
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

void setDelayLengths(FxSlot& slot, float pL, float pR, float pWiden, float pSync)
{
    if (pSync > 0.5f)
    {
        slot.lengthL = syncedDelay(pL, slot.samplesPerWhole);
        slot.lengthR = syncedDelay(pR, slot.samplesPerWhole) + widenSamples(pWiden);
    }
    else
    {
        slot.lengthL = std::exp2(12.0f * pL) / 1000.0f * slot.sampleRate + 1.0f;
        slot.lengthR = std::exp2(12.0f * pR) / 1000.0f * slot.sampleRate + 1.0f + widenSamples(pWiden);
    }

    slot.lengthL = std::min(slot.lengthL, longestLength);
    slot.lengthR = std::min(slot.lengthR, longestLength);
}

void setModulation(FxSlot& slot, float pAmount, float pSpeed)
{
    slot.modDepth = pAmount * pAmount;
    slot.modRate = delayModRate(pSpeed, slot.invSampleRate);
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

void switchCrossOff(FxSlot& slot)
{
    slot.crossL = slot.crossR = 0.0f;
    slot.crossOn = 0;
}

float advanceModulation(DelayFields& f, const float* sineUnipolar)
{
    f.modPhase = lfoAdvance(f.modPhase, f.modRate);
    return f.modDepth * 0.125f * sineUnipolar[f.modPhase >> 8] + 1.0f;
}

template <bool plain>
void runTapeDelay(FxSlot& slot, TapeRun tape, const float* x, const float* y, float* wetLeft, float* wetRight,
                  int num)
{
    const bool runs = slot.tape.guard == 0;
    Pair speed = tape.speed();

    for (int t = 0; t < num; ++t)
    {
        const std::uint32_t sampleCount = slot.sampleCount + 1 + static_cast<std::uint32_t>(t);

        if ((sampleCount & 15) == 0)
        {
            const float mod = advanceModulation(slot, slot.sineUnipolar);
            tapeSetLengths(slot.tape, slot.tapeParamL, slot.tapeParamR, 0.0f, slot.tapeWiden, mod);
            speed = tape.speed();
        }

        const Quad out = runs ? tape.process<plain>(Quad{x[t], y[t], 0.0f, 0.0f}, speed) : Quad{};
        wetLeft[t] = out[0];
        wetRight[t] = out[1];
    }

    tape.store();
}
} // namespace

void delayClear(FxSlot& slot)
{
    // Only the start of the lines: an old tail further on can come back with a long delay, and is meant to.
    std::fill(slot.lineL, slot.lineL + 16384, 0.0f);
    std::fill(slot.lineR, slot.lineR + 16384, 0.0f);
}

void monoDelayUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    setDelayLengths(slot, p[0], p[0], p[5], p[1]);
    slot.feedbackL = slot.feedbackR = p[2] * 1.98f - 0.99f + fxTiny;
    switchCrossOff(slot);
    setToneFilters(slot, p[3], p[4], slot.invSampleRate);
    setModulation(slot, p[6], p[7]);
}

void stereoDelayUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    setDelayLengths(slot, p[0], p[1], 0.0f, p[2]);
    slot.feedbackL = slot.feedbackR = p[3] * 1.98f - 0.99f + fxTiny;
    slot.crossL = slot.crossR = p[4] * 1.98f - 0.99f;

    if (std::abs(slot.crossL) < 0.03f)
        switchCrossOff(slot);

    if (p[5] > 0.5f)
    {
        switchCrossOff(slot);
        if (slot.lengthL > slot.lengthR)
            slot.feedbackR = equalFeedback(slot.feedbackL, slot.lengthR, slot.lengthL);
        else
            slot.feedbackL = equalFeedback(slot.feedbackR, slot.lengthL, slot.lengthR);
    }
    else if (std::abs(slot.crossL) > 0.0f)
    {
        const float s = std::max(1.0f, std::abs(slot.feedbackL) + std::abs(slot.crossL) + 0.0001f);
        slot.feedbackL /= s;
        slot.crossL = -slot.crossL / s;
        slot.feedbackR = slot.feedbackR / s + fxTiny;
        slot.crossR = fxTiny - slot.crossR / s;
        slot.crossOn = 1;
        if (std::abs(slot.crossL) < 0.02f)
            switchCrossOff(slot);
    }

    setToneFilters(slot, p[6], p[7], slot.invSampleRate);
    setModulation(slot, p[8], p[9]);
}

void delayProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    DelayFields f = slot;
    ToneFilter tone = slot;
    std::uint32_t sampleCount = slot.sampleCount, writeCount = slot.writeCount;

    for (int t = 0; t < num; ++t)
    {
        ++sampleCount;
        ++writeCount;

        if ((sampleCount & 15) == 0)
        {
            const float m = advanceModulation(f, slot.sineUnipolar);
            f.targetL = std::min(m * f.lengthL, 262143.0f);
            f.targetR = std::min(m * f.lengthR, 262143.0f);
            f.smoothL = glideDistance(f.smoothL, f.targetL, 10.0f);
            f.smoothR = glideDistance(f.smoothR, f.targetR, 10.0f);
        }

        const float a = lineRead(slot.lineL, lineMask, writeCount, f.smoothL);
        const float b = lineRead(slot.lineR, lineMask, writeCount, f.smoothR);
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
        slot.lineL[writeCount & lineMask] = heldForLine(l);
        slot.lineR[writeCount & lineMask] = heldForLine(r);
        wetLeft[t] = a;
        wetRight[t] = b;
    }

    static_cast<DelayFields&>(slot) = f;
    static_cast<ToneFilter&>(slot) = tone;
}

void tapeClear(FxSlot& slot)
{
    tapeInit(slot.tape, slot.sampleRate);
}

void monoTapeDelayUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.tape.syncOn = p[1] > 0.5f ? 1 : 0;
    slot.tape.samplesPerWhole = slot.tape.sampleRate * 240.0f / slot.bpm;
    slot.tapeParamL = slot.tapeParamR = p[0];
    slot.tapeWiden = widenSamples(p[5]);
    slot.tape.feedEqual = 0;
    tapeSetFeedback(slot.tape, p[2] * 1.98f - 0.99f, 0.0f);
    tapeSetFilter(slot.tape, p[3], p[4]);
    setModulation(slot, p[6], p[7]);
}

void stereoTapeDelayUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.tape.syncOn = p[2] > 0.5f ? 1 : 0;
    slot.tape.samplesPerWhole = slot.tape.sampleRate * 240.0f / slot.bpm;
    tapeSetLengths(slot.tape, p[0], p[1], 0.0f, 0.0f, 1.0f);
    slot.tapeParamL = p[0];
    slot.tapeParamR = p[1];
    slot.tapeWiden = 0.0f;
    slot.tape.feedEqual = p[5] > 0.5f ? 1 : 0;
    tapeSetFeedback(slot.tape, p[3] * 1.98f - 0.99f, p[4] * 1.98f - 0.99f);
    tapeSetFilter(slot.tape, p[6], p[7]);
    setModulation(slot, p[8], p[9]);
}

void tapeDelayProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    const TapeRun tape(slot.tape);
    if (tape.isPlain())
        runTapeDelay<true>(slot, tape, x, y, wetLeft, wetRight, num);
    else
        runTapeDelay<false>(slot, tape, x, y, wetLeft, wetRight, num);
}
} // namespace quorel
