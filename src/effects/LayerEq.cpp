// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/LayerEq.h"

#include "effects/EffectMath.h"
#include "effects/LayerEqLanes.h"
#include "effects/LayerEqWide.h"

namespace quorel
{
namespace
{
// Rounding can carry the poles of a band far below the sample rate onto or past z = 1; one step of a float
// back is enough to keep them inside.
float stableCoefficient(float b1, float a2)
{
    while (1.0 + static_cast<double>(b1) + static_cast<double>(a2) <= 0.0)
        b1 = std::nextafter(b1, 0.0f);

    return b1;
}

bool usableRate(float sampleRate)
{
    return sampleRate >= 1.0f && sampleRate <= 1.0e6f;
}

void setLadder(EqLadder& ladder, float p, float sampleRate)
{
    const double rate = static_cast<double>(sampleRate);
    const double hz = std::exp2(static_cast<double>(clampUnit(p)) * 10.0) * 20.0;
    double g = hz / (rate * 2.0) * 2.0;

    // A pole at or past half the doubled rate would ring for ever; only rates below 20.5 kHz come here.
    if (g >= 1.0)
        g = 0.95;

    const double u = 1.0 - g;
    const double pole = u * g + g;
    ladder.scale = 2.0 * pole - 1.0 + ladderTiny;
    ladder.p = pole + ladderTiny;
    ladder.feedback = ladderTiny;
}

void clearStates(EqLadder& ladder)
{
    const EqLadder old = ladder;
    ladder = {};
    ladder.scale = old.scale;
    ladder.feedback = old.feedback;
    ladder.p = old.p;
}

/** True where the settings are those of the last time. A setting that is no number never is. */
bool isSet(LayerEq::Settings& last, const LayerEq::Settings& wanted)
{
    if (last.rate == wanted.rate && last.a == wanted.a && last.b == wanted.b && last.c == wanted.c)
        return true;

    last = wanted;
    return false;
}

using ProcessChunk = void (*)(const EqBlock* blocks, int numBlocks, int start, int num);

/** Chosen when the library is loaded, so that no block has to ask. */
const ProcessChunk processChunk = wideLanesWork() ? processWideLanes : processBaselineLanes;
} // namespace

void processBaselineLanes(const EqBlock* blocks, int numBlocks, int start, int num)
{
    processLanes<BaselineLanes>(blocks, numBlocks, start, num);
}

void eqInit(LayerEq& eq, float sampleRate)
{
    eq = {};
    if (usableRate(sampleRate))
        eq.sampleRate = sampleRate;
}

void eqSetSampleRate(LayerEq& eq, float sampleRate)
{
    if (usableRate(sampleRate) && std::abs(sampleRate - eq.sampleRate) >= 1.0f)
        eq.sampleRate = sampleRate;
}

void eqSetBand(LayerEq& eq, int band, bool on, float pGain, float pFreq, float pQ)
{
    if (eq.enabled == 0 || band < 0 || band > 2)
        return;

    if (on != (eq.bandOn[band] != 0))
    {
        eq.bandOn[band] = on ? 1 : 0;
        eq.bandL[band] = {};
        eq.bandR[band] = {};
    }

    if (isSet(eq.bandSettings[band], {eq.sampleRate, pGain, pFreq, pQ}))
        return;

    const float gain = clampUnit(pGain) * 40.0f - 20.0f;
    const float f = std::min(std::exp2(clampUnit(pFreq) * 10.0f) * 20.0f / (eq.sampleRate * 2.0f), 0.3f);
    const float q = std::exp2(4.0f - clampUnit(pQ) * 10.0f);
    const float w = f * 6.28318f;
    const float a = std::pow(10.0f, gain / 40.0f);
    const float s = std::sin(w) / (2.0f * q);
    const float d = 1.0f + s / a;
    eq.a2[band] = (1.0f - s / a) / d + fxTiny;
    eq.b0[band] = (1.0f + s * a) / d + fxTiny;
    eq.b1[band] = stableCoefficient(-2.0f * std::cos(w) / d + fxTiny, eq.a2[band]);
    eq.a1[band] = eq.b1[band];
    eq.b2[band] = (1.0f - s * a) / d + fxTiny;
}

void eqSetFilters(LayerEq& eq, bool lpOn, float pLp, bool hpOn, float pHp)
{
    if (lpOn != (eq.lowPassOn != 0) || hpOn != (eq.highPassOn != 0))
    {
        eq.lowPassOn = lpOn ? 1 : 0;
        eq.highPassOn = hpOn ? 1 : 0;
        clearStates(eq.lowPass);
        clearStates(eq.highPass);
    }

    if (isSet(eq.filterSettings, {eq.sampleRate, pLp, pHp, 0.0f}))
        return;

    setLadder(eq.lowPass, pLp, eq.sampleRate);
    setLadder(eq.highPass, pHp, eq.sampleRate);
}

void eqProcess(LayerEq& eq, float* left, float* right)
{
    eqProcessBlock(eq, left, right, 1);
}

void eqProcessBlock(LayerEq& eq, float* left, float* right, int numSamples)
{
    const EqBlock block = {&eq, left, right};
    eqProcessBlocks(&block, 1, numSamples);
}

void eqProcessBlocks(const EqBlock* blocks, int numBlocks, int numSamples)
{
    EqBlock enabled[maxEqUnitsTogether];
    int count = 0;

    for (int i = 0; i < numBlocks && count < maxEqUnitsTogether; ++i)
        if (blocks[i].unit->enabled != 0)
            enabled[count++] = blocks[i];

    for (int start = 0; start < numSamples && count > 0; start += fxChunk)
        processChunk(enabled, count, start, std::min(fxChunk, numSamples - start));
}
} // namespace quorel
