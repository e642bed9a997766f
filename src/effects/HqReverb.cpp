// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/HqReverb.h"

#include "effects/EffectMath.h"
#include "effects/FxContext.h"

namespace quorel
{
namespace
{
constexpr float lengthModDepth = 0.002f;
constexpr std::uint32_t ringMask = fxAuxRingLength - 1;
} // namespace

void hqReverbUpdate(HqReverbState& f, ReverbUnit* units, FxContext& c)
{
    const float* p = c.param;
    f.preDelaySamples = truncateTo(std::exp2(10.0f * p[0]) / 2000.0f * c.sampleRate + 1.0f, 0, 65535);

    const auto count = static_cast<float>(c.sampleCount);
    const float rate1 = std::exp2(0.2f) * 3e-7f * 44100.0f / c.sampleRate;
    const float rate2 = std::exp2(0.22f) * 3e-7f * 44100.0f / c.sampleRate;
    const float m1 = std::sin(count * 6.28318f * rate1) * lengthModDepth + 1.0f;
    const float m2 = std::sin(count * 6.28318f * rate2) * lengthModDepth + 1.0f;
    const float scale = std::exp2(p[2] * 8.0f - 6.0f);
    const float scales[] = {scale, scale * 1.1f, scale * 0.9f};

    for (int u = 0; u < 3; ++u)
    {
        ReverbUnit& unit = units[u];
        for (int i = 0; i < 10; ++i)
            unit.combScale[i] = i % 2 == 0 ? m1 : m2;

        reverbSetFeedback(unit, p[1]);
        reverbSetDamping(unit, p[3]);
        reverbSetLength(unit, scales[u]);
        reverbSetTone(unit, p[5], p[6]);
    }

    f.spreadSamples = truncateTo(std::exp2(std::sqrt(p[4]) * 13.0f) - 1.0f, 0, 65535);
    f.gate.threshold = levelGain(p[7], 60.0f, -60.0f);
    f.gate.attackStep = 1.0f;
    f.gate.holdSamples = std::exp2(14.0f * p[8]) / 1000.0f * c.sampleRate;
    f.gate.decayStep = 1000.0f / (std::exp2(14.0f * p[9]) * c.sampleRate);
}

void hqReverbProcess(HqReverbState& f, ReverbUnit* units, FxContext& c, const float* x, const float* y,
                     float* wetLeft, float* wetRight, int num)
{
    float inL[fxChunk] = {}, inR[fxChunk] = {};
    float* auxRing = c.memory->shared.reverb.auxRing;
    const auto first = c.writeCount + 1;

    for (int t = 0; t < num; ++t)
    {
        const auto count = first + static_cast<std::uint32_t>(t);
        const int n = static_cast<int>(count) - f.preDelaySamples;
        const auto from = static_cast<std::uint32_t>(n) & ringMask;
        c.memory->lineL[count & ringMask] = x[t];
        c.memory->lineR[count & ringMask] = y[t];
        inL[t] = n >= 0 ? c.memory->lineL[from] : 0.0f;
        inR[t] = n >= 0 ? c.memory->lineR[from] : 0.0f;
    }

    reverbProcess(units, 3, inL, inR, wetLeft, wetRight, num);

    for (int t = 0; t < num; ++t)
    {
        const auto count = first + static_cast<std::uint32_t>(t);
        auxRing[count & ringMask] = wetRight[t] * 0.577f + fxTiny;
        wetLeft[t] = wetLeft[t] * 0.577f + fxTiny;
        wetRight[t] = auxRing[(count - static_cast<std::uint32_t>(f.spreadSamples)) & ringMask];
    }

    gateLinked(f.gate, wetLeft, wetRight, num);
}
} // namespace quorel
