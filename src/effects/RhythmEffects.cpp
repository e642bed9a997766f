// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/RhythmEffects.h"

#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
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

float nextPosition(const RhythmFields& f, const FxSlot& slot)
{
    if (f.kapSyncMode == 1)
        return std::trunc(f.kapSpeedFactor * 8.0f * slot.songPosition);
    if (f.kapSyncMode == 2 && slot.transportPlaying == 1)
        return f.kapSpeedFactor * 8.0f * slot.songPosition;
    return f.kapPosition + f.kapStepRate;
}

std::size_t swungStep(const RhythmFields& f)
{
    const float e = 2.0f * std::trunc(f.kapPosition * 0.5f);
    const float r = (f.kapPosition - e) * 0.5f;
    const float swung = f.kapSwing > r ? r * f.kapSwingA : (r - f.kapSwing) * f.kapSwingB + 0.5f;
    return static_cast<std::size_t>(truncateTo(swung * 2.0f + e, 0, 31)) & 15;
}
} // namespace

void autoPanUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.panWave = discreteChoice(p[0], 4.99f);
    slot.panAmount = p[1] * 0.5f;
    slot.panSmooth = std::exp2(p[2] * -13.0f);
    slot.panInc = lfoInc(slot, p[3], p[4]);
}

void autoPanProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    RhythmFields f = slot;

    for (int t = 0; t < num; ++t)
    {
        f.panPhase = lfoAdvance(f.panPhase, f.panInc);
        f.panTarget = lfoWave(f.panWave, f.panPhase >> 8) * f.panAmount + 0.5f;
        f.panNow = glideGain(f.panNow, f.panTarget, f.panSmooth);
        const float g = 2.0f * f.panNow;
        wetLeft[t] = clampUnit(2.0f - g) * x[t];
        wetRight[t] = clampUnit(g) * y[t];
    }

    static_cast<RhythmFields&>(slot) = f;
}

void tremeloUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.tremWave = discreteChoice(p[0], 4.99f);
    slot.tremAmount = p[1] * 0.5f;
    slot.tremSmooth = std::exp2(p[2] * -13.0f);
    slot.tremInc = lfoInc(slot, p[3], p[4]);
}

void tremeloProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    RhythmFields f = slot;

    for (int t = 0; t < num; ++t)
    {
        f.tremPhase = lfoAdvance(f.tremPhase, f.tremInc);
        f.tremTarget = lfoWave(f.tremWave, f.tremPhase >> 8) * f.tremAmount + (1.0f - f.tremAmount);
        f.tremNow = glideGain(f.tremNow, f.tremTarget, f.tremSmooth);
        wetLeft[t] = x[t] * f.tremNow;
        wetRight[t] = y[t] * f.tremNow;
    }

    static_cast<RhythmFields&>(slot) = f;
}

void kappelUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.kapSpeedFactor = kappelSpeedTable[static_cast<std::size_t>(lfoSyncIndex(p[0]))].value;
    slot.kapStepCount = 16;
    slot.kapStepRate = slot.bpm * 2.0f / 15.0f * slot.invSampleRate * slot.kapSpeedFactor;
    slot.kapSmoothC = std::exp2(12.0f - (1.0f - p[1]) * 20.0f);
    slot.kapSmoothK = 1.0f / (slot.kapSmoothC + 1.0f);
    slot.kapSwing = p[4] * 0.5f + 0.5f;
    slot.kapSwingA = 0.5f / slot.kapSwing;
    slot.kapSwingB = 0.5f / (1.0f - slot.kapSwing); // infinite at full swing, where it is never used
    slot.kapChannelMode = discreteChoice(p[2], 2.99f);
    slot.kapSyncMode = discreteChoice(p[3], 2.99f);
    slot.kapMaskLeft = p[5];
    slot.kapMaskRight = p[6];
    unpackSteps(p[5], slot.kapStepsL);
    unpackSteps(p[6], slot.kapStepsR);
}

void kappelProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    RhythmFields f = slot;

    for (int t = 0; t < num; ++t)
    {
        wetLeft[t] = x[t] + fxTiny;
        wetRight[t] = y[t] + fxTiny;

        f.kapPosition = nextPosition(f, slot);
        f.kapPosition -= std::floor(f.kapPosition / 16.0f) * 16.0f;
        const std::size_t s = swungStep(f);

        f.kapStepNowL = f.kapStepsL[s] + fxTiny;
        f.kapStepNowR = f.kapStepsR[s] + fxTiny;
        f.kapGainL = (f.kapSmoothC * f.kapGainL + f.kapStepNowL) * f.kapSmoothK + fxTiny;
        f.kapGainR = (f.kapSmoothC * f.kapGainR + f.kapStepNowR) * f.kapSmoothK + fxTiny;

        if (f.kapChannelMode != 2)
            wetLeft[t] = x[t] * f.kapGainL + fxTiny;
        if (f.kapChannelMode != 1)
            wetRight[t] = y[t] * f.kapGainR + fxTiny;
    }

    static_cast<RhythmFields&>(slot) = f;
}
} // namespace quorel
