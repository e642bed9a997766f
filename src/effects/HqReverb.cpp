// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/HqReverb.h"

#include "effects/EffectMath.h"
#include "effects/FxSlot.h"

namespace quorel
{
namespace
{
constexpr float lengthModDepth = 0.002f;
constexpr std::uint32_t ringMask = fxAuxRingLength - 1;
} // namespace

void reverbInit(FxSlot& slot)
{
    slot.lengthModRate1 = std::exp2(0.2f) * 3e-7f * 44100.0f / slot.sampleRate;
    slot.lengthModRate2 = std::exp2(0.22f) * 3e-7f * 44100.0f / slot.sampleRate;
}

void hqReverbClear(FxSlot& slot)
{
    for (ReverbUnit& unit : slot.reverb)
        reverbClear(unit);

    std::fill(std::begin(slot.auxRing), std::end(slot.auxRing), 0.0f);
}

void hqReverbUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.preDelaySamples = truncateTo(std::exp2(10.0f * p[0]) / 2000.0f * slot.sampleRate + 1.0f, 0, 65535);

    const auto count = static_cast<float>(slot.sampleCount);
    const float m1 = std::sin(count * 6.28318f * slot.lengthModRate1) * lengthModDepth + 1.0f;
    const float m2 = std::sin(count * 6.28318f * slot.lengthModRate2) * lengthModDepth + 1.0f;
    const float scale = std::exp2(p[2] * 8.0f - 6.0f);
    const float scales[] = {scale, scale * 1.1f, scale * 0.9f};

    for (int u = 0; u < 3; ++u)
    {
        ReverbUnit& unit = slot.reverb[u];
        for (int i = 0; i < 10; ++i)
            unit.combScale[i] = i % 2 == 0 ? m1 : m2;

        reverbSetFeedback(unit, p[1]);
        reverbSetDamping(unit, p[3]);
        reverbSetLength(unit, scales[u]);
        reverbSetTone(unit, p[5], p[6]);
    }

    slot.spreadSamples = truncateTo(std::exp2(std::sqrt(p[4]) * 13.0f) - 1.0f, 0, 65535);
    slot.gateThreshold = levelGain(p[7], 60.0f, -60.0f);
    slot.gateAttackStep = 1.0f;
    slot.gateHoldSamples = std::exp2(14.0f * p[8]) / 1000.0f * slot.sampleRate;
    slot.gateDecayStep = 1000.0f / (std::exp2(14.0f * p[9]) * slot.sampleRate);
}

void hqReverbProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    float inL[fxChunk] = {}, inR[fxChunk] = {};
    const auto first = slot.writeCount + 1;

    for (int t = 0; t < num; ++t)
    {
        const auto count = first + static_cast<std::uint32_t>(t);
        const int n = static_cast<int>(count) - slot.preDelaySamples;
        const auto from = static_cast<std::uint32_t>(n) & ringMask;
        slot.lineL[count & ringMask] = x[t];
        slot.lineR[count & ringMask] = y[t];
        inL[t] = n >= 0 ? slot.lineL[from] : 0.0f;
        inR[t] = n >= 0 ? slot.lineR[from] : 0.0f;
    }

    reverbProcess(slot.reverb, 3, inL, inR, wetLeft, wetRight, num);

    for (int t = 0; t < num; ++t)
    {
        const auto count = first + static_cast<std::uint32_t>(t);
        slot.auxRing[count & ringMask] = wetRight[t] * 0.577f + fxTiny;
        wetLeft[t] = wetLeft[t] * 0.577f + fxTiny;
        wetRight[t] = slot.auxRing[(count - static_cast<std::uint32_t>(slot.spreadSamples)) & ringMask];
    }

    gateLinked(slot, wetLeft, wetRight, num);
}
} // namespace quorel
