// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/ChorusEffects.h"

#include "effects/DelayLine.h"
#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
#include "effects/Lfo.h"
#include "effects/ModLine.h"
#include "effects/SyncTables.h"

namespace quorel
{
namespace
{
constexpr std::uint32_t modLineMask = fxModLineLength - 1;
constexpr std::uint32_t lineMask = fxLineLength - 1;

float lineLengthOf(const FxSlot& slot, float p)
{
    return slot.sampleRate * 0.05f * p + 1.0f;
}

void setChorusLfos(FxSlot& slot)
{
    const float* p = slot.param;
    slot.chorusDepth = p[1] * 0.99f;
    slot.chorusIncL = lfoInc(slot, p[2], p[3]);
    slot.chorusIncR = static_cast<std::uint32_t>(
        truncateTo((p[4] * 3.0f + 1.0f) * static_cast<float>(slot.chorusIncL), 0, 1 << 30));
}

/** Advances both LFOs and gives the two read distances. */
void chorusDistances(ChorusFields& f, const float* sineUnipolar, float& left, float& right)
{
    f.chorusPhaseL = lfoAdvance(f.chorusPhaseL, f.chorusIncL);
    f.chorusPhaseR = lfoAdvance(f.chorusPhaseR, f.chorusIncR);
    const float a = f.chorusDepth;
    left = (a * sineUnipolar[f.chorusPhaseL >> 8] + 1.0f - a) * f.chorusLength;
    right = (a * sineUnipolar[f.chorusPhaseR >> 8] + 1.0f - a) * f.chorusLength + f.chorusOffset;
}
} // namespace

void modLineClear(FxSlot& slot)
{
    std::fill(std::begin(slot.modLineL), std::end(slot.modLineL), 0.0f);
    std::fill(std::begin(slot.modLineR), std::end(slot.modLineR), 0.0f);
}

void chorusUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.chorusLength = lineLengthOf(slot, p[0]);
    setChorusLfos(slot);
    slot.chorusOffset = std::exp2(8.0f * p[5]) * 4.0f + 1.0f;
    setToneFilters(slot, p[6], p[7], slot.invSampleRate);
}

void chorusProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    ChorusFields f = slot;
    ToneFilter tone = slot;
    std::uint32_t count = slot.sampleCount;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        float left, right;
        chorusDistances(f, slot.sineUnipolar, left, right);
        wetLeft[t] = modLineRead(slot.modLineL, count, left);
        wetRight[t] = modLineRead(slot.modLineR, count, right);

        float l = x[t], r = y[t];
        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        slot.modLineL[count & modLineMask] = l;
        slot.modLineR[count & modLineMask] = r;
    }

    static_cast<ChorusFields&>(slot) = f;
    static_cast<ToneFilter&>(slot) = tone;
}

void tapeChorusUpdate(FxSlot& slot)
{
    chorusUpdate(slot);
    tapeSetFilter(slot.tape, 1.0f, 0.0f);
    slot.tape.feedbackL = slot.tape.feedbackR = slot.tape.crossL = slot.tape.crossR = 0.0f;
}

void tapeChorusProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    ChorusFields f = slot;
    ToneFilter tone = slot;

    for (int t = 0; t < num; ++t)
    {
        float left, right, l = 0.0f, r = 0.0f;
        chorusDistances(f, slot.sineUnipolar, left, right);
        tapeSetDistances(slot.tape, left, right);

        if (slot.tape.guard == 0)
            tapeProcess(slot.tape, x[t], y[t], l, r);

        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        wetLeft[t] = l;
        wetRight[t] = r;
    }

    static_cast<ChorusFields&>(slot) = f;
    static_cast<ToneFilter&>(slot) = tone;
}

void chorusDelayUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.chorusLength = std::min(lineLengthOf(slot, p[0]), 16383.0f);
    setChorusLfos(slot);
    slot.cdLength = std::min(syncedDelay(p[5], slot.samplesPerWhole), 262142.0f);
    slot.cdFeed = p[6];
    slot.cdVolume = p[7];
}

void chorusDelayProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                        int num)
{
    ChorusFields f = slot;
    std::uint32_t sampleCount = slot.sampleCount, writeCount = slot.writeCount;

    for (int t = 0; t < num; ++t)
    {
        ++sampleCount;
        ++writeCount;
        float left, right;
        chorusDistances(f, slot.sineUnipolar, left, right);
        const float cl = modLineRead(slot.modLineL, sampleCount, left);
        const float cr = modLineRead(slot.modLineR, sampleCount, right);
        slot.modLineL[sampleCount & modLineMask] = x[t];
        slot.modLineR[sampleCount & modLineMask] = y[t];

        if ((sampleCount & 15) == 0)
        {
            f.cdDelayTarget = std::min(f.cdLength, 262143.0f);
            f.cdDelaySmooth = glideDistance(f.cdDelaySmooth, f.cdDelayTarget, 2.0f);
        }

        const float a = lineRead(slot.lineL, lineMask, writeCount, f.cdDelaySmooth);
        const float b = lineRead(slot.lineR, lineMask, writeCount, f.cdDelaySmooth);
        slot.lineL[writeCount & lineMask] = heldForLine(a * f.cdFeed + cl);
        slot.lineR[writeCount & lineMask] = heldForLine(b * f.cdFeed + cr);
        wetLeft[t] = heldForLine(f.cdVolume * a + cl);
        wetRight[t] = heldForLine(f.cdVolume * b + cr);
    }

    static_cast<ChorusFields&>(slot) = f;
}

void ensembleInit(FxSlot& slot)
{
    for (int i = 0; i < 6; ++i)
        slot.ensPhase[i] = static_cast<std::uint32_t>(i) * 0xffffffu / 6u;
}

void ensembleClear(FxSlot& slot)
{
    std::fill(std::begin(slot.ensLineL), std::end(slot.ensLineL), 0.0f);
    std::fill(std::begin(slot.ensLineR), std::end(slot.ensLineR), 0.0f);
}

void ensembleUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.ensOutGain = 0.5f;
    slot.ensFeedback = p[4];
    const float b = lineLengthOf(slot, p[0]);
    const float s = (1.0f - p[5]) * -2.0f;

    for (int i = 0; i < 6; ++i)
    {
        const float v = static_cast<float>(i) * s;
        slot.ensLength[i] = std::min(std::exp2(v / 5.0f) * b, 16383.0f);

        const float speed = std::exp2(v / 5.3f);
        const float inc = p[3] >= 0.5f
                              ? static_cast<float>(lfoIncTempo(p[2], slot.sampleRate, slot.bpm)) * speed
                              : std::exp2(10.0f * p[2]) * slot.invSampleRate * 112640.0f * speed;
        slot.ensInc[i] = static_cast<std::uint32_t>(truncateTo(inc, 0, 1 << 30));

        const float d = p[1] * 0.99f * std::exp2(v / 8.3f);
        slot.ensDepthSamples[i] = slot.ensLength[i] * d;
        slot.ensBaseSamples[i] = slot.ensLength[i] * (1.0f - d);

        float pan = 0.5f;
        if (i % 3 == 0)
            pan = p[6] * 0.5f + 0.5f;
        else if (i % 3 == 2)
            pan = 0.5f - p[6] * 0.5f;

        slot.ensGainL[i] = clampUnit(2.0f - 2.0f * pan);
        slot.ensGainR[i] = clampUnit(2.0f * pan);
    }

    setToneFilters(slot, p[7], p[8], slot.invSampleRate);
}

void ensembleProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    std::fill(wetLeft, wetLeft + num, 0.0f);
    std::fill(wetRight, wetRight + num, 0.0f);

    for (int i = 0; i < 6; ++i)
    {
        float* lineL = slot.ensLineL + i * EnsembleLines::stride;
        float* lineR = slot.ensLineR + i * EnsembleLines::stride;
        const float depth = slot.ensDepthSamples[i], base = slot.ensBaseSamples[i],
                    feedback = slot.ensFeedback;
        const float gainL = slot.ensGainL[i], gainR = slot.ensGainR[i];
        const std::uint32_t inc = slot.ensInc[i];
        std::uint32_t phase = slot.ensPhase[i], count = slot.writeCount;

        for (int t = 0; t < num; ++t)
        {
            ++count;
            phase = lfoAdvance(phase, inc);
            const float d = slot.sineUnipolar[phase >> 8] * depth + base;
            const float l = lineRead(lineL, modLineMask, count, d);
            const float r = lineRead(lineR, modLineMask, count, d);
            lineL[count & modLineMask] = heldForLine(x[t] - l * feedback);
            lineR[count & modLineMask] = heldForLine(y[t] - r * feedback);
            wetLeft[t] = wetLeft[t] + l * gainL;
            wetRight[t] = wetRight[t] + r * gainR;
        }

        slot.ensPhase[i] = phase;
    }

    ToneFilter tone = slot;
    const float outGain = slot.ensOutGain;

    for (int t = 0; t < num; ++t)
    {
        float l = wetLeft[t], r = wetRight[t];
        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        wetLeft[t] = heldForLine(l * outGain);
        wetRight[t] = heldForLine(r * outGain);
    }

    static_cast<ToneFilter&>(slot) = tone;
}
} // namespace quorel
