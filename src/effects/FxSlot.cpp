// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FxSlot.h"

#include "effects/EffectMath.h"
#include "effects/FxEngines.h"

namespace quorel
{
namespace
{
float usableRate(float sampleRate)
{
    return sampleRate >= 1000.0f && sampleRate <= 1.0e6f ? sampleRate : 44100.0f;
}

float usableTempo(float bpm)
{
    return bpm > 0.0f ? std::min(std::max(bpm, 0.001f), 1.0e6f) : 120.0f;
}

const FxEngine& engineOf(const FxSlot& slot)
{
    return fxEngines[static_cast<std::size_t>(slot.type)];
}

void retuneReverb(FxSlot& slot, float rate)
{
    for (ReverbUnit& unit : slot.reverb)
    {
        unit.sampleRate = rate;
        reverbSetSampleRate(unit);
    }
}

/** Puts the settings and states of every type at rest; what is in the lines stays. */
void restStates(FxSlot& slot)
{
    slot.tone = {};
    slot.svf = {};
    static_cast<FxStates&>(slot) = {};
}

void prepareMix(FxSlot& slot)
{
    const float mix = clampUnit(slot.mix);
    slot.dryScale = clampUnit(2.0f - 2.0f * mix);
    slot.wetScale = clampUnit(2.0f * mix);
    slot.wetGainL = slot.gainLeft * slot.wetScale;
    slot.dryGainL = slot.gainLeft * slot.dryScale;
    slot.wetGainR = slot.gainRight * slot.wetScale;
    slot.dryGainR = slot.gainRight * slot.dryScale;
}

// Delay reads take writeCount as a signed number and are silent below 0, as they must be while the lines
// fill. Stepping back by 2^30 long before the sign turns leaves every masked position where it was.
void keepCountPositive(FxSlot& slot)
{
    if (slot.writeCount >= 0x7fff0000u)
        slot.writeCount -= 0x40000000u;
}

void countSilence(FxSlot& slot, const float* x, const float* y, const float* left, const float* right,
                  int num)
{
    const auto loudAt = [=](int i)
    {
        return static_cast<int>(!(std::abs(x[i]) < 1e-5f)) | static_cast<int>(!(std::abs(y[i]) < 1e-5f)) |
               static_cast<int>(!(std::abs(left[i]) < 1e-5f)) |
               static_cast<int>(!(std::abs(right[i]) < 1e-5f));
    };

    int loud = 0;
    for (int i = 0; i < num; ++i)
        loud |= loudAt(i);

    if (loud == 0)
    {
        slot.silenceCount = std::min(slot.silenceCount, 0x7fffffff - num) + num;
        return;
    }

    slot.silenceCount = 0;
    for (int i = num - 1; loudAt(i) == 0; --i)
        ++slot.silenceCount;
}

void processChunk(FxSlot& slot, float* left, float* right, int num)
{
    float x[fxChunk], y[fxChunk], wetL[fxChunk], wetR[fxChunk];

    for (int i = 0; i < num; ++i)
    {
        x[i] = audible(left[i]) + fxTiny;
        y[i] = audible(right[i]) + fxTiny;
    }

    keepCountPositive(slot);

    if (const FxEngine& engine = engineOf(slot); engine.process != nullptr)
    {
        slot.memory.noteUse(engine.use);
        engine.process(slot, x, y, wetL, wetR, num);
        slot.wetLeft = wetL[num - 1];
        slot.wetRight = wetR[num - 1];
    }
    else
    {
        std::fill(wetL, wetL + num, slot.wetLeft);
        std::fill(wetR, wetR + num, slot.wetRight);
    }

    slot.sampleCount += static_cast<std::uint32_t>(num);
    slot.writeCount += static_cast<std::uint32_t>(num);

    const float wetGainL = slot.wetGainL, dryGainL = slot.dryGainL;
    const float wetGainR = slot.wetGainR, dryGainR = slot.dryGainR, outLevel = slot.outLevel;

    for (int i = 0; i < num; ++i)
    {
        left[i] = (wetL[i] * wetGainL + x[i] * dryGainL) * outLevel + fxTiny;
        right[i] = (wetR[i] * wetGainR + y[i] * dryGainR) * outLevel + fxTiny;
    }

    countSilence(slot, x, y, left, right, num);
}
} // namespace

void fxConstruct(FxSlot& slot, const FxPages& pages)
{
    slot.memory.take(pages);
    slot.sines = &sineTables();
    slot.tape.reel = &slot.memory->shared.tape;
    slot.filterCore.comb = &slot.memory->filterComb;
    for (int u = 0; u < 3; ++u)
        slot.reverb[u].cells = &slot.memory->shared.reverb.units[u];

    retuneReverb(slot, slot.sampleRate);
    filterConstruct(slot.filterCore);
    filterInit(slot.filterCore, slot.sampleRate);
    restStates(slot);
}

void fxInit(FxSlot& slot, float sampleRate)
{
    const float rate = usableRate(sampleRate);
    if (rate != slot.sampleRate)
        retuneReverb(slot, rate);

    slot.sampleRate = rate;
    slot.bpm = 120.0f;
    slot.samplesPerWhole = rate * 240.0f / 120.0f;
    slot.invSampleRate = 1.0f / rate;
    slot.silenceCount = 0;
    slot.transportPlaying = 0;
    slot.songPosition = 0.0f;
    slot.type = std::min(std::max(slot.type, 0), fxTypeCount - 1);

    if (const auto clear = engineOf(slot).clear)
        clear(slot);

    slot.wetLeft = 0.0f;
    slot.wetRight = 0.0f;
    filterInit(slot.filterCore, rate);
    restStates(slot);
}

void fxUpdate(FxSlot& slot, const float p[fxParameterCount], float bpm)
{
    if (slot.type == 0)
        return;

    slot.bpm = usableTempo(bpm);
    slot.samplesPerWhole = slot.sampleRate * 240.0f / slot.bpm;

    for (int j = 0; j < fxParameterCount; ++j)
        slot.param[j] = slot.paramCopy[j] = clampUnit(p[j]);

    if (const auto update = engineOf(slot).update)
        update(slot);
}

void fxSetMix(FxSlot& slot, float volume, float mix, float pan)
{
    const float v = clampUnit(volume);
    const float p = clampUnit(pan);
    slot.outLevel = static_cast<double>(v) < 0.001 ? 0.0f : std::pow(10.0f, (v * 80.0f - 60.0f) / 20.0f);
    slot.gainLeft = std::min(1.0f, 2.0f - 2.0f * p);
    slot.gainRight = std::min(1.0f, 2.0f * p);
    slot.mix = mix;
}

void fxProcessSample(FxSlot& slot, float inL, float inR, float* outL, float* outR)
{
    *outL = inL;
    *outR = inR;
    fxProcessBlock(slot, outL, outR, 1);
}

void fxProcessBlock(FxSlot& slot, float* left, float* right, int numSamples)
{
    prepareMix(slot);

    for (int start = 0; start < numSamples; start += fxChunk)
        processChunk(slot, left + start, right + start, std::min(fxChunk, numSamples - start));
}
} // namespace quorel
