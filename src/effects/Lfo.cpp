// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/Lfo.h"

#include "effects/EffectMath.h"
#include "effects/FxContext.h"
#include "effects/SyncTables.h"

namespace quorel
{
namespace
{
std::uint32_t toIncrement(float x)
{
    return static_cast<std::uint32_t>(truncateTo(x, 0, 0x7fffff80));
}

SineTables filledSineTables()
{
    SineTables tables;
    for (int i = 0; i < fxSineLength; ++i)
    {
        const float sine = std::sin(static_cast<float>(i) * 1.5258789e-5f * 2.0f * 3.1415925f);
        tables.bipolar[i] = sine;
        tables.unipolar[i] = sine * 0.5f + 0.5f;
    }

    return tables;
}
} // namespace

const SineTables& sineTables()
{
    static const SineTables tables = filledSineTables();
    return tables;
}

float lfoWave(int wave, std::uint32_t u)
{
    const float turn = static_cast<float>(u) * 1.5258789e-5f;
    const float t = turn * 2.0f;

    switch (wave)
    {
    case 0:
        return std::sin(t * 3.1415925f);
    case 1:
        return 1.0f - std::abs(1.0f - t) * 2.0f;
    case 2:
        return t - 1.0f;
    case 3:
        return 1.0f - t;
    default:
        return turn < 0.5f ? -1.0f : 1.0f;
    }
}

std::uint32_t lfoIncFree(float p, float invSampleRate)
{
    return toIncrement(std::exp2(10.0f * p) * invSampleRate * 112640.0f);
}

std::uint32_t lfoIncTempo(float p, float sampleRate, float bpm)
{
    const float wholeNotes = lfoSyncTable[static_cast<std::size_t>(lfoSyncIndex(p))].value;
    return toIncrement(4194303.8f / (wholeNotes * 120.0f * sampleRate / bpm + 1.0f));
}

std::uint32_t lfoInc(const FxContext& c, float p, float pSync)
{
    return pSync >= 0.5f ? lfoIncTempo(p, c.sampleRate, c.bpm) : lfoIncFree(p, c.invSampleRate);
}

std::uint32_t delayModRate(float p, float invSampleRate)
{
    return toIncrement(std::exp2(10.0f * p) * invSampleRate * 7208960.0f);
}
} // namespace quorel
