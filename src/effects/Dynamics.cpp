// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/Dynamics.h"

#include "effects/EffectMath.h"
#include "effects/FxContext.h"
#include "effects/QuadMath.h"

namespace quorel
{
namespace
{
/** Turns envelopes into the gains that they ask for, four at a time: 1 up to the threshold. */
void compressedGains(const CompressorState& f, float* values, int num)
{
    // Two loops, as a processor can't look far enough ahead to overlap turns of both at once.
    float powers[2 * fxChunk + 2];

    for (int i = 0; i < num; i += 4)
    {
        const Quad level = larger(loadQuad(values + i), quadOf(f.thresholdLin));
        const Quad decades = joined(log2Of(firstPair(level)) * 0.30102999566398119521,
                                    log2Of(lastPair(level)) * 0.30102999566398119521);
        storeQuad(powers + i, (f.thresholdDb - 20.0f * decades) * f.slope * 0.05f);
    }

    for (int i = 0; i < num; i += 4)
    {
        const Quad power = loadQuad(powers + i);
        const Quad gain = joined(exp2Of(firstPair(power) * 3.32192809488736234787),
                                 exp2Of(lastPair(power) * 3.32192809488736234787));
        storeQuad(values + i, loadQuad(values + i) > f.thresholdLin ? gain : quadOf(1.0f));
    }
}

/** Settings and state of one gate while it runs over a block. */
struct GateRun
{
    float threshold, attackStep, holdSamples, decayStep;
    float env, gain, hold;
    std::int32_t state;

    GateRun(const GateState& f, int index)
        : threshold(f.threshold)
        , attackStep(f.attackStep)
        , holdSamples(f.holdSamples)
        , decayStep(f.decayStep)
        , env(f.env[index])
        , gain(f.gain[index])
        , hold(f.hold[index])
        , state(f.state[index])
    {
    }

    void store(GateState& f, int index) const
    {
        f.env[index] = env;
        f.gain[index] = gain;
        f.hold[index] = hold;
        f.state[index] = state;
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

void compressorUpdate(CompressorState& f, FxContext& c)
{
    const float* p = c.param;
    f.thresholdDb = p[0] * 40.0f - 40.0f;
    f.thresholdLin = std::pow(10.0f, f.thresholdDb / 20.0f);
    f.slope = 1.0f / std::exp2((1.0f - p[1]) * 7.0f);
    f.attack = std::exp(-1000.0f / (std::exp2(p[2] * 7.0f) * c.sampleRate));
    f.release = std::exp(-1000.0f / (std::exp2(p[3] * 10.0f) * c.sampleRate));
    f.post = levelGain(p[4], 40.0f, -20.0f);
}

void compressorProcess(CompressorState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                       float* wetRight, int num)
{
    const float attack = f.attack, release = f.release;
    float gains[2 * fxChunk + 2]; // first the envelopes, left and right in turn
    Quad envelope = {f.env[0], f.env[1], 0.0f, 0.0f}, peak = {f.peak[0], f.peak[1], 0.0f, 0.0f};
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

    f.env[0] = envelope[0];
    f.env[1] = envelope[1];
    f.peak[0] = peak[0];
    f.peak[1] = peak[1];

    if (loudest[0] > f.thresholdLin || loudest[1] > f.thresholdLin)
        compressedGains(f, gains, 2 * num);
    else
        std::fill(gains, gains + 2 * num, 1.0f);

    Quad gain = {f.gain[0], f.gain[1], 0.0f, 0.0f};
    const float post = f.post;

    for (int t = 0; t < num; ++t)
    {
        const auto i = (c.sampleCount + 1 + static_cast<std::uint32_t>(t)) & 255;
        gain = (1.0f - attack) * Quad{gains[2 * t], gains[2 * t + 1], 0.0f, 0.0f} + attack * gain;
        wetLeft[t] = post * gain[0] * f.lookL[i];
        wetRight[t] = post * gain[1] * f.lookR[i];
        f.lookL[i] = x[t];
        f.lookR[i] = y[t];
    }

    f.gain[0] = gain[0];
    f.gain[1] = gain[1];
}

void noiseGateUpdate(GateState& f, FxContext& c)
{
    const float* p = c.param;
    f.threshold = levelGain(p[0], 40.0f, -40.0f);
    f.attackStep = 1000.0f / (std::exp2(p[1] * 8.0f) * c.sampleRate);
    f.holdSamples = std::exp2(p[2] * 14.0f) / 1000.0f * c.sampleRate;
    f.decayStep = 1000.0f / (std::exp2(p[3] * 14.0f) * c.sampleRate);
}

void noiseGateProcess(GateState& f, FxContext&, const float* x, const float* y, float* wetLeft,
                      float* wetRight, int num)
{
    GateRun left(f, 0), right(f, 1);

    for (int t = 0; t < num; ++t)
    {
        wetLeft[t] = x[t] * left.step(std::abs(x[t]));
        wetRight[t] = y[t] * right.step(std::abs(y[t]));
    }

    left.store(f, 0);
    right.store(f, 1);
}

void gateLinked(GateState& gate, float* left, float* right, int num)
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
