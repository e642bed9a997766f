// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/TapeLine.h"

#include "effects/DelayLine.h"
#include "effects/EffectMath.h"
#include "effects/SyncTables.h"
#include "effects/TapeRun.h"

namespace quorel
{
namespace
{
float signOf(float x)
{
    return x > 0.0f ? 1.0f : (x < 0.0f ? -1.0f : 0.0f);
}

float equalisedFeedback(float other, float ownLength, float otherLength)
{
    return signOf(other) * std::exp(ownLength / (otherLength + 1.0f) * std::log(std::abs(other) + 0.0001f));
}

float limitedLength(float samples)
{
    return std::min(std::max(samples, 1.0f), 262143.0f);
}
} // namespace

void TapeHead::windBack(double distance)
{
    unwoundLater = later;
    unwoundTime = nextTime;
    time -= distance;
    nextTime -= distance;
}

void tapeInit(TapeLine& tape, float sampleRate)
{
    tape.guard = 1;
    tape.feedEqual = 0;
    tape.syncOn = 0;
    tape.filterOn = 0;
    tape.sampleRate = sampleRate;
    tape.minCutoff = 20.0f / sampleRate;
    tape.samplesPerMs = sampleRate / 1000.0f;
    tape.invSampleRate = 1.0f / sampleRate;
    tape.posL = tape.posR = 0.0;
    tape.primedL = tape.primedR = 0;
    tape.headL = tape.headR = {};
    tape.back = 1;
    tape.baseL = tape.baseR = 100.0f;
    tape.delayL = tape.delayR = std::numeric_limits<float>::infinity();
    tape.feedbackL = tape.feedbackR = tape.crossL = tape.crossR = 0.0f;
    tape.lpCoef = 1.0f;
    tape.hpCoef = 0.0f;
    tape.lpL = tape.lpR = tape.hpL = tape.hpR = 0.0f;
    tape.samplesPerWhole = sampleRate * 2.0f;
    tape.guard = 0;
}

void tapeSetLengths(TapeLine& tape, float pL, float pR, float extraL, float extraR, float mod)
{
    if (tape.syncOn)
    {
        tape.baseL = syncedDelay(pL, tape.samplesPerWhole);
        tape.baseR = syncedDelay(pR, tape.samplesPerWhole);
    }
    else
    {
        tape.baseL = std::exp2(12.0f * pL) * tape.samplesPerMs + 1.0f;
        tape.baseR = std::exp2(12.0f * pR) * tape.samplesPerMs + 1.0f;
    }

    tape.delayL = limitedLength((extraL + tape.baseL) * mod);
    tape.delayR = limitedLength((extraR + tape.baseR) * mod);
}

void tapeSetDistances(TapeLine& tape, float left, float right)
{
    tape.delayL = tape.baseL = std::max(left, 1.0e-3f);
    tape.delayR = tape.baseR = std::max(right, 1.0e-3f);
}

void tapeSetFeedback(TapeLine& tape, float feedback, float cross)
{
    tape.feedbackL = tape.feedbackR = clampUnit(feedback);
    tape.crossL = tape.crossR = cross;

    if (tape.feedEqual == 0)
    {
        const float s = std::max(1.0f, std::abs(tape.feedbackL) + std::abs(tape.crossL) + 0.0001f);
        tape.feedbackL = tape.feedbackR = tape.feedbackL / s + fxTiny;
        tape.crossL = tape.crossR = tape.crossL / s + fxTiny;
        return;
    }

    tape.crossL = tape.crossR = 0.0f;
    if (tape.baseL > tape.baseR)
        tape.feedbackR = equalisedFeedback(tape.feedbackL, tape.baseR, tape.baseL);
    else
        tape.feedbackL = equalisedFeedback(tape.feedbackR, tape.baseL, tape.baseR);
}

void tapeSetFilter(TapeLine& tape, float pLow, float pHigh)
{
    tape.filterOn = pLow > 0.999f && pHigh < 0.0001f ? 0 : 1;
    if (tape.filterOn == 0)
        return;

    const auto coefficient = [&tape](float p)
    {
        const float c = std::exp2(10.0f * p) * 20.0f * tape.invSampleRate;
        return 2.0f * std::min(std::max(c, tape.minCutoff), 0.2f);
    };

    tape.lpCoef = coefficient(pLow);
    tape.hpCoef = coefficient(pHigh);
}

void tapeProcess(TapeLine& tape, float inL, float inR, float& outL, float& outR)
{
    TapeRun run(tape);
    const Quad out = run.process<false>(Quad{inL, inR, 0.0f, 0.0f}, run.step());
    run.store();
    outL = out[0];
    outR = out[1];
}
} // namespace quorel
