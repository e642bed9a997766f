// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FilterEffects.h"

#include "effects/DelayLine.h"
#include "effects/DriveCurve.h"
#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
#include "effects/Lfo.h"
#include "effects/SyncTables.h"

namespace quorel
{
namespace
{
constexpr std::uint32_t lineMask = fxLineLength - 1;
constexpr std::uint32_t ringMask = fxAuxRingLength - 1;

bool controlFilter(FxSlot& slot, FilterCoefficients& coefficients)
{
    const float v = slot.fltModWheel * 2.0f - 1.0f;
    const float w = v * v * (v > 0.0f ? 1.0f : (v < 0.0f ? -1.0f : 0.0f)) * slot.modWheel;
    slot.fltPhase = lfoAdvance(slot.fltPhase, slot.fltLfoInc * 4);
    const float o = lfoWave(slot.fltWave, slot.fltPhase >> 8) * slot.fltLfoAmt;

    // A change of type resets the vowel once more, until the next of these steps.
    slot.filter.vowel = clampUnit(slot.fltVowel);
    if (slot.filterType != slot.filter.type)
        filterReset(slot.filter);

    slot.filter.type = slot.filterType;
    slot.filter.cutoffTarget = clampUnit(w + slot.fltCutoff + o);
    slot.filter.resonance = clampUnit(slot.fltQ) * 0.95f;
    return filterCoefficients(slot.filter, coefficients);
}
} // namespace

void filterUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.filterType = std::min(discreteChoice(p[0], 29.99f), filterTypeCount - 1);
    slot.fltCutoff = p[2];
    slot.fltQ = p[3];
    slot.fltVowel = p[4];
    slot.fltWave = discreteChoice(p[5], 4.99f);
    slot.fltLfoAmt = p[6] * p[6];
    slot.fltDrive = std::exp2(p[1] * 8.0f) - 1.0f;
    slot.fltModWheel = p[9];
    slot.fltLfoInc = lfoInc(slot, p[7], p[8]);
}

void filterEffectProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                         int num)
{
    float l[fxChunk], r[fxChunk];

    driveCurve(x, slot.fltDrive, l, num);
    driveCurve(y, slot.fltDrive, r, num);
    std::fill(wetLeft, wetLeft + num, 0.0f);
    std::fill(wetRight, wetRight + num, 0.0f);

    FilterCoefficients* coefficients = slot.filter.stepCoefficients;
    const FilterCoefficients* current = &slot.filter;
    FilterStep steps[fxChunk / 4 + 2];
    int numCoefficients = 0, numSteps = 0, done = 0;

    const auto run = [&](int end)
    {
        if (numSteps == 0)
            return;

        filterProcess(slot.filter, l + done, r + done, wetLeft + done, wetRight + done, 1.0f, 1.0f, steps,
                      numSteps);
        numSteps = 0;
        done = end;
    };

    for (int t = 0; t < num;)
    {
        const auto past = static_cast<int>((slot.sampleCount + 1 + static_cast<std::uint32_t>(t)) & 3);
        if (past == 0)
        {
            if (slot.filterType != slot.filter.type) // which the step changes
                run(t);

            if (controlFilter(slot, coefficients[numCoefficients]))
                current = &coefficients[numCoefficients++];
        }

        const int length = std::min(num - t, 4 - past);
        steps[numSteps++] = {current, length};
        t += length;
    }

    run(num);
    if (current != &slot.filter)
        static_cast<FilterCoefficients&>(slot.filter) = *current;
}

void bassUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.bassPre = std::pow(10.0f, p[1] * 30.0f / 20.0f);
    slot.bassDrive = std::exp2(p[2] * 8.0f) - 1.0f;
    slot.bassPost = levelGain(p[3], 60.0f, -30.0f);
    slot.toneLp = std::exp2(p[0] * 5.0f) * 40.0f * slot.invSampleRate;
    slot.toneLpInv = 1.0f - slot.toneLp;
}

void bassProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    // Distorts the lows and leaves the rest alone; low and driven hold left and right in turn.
    alignas(16) float lows[2 * fxChunk + 2], driven[2 * fxChunk + 2];
    const Quad lp = quadOf(slot.toneLp), lpInv = quadOf(slot.toneLpInv);
    Quad first = {slot.toneLpStateL, slot.toneLpStateR, 0.0f, 0.0f};
    Quad second = {slot.bassLpStateL, slot.bassLpStateR, 0.0f, 0.0f};

    for (int t = 0; t < num; ++t)
    {
        first = lp * Quad{x[t], y[t], 0.0f, 0.0f} + lpInv * first + fxTiny;
        storeQuad(lows + 2 * t, first);
    }

    for (int i = 0; i < 2 * num; i += 4)
    {
        const Quad boosted = heldTo(slot.bassPre * loadQuad(lows + i), quadOf(-1.0f), quadOf(1.0f));
        storeQuad(driven + i, driveCurve(boosted, slot.bassDrive) * lp);
    }

    for (int t = 0; t < num; ++t)
    {
        second = Quad{driven[2 * t], driven[2 * t + 1], 0.0f, 0.0f} + lpInv * second + fxTiny;
        wetLeft[t] = second[0] * slot.bassPost + (x[t] - lows[2 * t]);
        wetRight[t] = second[1] * slot.bassPost + (y[t] - lows[2 * t + 1]);
    }

    slot.toneLpStateL = first[0];
    slot.toneLpStateR = first[1];
    slot.bassLpStateL = second[0];
    slot.bassLpStateR = second[1];
}

void wahWahDelayUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.wahLow = p[0];
    slot.wahHigh = p[1];
    slot.wahWave = discreteChoice(p[2], 4.99f);
    slot.wahSmooth = std::exp2(p[3] * -13.0f);
    slot.wahInc = lfoInc(slot, p[4], p[5]);
    slot.wahRes = p[6];
    slot.wahDelay = std::min(syncedDelay(p[7], slot.samplesPerWhole), 262142.0f);
    slot.wahFeed = p[8];
    slot.wahVolume = p[9];
}

void wahWahDelayProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                        int num)
{
    FilterFields& f = slot;
    const std::uint32_t phase = f.wahPhase;
    SvfSetting settings[fxChunk];
    float distances[fxChunk];
    int filled = 0;

    svfSettings(slot, slot.sampleCount, 4, settings, num,
                [&](int t)
                {
                    std::fill(distances + filled, distances + t, f.wahDelaySmooth);
                    filled = t;

                    const auto now = lfoAdvance(phase, f.wahInc * (static_cast<std::uint32_t>(t) + 1));
                    const float v =
                        (lfoWave(f.wahWave, now >> 8) * 0.5f + 0.5f) * (f.wahHigh - f.wahLow) + f.wahLow;
                    f.wahNow = (1.0f - f.wahSmooth) * f.wahNow + f.wahSmooth * v;
                    setSvf(slot, f.wahNow, f.wahRes, 0.0f, slot.sampleRate);
                    f.wahDelaySmooth =
                        glideDistance(f.wahDelaySmooth, std::min(f.wahDelay, 262143.0f), 10.0f);
                });
    std::fill(distances + filled, distances + num, f.wahDelaySmooth);
    f.wahPhase = lfoAdvance(phase, f.wahInc * static_cast<std::uint32_t>(num));

    std::copy(x, x + num, wetLeft);
    std::copy(y, y + num, wetRight);
    svfLowPass(slot.svfA, settings, wetLeft, wetRight, num);
    std::uint32_t writeCount = slot.writeCount;

    for (int t = 0; t < num; ++t)
    {
        ++writeCount;
        const float l = wetLeft[t], r = wetRight[t];
        const float a = lineRead(slot.lineL, lineMask, writeCount, distances[t]);
        const float b = lineRead(slot.lineR, lineMask, writeCount, distances[t]);
        slot.lineL[writeCount & lineMask] = heldForLine(a * f.wahFeed + l);
        slot.lineR[writeCount & lineMask] = heldForLine(b * f.wahFeed + r);
        wetLeft[t] = heldForLine(f.wahVolume * a + l);
        wetRight[t] = heldForLine(f.wahVolume * b + r);
    }
}

void autoWahUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.awBand = p[0] >= 0.5f ? 1 : 0;
    slot.awLow = p[1];
    slot.awHigh = p[2];
    slot.awSense = p[3] * p[3] * 25.0f;
    slot.awRes = p[4] * 0.99f;
    slot.awCoef = 1.0f - std::exp2(p[5] * -8.0f - 8.0f);
}

void autoWahProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    FilterFields& f = slot;
    float envelope[fxChunk + 1]; // before each sample, and after the last
    envelope[0] = f.awEnv;
    for (int t = 0; t < num; ++t)
        envelope[t + 1] =
            (1.0f - f.awCoef) * (std::abs(x[t]) + std::abs(y[t])) * 0.5f + f.awCoef * envelope[t] + fxTiny;
    f.awEnv = envelope[num];

    SvfSetting settings[fxChunk];
    svfSettings(slot, slot.sampleCount, 4, settings, num,
                [&](int t)
                {
                    const float e = clampUnit(envelope[t] * f.awSense);
                    setSvf(slot, (f.awHigh - f.awLow) * e + f.awLow, f.awRes, 0.0f, slot.sampleRate);
                });

    SvfRun svf(slot.svfA);

    for (int t = 0; t < num; ++t)
    {
        svf.tick(pairOf(x[t], y[t]), settings[t]);
        const FloatPair out = f.awBand ? svf.bandPass() : svf.lowPass();
        wetLeft[t] = out[0];
        wetRight[t] = out[1];
    }

    svf.store();
}

void widenerUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.widenLength = std::min(std::exp2(8.0f * p[0]) * 4.0f + 1.0f, 65535.0f);
    slot.widenDepth = p[1];
    slot.widenRate = std::exp2(10.0f * p[2]) * slot.invSampleRate * 0.026855469f;
    setToneFilters(slot, p[3], p[4], slot.invSampleRate);
}

void widenerProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    FilterFields f = slot;
    ToneFilter tone = slot;
    std::uint32_t count = slot.sampleCount;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        f.widenPhase = fraction(f.widenPhase + f.widenRate);
        const float tri = std::abs(2.0f * f.widenPhase - 1.0f);
        const float d = ((1.0f - tri) * f.widenDepth + 1.0f - f.widenDepth) * f.widenLength;
        slot.auxRing[count & ringMask] = y[t];

        const auto whole = static_cast<std::uint32_t>(d), next = static_cast<std::uint32_t>(d + 1.0f);
        const float s0 = slot.auxRing[(count - whole) & ringMask],
                    s1 = slot.auxRing[(count - next) & ringMask];
        float l = x[t], r = (s1 - s0) * (d - static_cast<float>(whole)) + s0;
        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        wetLeft[t] = l;
        wetRight[t] = r;
    }

    static_cast<FilterFields&>(slot) = f;
    static_cast<ToneFilter&>(slot) = tone;
}
} // namespace quorel
