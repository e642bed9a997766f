// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/Dynamics.h"

#include "effects/EffectMath.h"
#include "effects/FxSlot.h"

namespace quorel
{
namespace
{
float compressorGain(CompressorFields& f, int c, float v)
{
    const float level = std::abs(v);
    const float coefficient = f.compPeak[c] > f.compEnv[c] ? f.compAttack : f.compRelease;
    f.compEnv[c] = (1.0f - coefficient) * f.compPeak[c] + coefficient * f.compEnv[c];
    f.compPeak[c] = level > f.compPeak[c] ? level : level * 0.001f + f.compPeak[c] * 0.999f + fxTiny;

    float target = 1.0f;
    if (f.compEnv[c] > f.compThresholdLin)
        target =
            std::pow(10.0f, (f.compThresholdDb - 20.0f * std::log10(f.compEnv[c])) * f.compSlope * 0.05f);

    f.compGain[c] = (1.0f - f.compAttack) * target + f.compAttack * f.compGain[c];
    return f.compGain[c];
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
    for (int t = 0; t < num; ++t)
    {
        const auto i = (slot.sampleCount + 1 + static_cast<std::uint32_t>(t)) & 255;
        const float a = slot.compLookL[i], b = slot.compLookR[i];
        slot.compLookL[i] = x[t];
        slot.compLookR[i] = y[t];
        wetLeft[t] = slot.compPost * compressorGain(slot, 0, x[t]) * a;
        wetRight[t] = slot.compPost * compressorGain(slot, 1, y[t]) * b;
    }
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
