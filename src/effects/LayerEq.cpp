// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/LayerEq.h"

#include "effects/EffectMath.h"
#include "effects/Quad.h"

namespace quorel
{
namespace
{
constexpr double tiny = static_cast<double>(fxTiny);
constexpr Pair tinyPair = {tiny, tiny};

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
    ladder.scale = 2.0 * pole - 1.0 + tiny;
    ladder.p = pole + tiny;
    ladder.feedback = tiny;
}

void clearStates(EqLadder& ladder)
{
    const EqLadder old = ladder;
    ladder = {};
    ladder.scale = old.scale;
    ladder.feedback = old.feedback;
    ladder.p = old.p;
}

/** Local copy of a ladder while it runs over a block. */
class LadderRun
{
public:
    explicit LadderRun(EqLadder& owner)
        : ladder(owner)
        , scale(Pair{owner.scale, owner.scale})
        , p(Pair{owner.p, owner.p})
        , inPrev(Pair{owner.inPrev[0], owner.inPrev[1]})
        , s1(Pair{owner.s1[0], owner.s1[1]})
        , s2(Pair{owner.s2[0], owner.s2[1]})
        , s3(Pair{owner.s3[0], owner.s3[1]})
        , s4(Pair{owner.s4[0], owner.s4[1]})
    {
    }

    /** One pass; returns the fourth pole. The feedback of 1e-15 is left out: it is no resonance, only a
       denormal guard, and without it the passes overlap in the pipeline. */
    Pair tick(Pair in)
    {
        const Pair x = in + tinyPair;
        const Pair n1 = (x + inPrev) * p - scale * s1 + tinyPair;
        const Pair n2 = (n1 + s1) * p - scale * s2 + tinyPair;
        const Pair n3 = (n2 + s2) * p - scale * s3 + tinyPair;
        const Pair v = (n3 + s3) * p - scale * s4 + tinyPair;
        const Pair square = v * v;
        s1 = n1;
        s2 = n2;
        s3 = n3;
        s4 = (1.0 - square * 0.166666) * v;
        inPrev = x + tinyPair;

        // Past the square root of 12 the cubic stage returns more than it was given, and would run off for
        // good.
        if (!(square[0] <= 12.0 && square[1] <= 12.0))
        {
            for (int c = 0; c < 2; ++c)
                if (!(square[c] <= 12.0))
                    s4[c] = std::copysign(0.94280904158206336587, v[c]);
        }

        return s4;
    }

    void store() const
    {
        for (int c = 0; c < 2; ++c)
        {
            ladder.inPrev[c] = inPrev[c];
            ladder.s1[c] = s1[c];
            ladder.s2[c] = s2[c];
            ladder.s3[c] = s3[c];
            ladder.s4[c] = s4[c];
        }
    }

private:
    EqLadder& ladder;
    const Pair scale, p;
    Pair inPrev, s1, s2, s3, s4;
};

/** Far below anything heard, yet far above the denormal numbers. */
constexpr float floorLevel = 1e-20f;

float flushed(float x)
{
    return std::abs(x) < floorLevel ? 0.0f : x;
}

/** A band while it runs over a block; channels in the first two lanes. */
struct BandRun
{
    Quad b0, b1, b2, a2;
    Quad x1, x2, y1, y2;

    void load(const LayerEq& eq, int band)
    {
        const EqHistory &l = eq.bandL[band], &r = eq.bandR[band];
        b0 = quadOf(eq.b0[band]);
        b1 = quadOf(eq.b1[band]);
        b2 = quadOf(eq.b2[band]);
        a2 = quadOf(eq.a2[band]);
        x1 = Quad{l.x1, r.x1, 0.0f, 0.0f};
        x2 = Quad{l.x2, r.x2, 0.0f, 0.0f};
        y1 = Quad{l.y1, r.y1, 0.0f, 0.0f};
        y2 = Quad{l.y2, r.y2, 0.0f, 0.0f};
    }

    void store(LayerEq& eq, int band) const
    {
        eq.bandL[band] = {x1[0], x2[0], y1[0], y2[0]};
        eq.bandR[band] = {x1[1], x2[1], y1[1], y2[1]};
    }

    [[gnu::always_inline]] Quad tick(Quad in)
    {
        const Quad y = (x1 - y1) * b1 + in * b0 + x2 * b2 - y2 * a2;
        x2 = x1;
        x1 = in;
        y2 = y1;
        y1 = y;
        return y;
    }

    // Ends a tail before it turns into denormal numbers. An offset on the input would do that as well, but in
    // a narrow low band it also moves the rounding of what is heard.
    [[gnu::always_inline]] void settle()
    {
        const Quad louder = larger(magnitude(y1), magnitude(y2));
        const QuadIndex fades = (louder < floorLevel) & (louder > 0.0f);

        if (anyTrue(fades))
        {
            y1 = fades ? quadOf(0.0f) : y1;
            y2 = fades ? quadOf(0.0f) : y2;
        }
    }
};

/** Runs bands one after the other over a block, twice a sample with the input held, and takes the mean. All
   in one loop: each waits for itself alone, so that they overlap. */
template <std::size_t count>
void runBands(LayerEq& eq, const int* bands, float* left, float* right, int num)
{
    BandRun runs[count];
    for (std::size_t i = 0; i < count; ++i)
        runs[i].load(eq, bands[i]);

    for (int t = 0; t < num; ++t)
    {
        Quad first = {left[t], right[t], 0.0f, 0.0f}, second = first;

        for (std::size_t i = 0; i < count; ++i)
        {
            first = runs[i].tick(first);
            second = runs[i].tick(second);
            runs[i].settle();
        }

        const Quad mean = (first + second) * 0.5f;
        left[t] = mean[0];
        right[t] = mean[1];
    }

    for (std::size_t i = 0; i < count; ++i)
        runs[i].store(eq, bands[i]);
}

void processChunk(LayerEq& eq, float* left, float* right, int num)
{
    for (int i = 0; i < num; ++i)
    {
        left[i] = flushed(audible(left[i]));
        right[i] = flushed(audible(right[i]));
    }

    int bands[3], count = 0;
    for (int band = 0; band < 3; ++band)
        if (eq.bandOn[band])
            bands[count++] = band;

    if (count == 1)
        runBands<1>(eq, bands, left, right, num);
    else if (count == 2)
        runBands<2>(eq, bands, left, right, num);
    else if (count == 3)
        runBands<3>(eq, bands, left, right, num);

    if (eq.lowPassOn)
    {
        LadderRun ladder(eq.lowPass);

        for (int i = 0; i < num; ++i)
        {
            const Pair in = {static_cast<double>(left[i]), static_cast<double>(right[i])};
            const Pair first = ladder.tick(in);
            const Pair out = (first + ladder.tick(in)) * 0.5;
            left[i] = static_cast<float>(out[0]);
            right[i] = static_cast<float>(out[1]);
        }

        ladder.store();
    }

    if (eq.highPassOn)
    {
        LadderRun ladder(eq.highPass);

        for (int i = 0; i < num; ++i)
        {
            const Pair in = {static_cast<double>(left[i]), static_cast<double>(right[i])};
            const Pair first = in - ladder.tick(in) + tinyPair;
            const Pair out = (first + (in - ladder.tick(in) + tinyPair)) * 0.5;
            left[i] = static_cast<float>(out[0]);
            right[i] = static_cast<float>(out[1]);
        }

        ladder.store();
    }
}
} // namespace

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

    const float gain = clampUnit(pGain) * 40.0f - 20.0f;

    if (on != (eq.bandOn[band] != 0))
    {
        eq.bandOn[band] = on ? 1 : 0;
        eq.bandL[band] = {};
        eq.bandR[band] = {};
    }

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

    setLadder(eq.lowPass, pLp, eq.sampleRate);
    setLadder(eq.highPass, pHp, eq.sampleRate);
}

void eqProcess(LayerEq& eq, float* left, float* right)
{
    eqProcessBlock(eq, left, right, 1);
}

void eqProcessBlock(LayerEq& eq, float* left, float* right, int numSamples)
{
    if (eq.enabled == 0)
        return;

    for (int start = 0; start < numSamples; start += fxChunk)
        processChunk(eq, left + start, right + start, std::min(fxChunk, numSamples - start));
}
} // namespace quorel
