// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/RhythmEffects.h"

#include "effects/EffectMath.h"
#include "effects/FxContext.h"
#include "effects/Lfo.h"
#include "effects/SyncTables.h"

namespace quorel
{
namespace
{
// A gain that glides to 0 would end in denormal numbers, which are slow.
float glideGain(float now, float target, float smooth)
{
    const float next = (1.0f - smooth) * now + smooth * target;
    return std::abs(next) < 1e-30f ? 0.0f : next;
}

void unpackSteps(float p, float* steps)
{
    const auto mask = static_cast<std::uint32_t>(truncateTo(p * 65535.9f, 0, 65535));
    for (std::uint32_t i = 0; i < 16; ++i)
        steps[i] = ((mask >> i) & 1u) != 0 ? 1.0f : 0.0f;
}

float nextPosition(const KappelState& f, const FxContext& c)
{
    if (f.syncMode == 1)
        return std::trunc(f.speedFactor * 8.0f * c.songPosition);
    if (f.syncMode == 2 && c.transportPlaying == 1)
        return f.speedFactor * 8.0f * c.songPosition;
    return f.position + f.stepRate;
}

std::size_t swungStep(const KappelState& f)
{
    const float e = 2.0f * std::trunc(f.position * 0.5f);
    const float r = (f.position - e) * 0.5f;
    const float swung = f.swing > r ? r * f.swingA : (r - f.swing) * f.swingB + 0.5f;
    return static_cast<std::size_t>(truncateTo(swung * 2.0f + e, 0, 31)) & 15;
}
} // namespace

void sweepUpdate(SweepState& f, FxContext& c)
{
    const float* p = c.param;
    f.wave = discreteChoice(p[0], 4.99f);
    f.amount = p[1] * 0.5f;
    f.smooth = std::exp2(p[2] * -13.0f);
    f.inc = lfoInc(c, p[3], p[4]);
}

void autoPanProcess(SweepState& state, FxContext&, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num)
{
    SweepState f = state;

    for (int t = 0; t < num; ++t)
    {
        f.phase = lfoAdvance(f.phase, f.inc);
        f.target = lfoWave(f.wave, f.phase >> 8) * f.amount + 0.5f;
        f.now = glideGain(f.now, f.target, f.smooth);
        const float g = 2.0f * f.now;
        wetLeft[t] = clampUnit(2.0f - g) * x[t];
        wetRight[t] = clampUnit(g) * y[t];
    }

    state = f;
}

void tremeloProcess(SweepState& state, FxContext&, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num)
{
    SweepState f = state;

    for (int t = 0; t < num; ++t)
    {
        f.phase = lfoAdvance(f.phase, f.inc);
        f.target = lfoWave(f.wave, f.phase >> 8) * f.amount + (1.0f - f.amount);
        f.now = glideGain(f.now, f.target, f.smooth);
        wetLeft[t] = x[t] * f.now;
        wetRight[t] = y[t] * f.now;
    }

    state = f;
}

void kappelUpdate(KappelState& f, FxContext& c)
{
    const float* p = c.param;
    f.speedFactor = kappelSpeedTable[static_cast<std::size_t>(lfoSyncIndex(p[0]))].value;
    f.stepCount = 16;
    f.stepRate = c.bpm * 2.0f / 15.0f * c.invSampleRate * f.speedFactor;
    f.smoothC = std::exp2(12.0f - (1.0f - p[1]) * 20.0f);
    f.smoothK = 1.0f / (f.smoothC + 1.0f);
    f.swing = p[4] * 0.5f + 0.5f;
    f.swingA = 0.5f / f.swing;
    f.swingB = 0.5f / (1.0f - f.swing); // infinite at full swing, where it is never used
    f.channelMode = discreteChoice(p[2], 2.99f);
    f.syncMode = discreteChoice(p[3], 2.99f);
    f.maskLeft = p[5];
    f.maskRight = p[6];
    unpackSteps(p[5], f.stepsL);
    unpackSteps(p[6], f.stepsR);
}

void kappelProcess(KappelState& state, FxContext& c, const float* x, const float* y, float* wetLeft,
                   float* wetRight, int num)
{
    KappelState f = state;

    for (int t = 0; t < num; ++t)
    {
        wetLeft[t] = x[t] + fxTiny;
        wetRight[t] = y[t] + fxTiny;

        f.position = nextPosition(f, c);
        f.position -= std::floor(f.position / 16.0f) * 16.0f;
        const std::size_t s = swungStep(f);

        f.stepNowL = f.stepsL[s] + fxTiny;
        f.stepNowR = f.stepsR[s] + fxTiny;
        f.gainL = (f.smoothC * f.gainL + f.stepNowL) * f.smoothK + fxTiny;
        f.gainR = (f.smoothC * f.gainR + f.stepNowR) * f.smoothK + fxTiny;

        if (f.channelMode != 2)
            wetLeft[t] = x[t] * f.gainL + fxTiny;
        if (f.channelMode != 1)
            wetRight[t] = y[t] * f.gainR + fxTiny;
    }

    state = f;
}
} // namespace quorel
