// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FilterCore.h"

#include "effects/DriveCurve.h"
#include "effects/FilterStages.h"

#include <iterator>

namespace quorel
{
namespace
{
constexpr float invSqrt2 = 0.70710678f;

float heldTo(float x, float limit)
{
    return std::min(std::max(x, -limit), limit);
}

struct Signal
{
    const float* inL;
    const float* inR;
    float* accL;
    float* accR;
    float preGain, postGain;
    const FilterStep* steps;
    int numSteps;
};

/** Runs a body, which makes an output pair of an input pair, between the input and the gain stage; load()
    takes over each step's coefficients. */
template <typename Load, typename Body>
[[gnu::always_inline]] inline void run(FilterCore& core, const Signal& s, Load load, Body body)
{
    const bool vowels = core.type >= filterVox && core.type <= filterForm4;
    const bool driven = core.driveOn != 0 && core.drive >= 0.0001f && !(core.vowelGuard != 0 && vowels);
    const Quad target = {core.gainTargetL, core.gainTargetR, 0.0f, 0.0f};
    Quad gain = {core.gainL, core.gainR, 0.0f, 0.0f};
    std::uint32_t counter = core.blockCounter;
    int t = 0;

    for (int step = 0; step < s.numSteps; ++step)
    {
        load(*s.steps[step].coefficients);

        for (const int end = t + s.steps[step].num; t < end; ++t)
        {
            Quad in = Quad{s.inL[t], s.inR[t], 0.0f, 0.0f};
            if (s.preGain != 1.0f)
                in = in / s.preGain;
            if (driven)
                in = driveCurve(in, core.drive);

            gain = gain * 0.99f + target * 0.00999999f + fxTiny;
            const Quad out = body(in, counter) * s.preGain * gain * s.postGain;
            ++counter;
            s.accL[t] += out[0];
            s.accR[t] += out[1];
        }
    }

    core.gainL = gain[0];
    core.gainR = gain[1];
    core.blockCounter = counter;
}

/** Runs the state-variable filter twice a sample and adds up what `pick` takes of it. */
template <typename Pick>
void runStateVariable(FilterCore& core, const Signal& s, float scale, Pick pick)
{
    StateVariableStage svf(core);
    run(
        core, s, [&](const FilterCoefficients& c) { svf.load(c); },
        [&](Quad in, std::uint32_t)
        {
            svf.tick(in);
            const Quad first = pick(svf);
            svf.tick(in);
            return (first + pick(svf)) * scale;
        });
    svf.store();
}

template <typename Pick>
void runLadder(FilterCore& core, const Signal& s, float scale, Pick pick)
{
    LadderStage ladder(core);
    run(
        core, s, [&](const FilterCoefficients& c) { ladder.load(c); },
        [&](Quad in, std::uint32_t counter)
        {
            ladder.tick(in);
            const Quad first = pick(ladder, in);
            ladder.tick(in);
            const Quad out = (first + pick(ladder, in)) * scale;
            if ((counter & 7) == 0)
                ladder.clamp();
            return out;
        });
    ladder.store();
}

void runSteepLadder(FilterCore& core, const Signal& s)
{
    BiquadStage biquad(core);
    LadderStage ladder(core);
    const bool highPass = core.type == filterHp36;
    run(
        core, s,
        [&](const FilterCoefficients& c)
        {
            biquad.load(c);
            ladder.load(c);
        },
        [&](Quad in, std::uint32_t counter)
        {
            ladder.tick(biquad.tick(in));
            const Quad first = ladder.s4;
            const Quad y = biquad.tick(in);
            ladder.tick(y);
            const Quad out = highPass ? y - ladder.s4 : first + ladder.s4;
            if ((counter & 7) == 0)
                ladder.clamp();
            return out;
        });
    biquad.store();
    ladder.store();
}

void runComb(FilterCore& core, const Signal& s)
{
    FilterComb& lines = *core.comb;
    int pos = core.combPos;
    int delay = 0;
    float gain = 0.0f;
    run(
        core, s,
        [&](const FilterCoefficients& c)
        {
            delay = c.combDelay;
            gain = c.combGain;
        },
        [&](Quad in, std::uint32_t)
        {
            pos = (pos + 256) & 0x1fffff;
            const int r = ((pos - delay) >> 8) & 0x1fff, w = pos >> 8;
            lines.inL[w] = in[0] + fxTiny;
            lines.inR[w] = in[1] + fxTiny;
            const float left = heldTo(lines.outL[r] * gain + lines.inL[r], 10.0f) + fxTiny;
            const float right = heldTo(lines.outR[r] * gain + lines.inR[r], 10.0f) + fxTiny;
            lines.outL[w] = left;
            lines.outR[w] = right;
            return Quad{left, right, 0.0f, 0.0f};
        });
    core.combPos = pos;
}

// The bank is heard on both channels, and takes the right input alone.
void runFormants(FilterCore& core, const Signal& s)
{
    Quad b = {}, a1 = {}, a2 = {};
    Quad y1 = loadQuad(core.formantY1), y2 = loadQuad(core.formantY2);
    float x1 = core.formantX1, x2 = core.formantX2;
    run(
        core, s,
        [&](const FilterCoefficients& c)
        {
            b = loadQuad(c.formantB);
            a1 = loadQuad(c.formantA1);
            a2 = loadQuad(c.formantA2);
        },
        [&](Quad in, std::uint32_t)
        {
            const Quad y = (in[1] - x2) * b - y1 * a1 - y2 * a2 + fxTiny;
            x2 = x1;
            x1 = in[1];
            y2 = y1;
            y1 = y;
            const float sum = y[0] + y[1] + y[2] + y[3];
            return Quad{sum, sum, 0.0f, 0.0f};
        });
    storeQuad(core.formantY1, y1);
    storeQuad(core.formantY2, y2);
    core.formantX1 = x1;
    core.formantX2 = x2;
}

void runRing(FilterCore& core, const Signal& s)
{
    float depth = 0.0f, rate = 0.0f;
    run(
        core, s,
        [&](const FilterCoefficients& c)
        {
            depth = c.ringDepth;
            rate = c.ringRate;
        },
        [&](Quad in, std::uint32_t)
        {
            const float sine = std::sin(static_cast<float>(core.ringCounter++) * rate);
            return quorel::heldTo((1.0f - depth + depth * sine) * in, 100.0f) + fxTiny;
        });
}

void runBiquad(FilterCore& core, const Signal& s)
{
    BiquadStage biquad(core);
    run(
        core, s, [&](const FilterCoefficients& c) { biquad.load(c); },
        [&](Quad in, std::uint32_t)
        {
            const Quad first = biquad.tick(in);
            return (first + biquad.tick(in)) * 0.5f;
        });
    biquad.store();
}

template <typename Pick>
void runBiquadAndStateVariable(FilterCore& core, const Signal& s, float scale, Pick pick)
{
    BiquadStage biquad(core);
    StateVariableStage svf(core);
    run(
        core, s,
        [&](const FilterCoefficients& c)
        {
            biquad.load(c);
            svf.load(c);
        },
        [&](Quad in, std::uint32_t)
        {
            svf.tick(biquad.tick(in));
            const Quad first = pick(svf);
            svf.tick(biquad.tick(in));
            return (first + pick(svf)) * scale;
        });
    biquad.store();
    svf.store();
}

/** "12 BP" and "12 N", whose outputs and states are limited. */
template <typename Pick>
void runLimitedStateVariable(FilterCore& core, const Signal& s, float scale, float limit, Pick pick)
{
    StateVariableStage svf(core);
    run(
        core, s, [&](const FilterCoefficients& c) { svf.load(c); },
        [&](Quad in, std::uint32_t)
        {
            svf.tick(in);
            const Quad first = quorel::heldTo(pick(svf), limit);
            svf.tick(in);
            const Quad out = (first + quorel::heldTo(pick(svf), limit)) * scale;
            svf.clamp(limit);
            return out;
        });
    svf.store();
}

void runOnePole(FilterCore& core, const Signal& s)
{
    OnePoleStage pole(core);
    const bool highPass = core.type == filterHp6;
    run(
        core, s, [&](const FilterCoefficients& c) { pole.load(c); },
        [&](Quad in, std::uint32_t)
        {
            const Quad low = pole.tick(in);
            return highPass ? in - low : low;
        });
    pole.store();
}

/** "18 LP" and "18 HP": the one-pole runs in both, but only the high-pass hears it. */
void runOnePoleAndStateVariable(FilterCore& core, const Signal& s)
{
    OnePoleStage pole(core);
    StateVariableStage svf(core);
    const bool highPass = core.type == filterHp18;
    run(
        core, s,
        [&](const FilterCoefficients& c)
        {
            pole.load(c);
            svf.load(c);
        },
        [&](Quad in, std::uint32_t)
        {
            const Quad pole1 = pole.tick(in);
            const Quad x = highPass ? in - pole1 : in;
            svf.tick(x);
            const Quad first = highPass ? svf.high : svf.low;
            svf.tick(x);
            return (first + (highPass ? svf.high : svf.low)) * invSqrt2;
        });
    pole.store();
    svf.store();
}
} // namespace

void filterConstruct(FilterCore& core)
{
    static_cast<FilterCoefficients&>(core) = {};
    std::fill(std::begin(core.stepCoefficients), std::end(core.stepCoefficients), FilterCoefficients{});
}

void filterInit(FilterCore& core, float sampleRate)
{
    core.sampleRate = sampleRate;
    core.invSampleRate = 1.0f / sampleRate;
    core.minFreq = 10.0f * core.invSampleRate;
    core.maxFreq = sampleRate * 0.4f;
    core.type = filterBypass;
    core.cutoffTarget = core.cutoffSmooth = core.resonance = 0.0f;
    core.keyScale = 1.0f;
    core.gainTargetL = core.gainTargetR = core.gainL = core.gainR = 1.0f;
    core.combPos = 0;
    filterReset(core);
}

void filterReset(FilterCore& core)
{
    for (float* state : {core.x1, core.x2, core.y1, core.y2, core.inPrev, core.s1, core.s2, core.s3, core.s4,
                         core.op, core.band, core.high, core.low, core.formantY1, core.formantY2})
        std::fill(state, state + 4, 0.0f);

    core.formantX1 = core.formantX2 = 0.0f;
    core.vowel = 0.0f;
    core.blockCounter = 0;
    core.ringCounter = 0;
    core.lastType = -1;
}

void filterProcess(FilterCore& core, const float* inL, const float* inR, float* accL, float* accR,
                   float preGain, float postGain, const FilterStep* steps, int numSteps)
{
    if (preGain < 0.0001f)
        return;

    const Signal s{inL, inR, accL, accR, preGain, postGain, steps, numSteps};
    const auto low = [](const StateVariableStage& svf) { return svf.low; };
    const auto high = [](const StateVariableStage& svf) { return svf.high; };
    const auto band = [](const StateVariableStage& svf) { return svf.band; };
    const auto notch = [](const StateVariableStage& svf) { return svf.low - svf.high; };
    const auto ladderBand = [](const LadderStage& ladder, Quad) { return (ladder.s3 - ladder.s4) * 3.0f; };
    const auto ladderNotch = [](const LadderStage& ladder, Quad in)
    { return in - (ladder.s3 - ladder.s4) * 3.0f; };
    const auto ladderLow = [](const LadderStage& ladder, Quad) { return ladder.s4; };
    const auto ladderHigh = [](const LadderStage& ladder, Quad in) { return in - ladder.s4; };

    switch (core.type)
    {
    case filterLp6:
    case filterHp6:
        return runOnePole(core, s);
    case filterLp12:
        return runStateVariable(core, s, invSqrt2, low);
    case filterHp12:
        return runStateVariable(core, s, invSqrt2, high);
    case filterBp12:
        return runLimitedStateVariable(core, s, 1.0f, 10.0f, band);
    case filterNotch12:
        return runLimitedStateVariable(core, s, invSqrt2, 100.0f, notch);
    case filterLp12Second:
    case filterHp12Second:
    case filterBp12Second:
    case filterNotch12Second:
        return runBiquad(core, s);
    case filterLp18:
    case filterHp18:
        return runOnePoleAndStateVariable(core, s);
    case filterLp24:
        return runBiquadAndStateVariable(core, s, invSqrt2, low);
    case filterHp24:
        return runBiquadAndStateVariable(core, s, invSqrt2, high);
    case filterBp24:
        return runLadder(core, s, 1.0f, ladderBand);
    case filterNotch24:
        return runLadder(core, s, 0.5f, ladderNotch);
    case filterLp24Second:
        return runLadder(core, s, 1.0f, ladderLow);
    case filterHp24Second:
        return runLadder(core, s, 1.0f, ladderHigh);
    case filterBp24Second:
        return runBiquadAndStateVariable(core, s, 1.0f, band);
    case filterNotch24Second:
        return runBiquadAndStateVariable(
            core, s, invSqrt2, [](const StateVariableStage& svf) { return svf.low - svf.high + fxTiny; });
    case filterLp36:
    case filterHp36:
        return runSteepLadder(core, s);
    case filterCombPlus:
    case filterCombMinus:
        return runComb(core, s);
    case filterVox:
    case filterForm2:
    case filterForm4:
        return runFormants(core, s);
    case filterRing:
        return runRing(core, s);
    default:
        return run(
            core, s, [](const FilterCoefficients&) {}, [](Quad in, std::uint32_t) { return in; });
    }
}
} // namespace quorel
