// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FilterEffects.h"

#include "effects/DelayLine.h"
#include "effects/DriveCurve.h"
#include "effects/EffectMath.h"
#include "effects/FxContext.h"
#include "effects/Lfo.h"
#include "effects/SyncTables.h"

namespace quorel
{
namespace
{
constexpr std::uint32_t lineMask = fxLineLength - 1;
constexpr std::uint32_t ringMask = fxAuxRingLength - 1;

bool controlFilter(FilterState& f, FilterCore& core, const FxContext& c, FilterCoefficients& coefficients)
{
    const float v = f.modWheel * 2.0f - 1.0f;
    const float w = v * v * (v > 0.0f ? 1.0f : (v < 0.0f ? -1.0f : 0.0f)) * c.modWheel;
    f.phase = lfoAdvance(f.phase, f.lfoInc * 4);
    const float o = lfoWave(f.wave, f.phase >> 8) * f.lfoAmt;

    // A change of type resets the vowel once more, until the next of these steps.
    core.vowel = clampUnit(f.vowel);
    if (f.type != core.type)
        filterReset(core);

    core.type = f.type;
    core.cutoffTarget = clampUnit(w + f.cutoff + o);
    core.resonance = clampUnit(f.q) * 0.95f;
    return filterCoefficients(core, coefficients);
}
} // namespace

void filterUpdate(FilterState& f, FxContext& c)
{
    const float* p = c.param;
    f.type = std::min(discreteChoice(p[0], 29.99f), filterTypeCount - 1);
    f.cutoff = p[2];
    f.q = p[3];
    f.vowel = p[4];
    f.wave = discreteChoice(p[5], 4.99f);
    f.lfoAmt = p[6] * p[6];
    f.drive = std::exp2(p[1] * 8.0f) - 1.0f;
    f.modWheel = p[9];
    f.lfoInc = lfoInc(c, p[7], p[8]);
}

void filterEffectProcess(FilterState& f, FilterCore& core, FxContext& c, const float* x, const float* y,
                         float* wetLeft, float* wetRight, int num)
{
    float l[fxChunk], r[fxChunk];

    driveCurve(x, f.drive, l, num);
    driveCurve(y, f.drive, r, num);
    std::fill(wetLeft, wetLeft + num, 0.0f);
    std::fill(wetRight, wetRight + num, 0.0f);

    FilterCoefficients* coefficients = core.stepCoefficients;
    const FilterCoefficients* current = &core;
    FilterStep steps[fxChunk / 4 + 2];
    int numCoefficients = 0, numSteps = 0, done = 0;

    const auto run = [&](int end)
    {
        if (numSteps == 0)
            return;

        filterProcess(core, l + done, r + done, wetLeft + done, wetRight + done, 1.0f, 1.0f, steps, numSteps);
        numSteps = 0;
        done = end;
    };

    for (int t = 0; t < num;)
    {
        const auto past = static_cast<int>((c.sampleCount + 1 + static_cast<std::uint32_t>(t)) & 3);
        if (past == 0)
        {
            if (f.type != core.type) // which the step changes
                run(t);

            if (controlFilter(f, core, c, coefficients[numCoefficients]))
                current = &coefficients[numCoefficients++];
        }

        const int length = std::min(num - t, 4 - past);
        steps[numSteps++] = {current, length};
        t += length;
    }

    run(num);
    if (current != &core)
        static_cast<FilterCoefficients&>(core) = *current;
}

void bassUpdate(BassState& f, FxContext& c)
{
    const float* p = c.param;
    f.pre = std::pow(10.0f, p[1] * 30.0f / 20.0f);
    f.drive = std::exp2(p[2] * 8.0f) - 1.0f;
    f.post = levelGain(p[3], 60.0f, -30.0f);
    c.tone.lp = std::exp2(p[0] * 5.0f) * 40.0f * c.invSampleRate;
    c.tone.lpInv = 1.0f - c.tone.lp;
}

void bassProcess(BassState& f, FxContext& c, const float* x, const float* y, float* wetLeft, float* wetRight,
                 int num)
{
    // Distorts the lows and leaves the rest alone; low and driven hold left and right in turn.
    alignas(16) float lows[2 * fxChunk + 2], driven[2 * fxChunk + 2];
    const Quad lp = quadOf(c.tone.lp), lpInv = quadOf(c.tone.lpInv);
    Quad first = {c.tone.lpStateL, c.tone.lpStateR, 0.0f, 0.0f};
    Quad second = {f.lpStateL, f.lpStateR, 0.0f, 0.0f};

    for (int t = 0; t < num; ++t)
    {
        first = lp * Quad{x[t], y[t], 0.0f, 0.0f} + lpInv * first + fxTiny;
        storeQuad(lows + 2 * t, first);
    }

    for (int i = 0; i < 2 * num; i += 4)
    {
        const Quad boosted = heldTo(f.pre * loadQuad(lows + i), quadOf(-1.0f), quadOf(1.0f));
        storeQuad(driven + i, driveCurve(boosted, f.drive) * lp);
    }

    for (int t = 0; t < num; ++t)
    {
        second = Quad{driven[2 * t], driven[2 * t + 1], 0.0f, 0.0f} + lpInv * second + fxTiny;
        wetLeft[t] = second[0] * f.post + (x[t] - lows[2 * t]);
        wetRight[t] = second[1] * f.post + (y[t] - lows[2 * t + 1]);
    }

    c.tone.lpStateL = first[0];
    c.tone.lpStateR = first[1];
    f.lpStateL = second[0];
    f.lpStateR = second[1];
}

void wahWahDelayUpdate(WahWahDelayState& f, FxContext& c)
{
    const float* p = c.param;
    f.low = p[0];
    f.high = p[1];
    f.wave = discreteChoice(p[2], 4.99f);
    f.smooth = std::exp2(p[3] * -13.0f);
    f.inc = lfoInc(c, p[4], p[5]);
    f.res = p[6];
    f.delay = std::min(syncedDelay(p[7], c.samplesPerWhole), 262142.0f);
    f.feed = p[8];
    f.volume = p[9];
}

void wahWahDelayProcess(WahWahDelayState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                        float* wetRight, int num)
{
    const std::uint32_t phase = f.phase;
    SvfSetting settings[fxChunk];
    float distances[fxChunk];
    int filled = 0;

    svfSettings(c.svf, c.sampleCount, 4, settings, num,
                [&](int t)
                {
                    std::fill(distances + filled, distances + t, f.delaySmooth);
                    filled = t;

                    const auto now = lfoAdvance(phase, f.inc * (static_cast<std::uint32_t>(t) + 1));
                    const float v = (lfoWave(f.wave, now >> 8) * 0.5f + 0.5f) * (f.high - f.low) + f.low;
                    f.now = (1.0f - f.smooth) * f.now + f.smooth * v;
                    setSvf(c.svf, f.now, f.res, 0.0f, c.sampleRate);
                    f.delaySmooth = glideDistance(f.delaySmooth, std::min(f.delay, 262143.0f), 10.0f);
                });
    std::fill(distances + filled, distances + num, f.delaySmooth);
    f.phase = lfoAdvance(phase, f.inc * static_cast<std::uint32_t>(num));

    std::copy(x, x + num, wetLeft);
    std::copy(y, y + num, wetRight);
    svfLowPass(c.svf.svfA, settings, wetLeft, wetRight, num);
    std::uint32_t writeCount = c.writeCount;

    for (int t = 0; t < num; ++t)
    {
        ++writeCount;
        const float l = wetLeft[t], r = wetRight[t];
        const float a = lineRead(c.memory->lineL, lineMask, writeCount, distances[t]);
        const float b = lineRead(c.memory->lineR, lineMask, writeCount, distances[t]);
        c.memory->lineL[writeCount & lineMask] = heldForLine(a * f.feed + l);
        c.memory->lineR[writeCount & lineMask] = heldForLine(b * f.feed + r);
        wetLeft[t] = heldForLine(f.volume * a + l);
        wetRight[t] = heldForLine(f.volume * b + r);
    }
}

void autoWahUpdate(AutoWahState& f, FxContext& c)
{
    const float* p = c.param;
    f.band = p[0] >= 0.5f ? 1 : 0;
    f.low = p[1];
    f.high = p[2];
    f.sense = p[3] * p[3] * 25.0f;
    f.res = p[4] * 0.99f;
    f.coef = 1.0f - std::exp2(p[5] * -8.0f - 8.0f);
}

void autoWahProcess(AutoWahState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num)
{
    float envelope[fxChunk + 1]; // before each sample, and after the last
    envelope[0] = f.env;
    for (int t = 0; t < num; ++t)
        envelope[t + 1] =
            (1.0f - f.coef) * (std::abs(x[t]) + std::abs(y[t])) * 0.5f + f.coef * envelope[t] + fxTiny;
    f.env = envelope[num];

    SvfSetting settings[fxChunk];
    svfSettings(c.svf, c.sampleCount, 4, settings, num,
                [&](int t)
                {
                    const float e = clampUnit(envelope[t] * f.sense);
                    setSvf(c.svf, (f.high - f.low) * e + f.low, f.res, 0.0f, c.sampleRate);
                });

    SvfRun svf(c.svf.svfA);

    for (int t = 0; t < num; ++t)
    {
        svf.tick(pairOf(x[t], y[t]), settings[t]);
        const FloatPair out = f.band ? svf.bandPass() : svf.lowPass();
        wetLeft[t] = out[0];
        wetRight[t] = out[1];
    }

    svf.store();
}

void widenerUpdate(WidenerState& f, FxContext& c)
{
    const float* p = c.param;
    f.length = std::min(std::exp2(8.0f * p[0]) * 4.0f + 1.0f, 65535.0f);
    f.depth = p[1];
    f.rate = std::exp2(10.0f * p[2]) * c.invSampleRate * 0.026855469f;
    setToneFilters(c.tone, p[3], p[4], c.invSampleRate);
}

void widenerProcess(WidenerState& state, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num)
{
    WidenerState f = state;
    ToneFilter tone = c.tone;
    std::uint32_t count = c.sampleCount;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        f.phase = fraction(f.phase + f.rate);
        const float tri = std::abs(2.0f * f.phase - 1.0f);
        const float d = ((1.0f - tri) * f.depth + 1.0f - f.depth) * f.length;
        c.memory->shared.reverb.auxRing[count & ringMask] = y[t];

        const auto whole = static_cast<std::uint32_t>(d), next = static_cast<std::uint32_t>(d + 1.0f);
        const float s0 = c.memory->shared.reverb.auxRing[(count - whole) & ringMask],
                    s1 = c.memory->shared.reverb.auxRing[(count - next) & ringMask];
        float l = x[t], r = (s1 - s0) * (d - static_cast<float>(whole)) + s0;
        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        wetLeft[t] = l;
        wetRight[t] = r;
    }

    state = f;
    c.tone = tone;
}
} // namespace quorel
