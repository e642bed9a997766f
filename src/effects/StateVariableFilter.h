// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"
#include "effects/Quad.h"

#include <algorithm>
#include <cstdint>

namespace quorel
{
/** States of a state-variable filter, left and right. */
struct SvfState
{
    double low[2] = {};
    double band[2] = {};
};

/** The slot's two state-variable filters. Bank B takes the resonance of bank A. */
struct SvfBanks
{
    double svfF = 0.0;
    double svfQ = 0.0;
    double svfBF = 0.0;
    SvfState svfA, svfB;
};

/** Sets bank A: cut + mod held to 0..1 for 20 Hz to 20480 Hz (at most 0.2 of the rate), res 0 to 1. */
void setSvf(SvfBanks& svf, float cut, float res, float mod, float sampleRate);

/** Sets the frequency of bank B likewise. */
void setSvfB(SvfBanks& svf, float cut, float mod, float sampleRate);

/** Frequency and damping at one sample. */
struct SvfSetting
{
    double f, q;
};

/** Bank A's settings over a block of at most fxChunk samples: control(t) sets the bank anew wherever the
    count of sample t is a multiple of `step`, a power of two. */
template <typename Control>
void svfSettings(const SvfBanks& svf, std::uint32_t sampleCount, std::uint32_t step, SvfSetting* settings,
                 int num, Control control)
{
    for (int t = 0; t < num;)
    {
        const std::uint32_t past = (sampleCount + 1 + static_cast<std::uint32_t>(t)) & (step - 1);
        if (past == 0)
            control(t);

        const int end = std::min(num, t + static_cast<int>(step - past));
        const SvfSetting setting{svf.svfF, svf.svfQ};
        for (; t < end; ++t)
            settings[t] = setting;
    }
}

/** A state of a filter that has gone wild, brought back to where it damps; what isn't a number becomes 0. */
Pair svfRestrained(Pair state, double limit);

/** A state-variable filter of both channels while it runs over a block. */
class SvfRun
{
public:
    explicit SvfRun(SvfState& owner)
        : low(Pair{owner.low[0], owner.low[1]})
        , band(Pair{owner.band[0], owner.band[1]})
        , state(owner)
    {
    }

    /** One tick of both channels, with frequency and damping as setSvf() makes them.

        The guards against denormal numbers are added to whichever operand is ready first: that keeps them off
        the path from one sample to the next, and as they are 1e-15 a sum can only differ in its last bit. */
    [[gnu::always_inline]] void tick(Pair x, Pair f, Pair q)
    {
        // Past a band state of 44.7 the cubic term gives back more than it takes.
        if (!bothWithin(band, 44.0, low, 1000.0))
        {
            band = svfRestrained(band, 44.0);
            low = svfRestrained(low, 1000.0);
        }

        const Pair tiny = pairOf(static_cast<double>(fxTiny));
        const Pair damped = (band + tiny) - band * band * band * 0.0010000000474974513;
        high = (x - low + tiny) - damped * q;
        band = high * f + (damped + tiny);
        low = band * f + (low + tiny);
    }

    [[gnu::always_inline]] void tick(Pair x, const SvfSetting& setting)
    {
        tick(x, pairOf(setting.f), pairOf(setting.q));
    }

    /** The outputs as they are used: low-pass and high-pass with a gain of the square root of 2, band-pass
        with 2. */
    FloatPair lowPass() const { return output(low, static_cast<double>(1.4142135f)); }

    FloatPair bandPass() const { return output(band, 2.0); }

    FloatPair highPass() const { return output(high, static_cast<double>(1.4142135f)); }

    void store() const
    {
        for (int c = 0; c < 2; ++c)
        {
            state.low[c] = low[c];
            state.band[c] = band[c];
        }
    }

    Pair low, band, high = {};

private:
    static FloatPair output(Pair v, double gain) { return toFloats(v * gain + static_cast<double>(fxTiny)); }

    SvfState& state;
};

/** Low-pass of a block in place. */
void svfLowPass(SvfState& state, const SvfSetting* settings, float* left, float* right, int num);

/** Runs both banks one after the other over a block: source(t) gives sample t, between(it, low) makes the
    input of bank B of it, after(that, high) the output. Bank B works on the sample before, so that the two
    don't wait for each other. The source may be left and right. */
template <typename Source, typename Between, typename After>
void svfSeries(SvfBanks& banks, float* left, float* right, int num, Source source, Between between,
               After after)
{
    const Pair frequencyA = pairOf(banks.svfF), frequencyB = pairOf(banks.svfBF),
               resonance = pairOf(banks.svfQ);
    SvfRun low(banks.svfA), high(banks.svfB);

    const auto first = [&](int t)
    {
        const FloatPair in = source(t);
        low.tick(__builtin_convertvector(in, Pair), frequencyA, resonance);
        return between(in, low);
    };
    const auto second = [&](int t, FloatPair in)
    {
        high.tick(__builtin_convertvector(in, Pair), frequencyB, resonance);
        const FloatPair out = after(in, high);
        left[t] = out[0];
        right[t] = out[1];
    };

    FloatPair waiting = first(0);

    for (int t = 1; t < num; ++t)
    {
        const FloatPair next = first(t);
        second(t - 1, waiting);
        waiting = next;
    }

    second(num - 1, waiting);
    low.store();
    high.store();
}
} // namespace quorel
