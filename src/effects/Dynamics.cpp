// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/Dynamics.h"

#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
#include "effects/QuadMath.h"

namespace quorel
{
namespace
{
/** Turns envelopes into the gains that they ask for, four at a time: 1 up to the threshold. */
void compressedGains(const CompressorFields& f, float* values, int num)
{
    // Two loops, as a processor can't look far enough ahead to overlap turns of both at once.
    float powers[2 * fxChunk + 2];

    for (int i = 0; i < num; i += 4)
    {
        const Quad level = larger(loadQuad(values + i), quadOf(f.compThresholdLin));
        const Quad decades = joined(log2Of(firstPair(level)) * 0.30102999566398119521,
                                    log2Of(lastPair(level)) * 0.30102999566398119521);
        storeQuad(powers + i, (f.compThresholdDb - 20.0f * decades) * f.compSlope * 0.05f);
    }

    for (int i = 0; i < num; i += 4)
    {
        const Quad power = loadQuad(powers + i);
        const Quad gain = joined(exp2Of(firstPair(power) * 3.32192809488736234787),
                                 exp2Of(lastPair(power) * 3.32192809488736234787));
        storeQuad(values + i, loadQuad(values + i) > f.compThresholdLin ? gain : quadOf(1.0f));
    }
}

/** Settings and state of one gate while it runs over a block. */
struct GateRun
{
    float threshold, attackStep, holdSamples, decayStep;
    float env, gain, hold;
    std::int32_t state;

    GateRun(const GateFields& f, int index)
        : threshold(f.gateThreshold)
        , attackStep(f.gateAttackStep)
        , holdSamples(f.gateHoldSamples)
        , decayStep(f.gateDecayStep)
        , env(f.gateEnv[index])
        , gain(f.gateGain[index])
        , hold(f.gateHold[index])
        , state(f.gateState[index])
    {
    }

    void store(GateFields& f, int index) const
    {
        f.gateEnv[index] = env;
        f.gateGain[index] = gain;
        f.gateHold[index] = hold;
        f.gateState[index] = state;
    }

    // Each test looks at the state as the one before has left it, so one sample may open the gate and hold
    // it.
    float step(float v)
    {
        env = v > env ? v : env * 0.9999f + v * 0.0001f + fxTiny;

        if (state == 1 && env >= threshold)
            state = 2;

        if (state == 2)
        {
            gain += attackStep;
            if (gain >= 1.0f)
            {
                gain = 1.0f;
                hold = holdSamples;
                state = 3;
            }
        }

        if (state == 3)
        {
            hold -= 1.0f;
            if (hold < 0.0f && env < threshold)
                state = 4;
        }

        if (state == 4)
        {
            gain -= decayStep;
            if (env > threshold)
                state = 2;

            if (gain <= 0.0f)
            {
                gain = 0.0f;
                state = 1;
            }
        }

        return gain;
    }
};
} // namespace

void compressorUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.compThresholdDb = p[0] * 40.0f - 40.0f;
    slot.compThresholdLin = std::pow(10.0f, slot.compThresholdDb / 20.0f);
    slot.compSlope = 1.0f / std::exp2((1.0f - p[1]) * 7.0f);
    slot.compAttack = std::exp(-1000.0f / (std::exp2(p[2] * 7.0f) * slot.sampleRate));
    slot.compRelease = std::exp(-1000.0f / (std::exp2(p[3] * 10.0f) * slot.sampleRate));
    slot.compPost = levelGain(p[4], 40.0f, -20.0f);
}

void compressorProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    CompressorFields& f = slot;
    const float attack = f.compAttack, release = f.compRelease;
    float gains[2 * fxChunk + 2]; // first the envelopes, left and right in turn
    Quad envelope = {f.compEnv[0], f.compEnv[1], 0.0f, 0.0f},
         peak = {f.compPeak[0], f.compPeak[1], 0.0f, 0.0f};
    Quad loudest = quadOf(0.0f);

    for (int t = 0; t < num; ++t)
    {
        const Quad level = magnitude(Quad{x[t], y[t], 0.0f, 0.0f});
        const Quad rising = (1.0f - attack) * peak + attack * envelope;
        const Quad falling = (1.0f - release) * peak + release * envelope;
        const Quad decayed = level * 0.001f + peak * 0.999f + fxTiny;
        envelope = peak > envelope ? rising : falling;
        peak = level > peak ? level : decayed;
        loudest = larger(loudest, envelope);
        storeQuad(gains + 2 * t, envelope);
    }

    f.compEnv[0] = envelope[0];
    f.compEnv[1] = envelope[1];
    f.compPeak[0] = peak[0];
    f.compPeak[1] = peak[1];

    if (loudest[0] > f.compThresholdLin || loudest[1] > f.compThresholdLin)
        compressedGains(f, gains, 2 * num);
    else
        std::fill(gains, gains + 2 * num, 1.0f);

    Quad gain = {f.compGain[0], f.compGain[1], 0.0f, 0.0f};
    const float post = f.compPost;

    for (int t = 0; t < num; ++t)
    {
        const auto i = (slot.sampleCount + 1 + static_cast<std::uint32_t>(t)) & 255;
        gain = (1.0f - attack) * Quad{gains[2 * t], gains[2 * t + 1], 0.0f, 0.0f} + attack * gain;
        wetLeft[t] = post * gain[0] * f.compLookL[i];
        wetRight[t] = post * gain[1] * f.compLookR[i];
        f.compLookL[i] = x[t];
        f.compLookR[i] = y[t];
    }

    f.compGain[0] = gain[0];
    f.compGain[1] = gain[1];
}

void noiseGateUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.gateThreshold = levelGain(p[0], 40.0f, -40.0f);
    slot.gateAttackStep = 1000.0f / (std::exp2(p[1] * 8.0f) * slot.sampleRate);
    slot.gateHoldSamples = std::exp2(p[2] * 14.0f) / 1000.0f * slot.sampleRate;
    slot.gateDecayStep = 1000.0f / (std::exp2(p[3] * 14.0f) * slot.sampleRate);
}

void noiseGateProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    GateRun left(slot, 0), right(slot, 1);

    for (int t = 0; t < num; ++t)
    {
        wetLeft[t] = x[t] * left.step(std::abs(x[t]));
        wetRight[t] = y[t] * right.step(std::abs(y[t]));
    }

    left.store(slot, 0);
    right.store(slot, 1);
}

void gateLinked(GateFields& gate, float* left, float* right, int num)
{
    GateRun run(gate, 0);

    for (int t = 0; t < num; ++t)
    {
        const float gain = run.step(std::max(std::abs(left[t]), std::abs(right[t])));
        left[t] = left[t] * gain;
        right[t] = right[t] * gain;
    }

    run.store(gate, 0);
}
} // namespace quorel
