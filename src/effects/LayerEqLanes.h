// SPDX-License-Identifier: GPL-3.0-or-later
// The inner loops of the EQ, for several units side by side: each unit's left and right channel has a lane of its
// own with its own coefficients, and every lane does the same operations in the same order as a unit that runs by
// itself, so that not a bit depends on how many run together.
//
// Included by one source for each set of instructions. All of it is in an unnamed namespace on purpose: an inline
// function that two sources compile for different processors must never be merged by the linker. For that reason
// nothing here calls an inline function of another header that isn't forced inline.
#pragma once

#include "effects/EqLanes.h"
#include "effects/LayerEq.h"

namespace quorel
{
namespace
{
//==============================================================================================================
// Ladders

/** The same ladder of some units while it runs over a chunk. */
template <typename Lanes>
struct LadderRun
{
    Lanes scale{}, p{}, inPrev{}, s1{}, s2{}, s3{}, s4{};

    QUOREL_LANES void load(const EqLadder& ladder, int unit)
    {
        for (int c = 0; c < 2; ++c)
        {
            const int i = 2 * unit + c;
            scale[i] = ladder.scale;
            p[i] = ladder.p;
            inPrev[i] = ladder.inPrev[c];
            s1[i] = ladder.s1[c];
            s2[i] = ladder.s2[c];
            s3[i] = ladder.s3[c];
            s4[i] = ladder.s4[c];
        }
    }

    QUOREL_LANES void store(EqLadder& ladder, int unit)
    {
        for (int c = 0; c < 2; ++c)
        {
            const int i = 2 * unit + c;
            ladder.inPrev[c] = inPrev[i];
            ladder.s1[c] = s1[i];
            ladder.s2[c] = s2[i];
            ladder.s3[c] = s3[i];
            ladder.s4[c] = s4[i];
        }
    }

    /** One pass; returns the fourth pole. The feedback of 1e-15 is left out: it is no resonance, only a guard
        against denormal numbers, and without it the passes overlap in the pipeline. */
    QUOREL_LANES Lanes tick(Lanes in)
    {
        const Lanes tiny = Lanes{} + ladderTiny;
        const Lanes x = in + tiny;
        const Lanes n1 = (x + inPrev) * p - scale * s1 + tiny;
        const Lanes n2 = (n1 + s1) * p - scale * s2 + tiny;
        const Lanes n3 = (n2 + s2) * p - scale * s3 + tiny;
        Lanes v = (n3 + s3) * p - scale * s4 + tiny;
        Lanes square = v * v;
        s1 = n1;
        s2 = n2;
        s3 = n3;
        s4 = (1.0 - square * 0.166666) * v;
        inPrev = x + tiny;

        if (!allWithin(square))
        {
            for (int i = 0; i < 2 * unitsIn<Lanes>; ++i)
                if (!(square[i] <= largestCubicSquare))
                    s4[i] = __builtin_copysign(largestCubicOutput, v[i]);
        }

        return s4;
    }

    QUOREL_LANES Lanes lowPass(Lanes in)
    {
        const Lanes first = tick(in);
        return (first + tick(in)) * 0.5;
    }

    QUOREL_LANES Lanes highPass(Lanes in)
    {
        const Lanes tiny = Lanes{} + ladderTiny;
        const Lanes first = in - tick(in) + tiny;
        return (first + (in - tick(in) + tiny)) * 0.5;
    }
};

/** What empty lanes read. */
constexpr float silence[fxChunk] = {};

/** The channels of the units that run together, by lane. Empty lanes read silence and write nothing. */
struct EqChannels
{
    const float* leftIn[maxEqUnitsTogether] = {silence, silence, silence, silence};
    const float* rightIn[maxEqUnitsTogether] = {silence, silence, silence, silence};
    float* left[maxEqUnitsTogether] = {};
    float* right[maxEqUnitsTogether] = {};
    LayerEq* unit[maxEqUnitsTogether] = {};
    int count = 0;

    QUOREL_LANES void add(LayerEq& eq, float* l, float* r)
    {
        unit[count] = &eq;
        leftIn[count] = left[count] = l;
        rightIn[count] = right[count] = r;
        ++count;
    }
};

/** One of the two filters of up to `registers` times as many units as `Lanes` holds. */
template <typename Lanes, int registers, bool high>
void runLadders(const EqChannels& channels, int num)
{
    constexpr int width = unitsIn<Lanes>;
    LadderRun<Lanes> runs[static_cast<unsigned>(registers)];

    for (int i = 0; i < channels.count; ++i)
        runs[i / width].load(high ? channels.unit[i]->highPass : channels.unit[i]->lowPass, i % width);

    for (int t = 0; t < num; ++t)
    {
        for (int k = 0; k < registers; ++k)
        {
            const Lanes in = toLanes(channels.leftIn + k * width, channels.rightIn + k * width, t,
                                     static_cast<Lanes*>(nullptr));
            const Lanes out = high ? runs[k].highPass(in) : runs[k].lowPass(in);
            fromLanes(out, channels.left + k * width, channels.right + k * width, channels.count - k * width,
                      t);
        }
    }

    for (int i = 0; i < channels.count; ++i)
        runs[i / width].store(high ? channels.unit[i]->highPass : channels.unit[i]->lowPass, i % width);
}

/** Both filters of a single unit, in the lanes of one `LadderRun` where there are four. The high-pass runs some samples
    behind the low-pass, so that neither waits for the other. */
template <typename Lanes>
void runBothLadders(LayerEq& eq, float* left, float* right, int num)
{
    constexpr int behind = 4;
    float lowLeft[fxChunk], lowRight[fxChunk];
    float* const lowOut[2] = {lowLeft, lowRight};
    LadderRun<Pair> low, high;
    low.load(eq.lowPass, 0);
    high.load(eq.highPass, 0);
    Pair* const pair = nullptr;
    const auto runLow = [&](int t)
    { fromLanes(low.lowPass(toLanes(&left, &right, t, pair)), &lowOut[0], &lowOut[1], 1, t); };
    const auto runHigh = [&](int t)
    { fromLanes(high.highPass(toLanes(&lowOut[0], &lowOut[1], t, pair)), &left, &right, 1, t); };
    const int start = num < behind ? num : behind;

    for (int t = 0; t < start; ++t)
        runLow(t);

    if constexpr (unitsIn<Lanes> == 1)
    {
        for (int t = start; t < num; ++t)
        {
            runHigh(t - start);
            runLow(t);
        }
    }
    else
    {
        low.store(eq.lowPass, 0);
        LadderRun<Lanes> both;
        both.load(eq.lowPass, 0);
        both.load(eq.highPass, 1);

        for (int t = start; t < num; ++t)
        {
            const float* const l[2] = {left + t, lowLeft + t - start};
            const float* const r[2] = {right + t, lowRight + t - start};
            const Lanes in = toLanes(l, r, 0, static_cast<Lanes*>(nullptr));
            const Lanes first = both.tick(in);
            const Lanes second = both.tick(in);
            const Lanes lowPassed = (first + second) * 0.5;
            const Lanes tiny = Lanes{} + ladderTiny;
            const Lanes highPassed = ((in - first + tiny) + (in - second + tiny)) * 0.5;
            float* const outLeft[2] = {lowLeft + t, left + t - start};
            float* const outRight[2] = {lowRight + t, right + t - start};
            fromLanes(Lanes{lowPassed[0], lowPassed[1], highPassed[2], highPassed[3]}, outLeft, outRight, 2,
                      0);
        }

        both.store(eq.lowPass, 0);
        both.store(eq.highPass, 1);
        low.load(eq.lowPass, 0);
        high.load(eq.highPass, 0);
    }

    for (int t = num - start; t < num; ++t)
        runHigh(t);

    low.store(eq.lowPass, 0);
    high.store(eq.highPass, 0);
}

//==============================================================================================================
// Bands

/** The same band of some units while it runs over a chunk. */
template <typename Lanes, typename Mask>
struct BandRun
{
    Lanes b0{}, b1{}, b2{}, a2{};
    Lanes x1{}, x2{}, y1{}, y2{};
    Mask on{};

    QUOREL_LANES void load(const LayerEq& eq, int band, int unit)
    {
        const EqHistory* const histories[2] = {&eq.bandL[band], &eq.bandR[band]};

        for (int c = 0; c < 2; ++c)
        {
            const int i = 2 * unit + c;
            b0[i] = eq.b0[band];
            b1[i] = eq.b1[band];
            b2[i] = eq.b2[band];
            a2[i] = eq.a2[band];
            x1[i] = histories[c]->x1;
            x2[i] = histories[c]->x2;
            y1[i] = histories[c]->y1;
            y2[i] = histories[c]->y2;
            on[i] = -1;
        }
    }

    QUOREL_LANES void store(LayerEq& eq, int band, int unit) const
    {
        eq.bandL[band] = {x1[2 * unit], x2[2 * unit], y1[2 * unit], y2[2 * unit]};
        eq.bandR[band] = {x1[2 * unit + 1], x2[2 * unit + 1], y1[2 * unit + 1], y2[2 * unit + 1]};
    }

    QUOREL_LANES Lanes tick(Lanes in)
    {
        const Lanes y = (x1 - y1) * b1 + in * b0 + x2 * b2 - y2 * a2;
        x2 = x1;
        x1 = in;
        y2 = y1;
        y1 = y;
        return y;
    }
};

/** Bands one after the other over a chunk, twice a sample with the input held, and the mean of both. All in one
    loop: each waits for itself alone, so that they overlap. With `mixed`, not every unit has the same bands on:
    the lanes of the others pass what they get. */
template <typename Lanes, typename Mask, int registers, int numBands, bool mixed>
void runBands(const EqChannels& channels, const int* bands, int num)
{
    constexpr int width = unitsIn<Lanes>;
    BandRun<Lanes, Mask> runs[static_cast<unsigned>(registers)][static_cast<unsigned>(numBands)];

    for (int i = 0; i < channels.count; ++i)
        for (int k = 0; k < numBands; ++k)
            if (channels.unit[i]->bandOn[bands[k]])
                runs[i / width][k].load(*channels.unit[i], bands[k], i % width);

    for (int t = 0; t < num; ++t)
    {
        for (int r = 0; r < registers; ++r)
        {
            Lanes first = toLanes(channels.leftIn + r * width, channels.rightIn + r * width, t,
                                  static_cast<Lanes*>(nullptr));
            Lanes second = first;

            for (int k = 0; k < numBands; ++k)
            {
                auto& run = runs[r][k];
                const Lanes firstOut = run.tick(first);
                const Lanes secondOut = run.tick(second);
                endFadedTails(run.y1, run.y2);
                first = mixed ? chosen(run.on, firstOut, first) : firstOut;
                second = mixed ? chosen(run.on, secondOut, second) : secondOut;
            }

            fromLanes((first + second) * 0.5f, channels.left + r * width, channels.right + r * width,
                      channels.count - r * width, t);
        }
    }

    for (int i = 0; i < channels.count; ++i)
        for (int k = 0; k < numBands; ++k)
            if (channels.unit[i]->bandOn[bands[k]])
                runs[i / width][k].store(*channels.unit[i], bands[k], i % width);
}

template <typename Lanes, typename Mask, int registers, bool mixed>
QUOREL_LANES void runBands(const EqChannels& channels, const int* bands, int numBands, int num)
{
    if (numBands == 1)
        runBands<Lanes, Mask, registers, 1, mixed>(channels, bands, num);
    else if (numBands == 2)
        runBands<Lanes, Mask, registers, 2, mixed>(channels, bands, num);
    else if (numBands == 3)
        runBands<Lanes, Mask, registers, 3, mixed>(channels, bands, num);
}

//==============================================================================================================
// What a set of instructions runs side by side

struct BaselineLanes
{
    using BothLadders = Pair;

    template <bool high>
    QUOREL_LANES static void ladders(const EqChannels& channels, int num)
    {
        switch (channels.count)
        {
        case 1:
            return runLadders<Pair, 1, high>(channels, num);
        case 2:
            return runLadders<Pair, 2, high>(channels, num);
        case 3:
            return runLadders<Pair, 3, high>(channels, num);
        default:
            return runLadders<Pair, 4, high>(channels, num);
        }
    }

    template <bool mixed>
    QUOREL_LANES static void bands(const EqChannels& channels, const int* bands, int numBands, int num)
    {
        if (channels.count <= 2)
            runBands<Quad, QuadIndex, 1, mixed>(channels, bands, numBands, num);
        else
            runBands<Quad, QuadIndex, 2, mixed>(channels, bands, numBands, num);
    }
};

#if defined(__AVX2__)
struct WideLanes
{
    using BothLadders = WidePair;

    template <bool high>
    QUOREL_LANES static void ladders(const EqChannels& channels, int num)
    {
        if (channels.count == 1)
            runLadders<Pair, 1, high>(channels, num);
        else if (channels.count == 2)
            runLadders<WidePair, 1, high>(channels, num);
        else
            runLadders<WidePair, 2, high>(channels, num);
    }

    template <bool mixed>
    QUOREL_LANES static void bands(const EqChannels& channels, const int* bands, int numBands, int num)
    {
        if (channels.count <= 2)
            runBands<Quad, QuadIndex, 1, mixed>(channels, bands, numBands, num);
        else
            runBands<WideQuad, WideQuadIndex, 1, mixed>(channels, bands, numBands, num);
    }
};
#endif

/** The sample, or silence for what is no sound or has died away. */
QUOREL_LANES float cleaned(float x)
{
    const float size = __builtin_fabsf(x);
    return size <= fxSignalLimit && size >= floorLevel ? x : 0.0f;
}

/** At most `fxChunk` samples of units that are enabled. */
template <typename Lanes>
void processLanes(const EqBlock* blocks, int numBlocks, int start, int num)
{
    EqChannels banded, low, high;
    int bands[3] = {}, numBands = 0;
    bool mixed = false;

    for (int i = 0; i < numBlocks; ++i)
    {
        LayerEq& eq = *blocks[i].unit;
        float* const left = blocks[i].left + start;
        float* const right = blocks[i].right + start;

        for (int t = 0; t < num; ++t)
        {
            left[t] = cleaned(left[t]);
            right[t] = cleaned(right[t]);
        }

        if (eq.bandOn[0] || eq.bandOn[1] || eq.bandOn[2])
            banded.add(eq, left, right);
        if (eq.lowPassOn)
            low.add(eq, left, right);
        if (eq.highPassOn)
            high.add(eq, left, right);
    }

    for (int band = 0; band < 3; ++band)
    {
        int numOn = 0;

        for (int i = 0; i < banded.count; ++i)
            numOn += banded.unit[i]->bandOn[band] ? 1 : 0;

        mixed = mixed || (numOn != 0 && numOn != banded.count);

        if (numOn != 0)
            bands[numBands++] = band;
    }

    if (mixed)
        Lanes::template bands<true>(banded, bands, numBands, num);
    else if (numBands > 0)
        Lanes::template bands<false>(banded, bands, numBands, num);

    if (low.count == 1 && high.count == 1 && low.unit[0] == high.unit[0])
    {
        runBothLadders<typename Lanes::BothLadders>(*low.unit[0], low.left[0], low.right[0], num);
        return;
    }

    if (low.count > 0)
        Lanes::template ladders<false>(low, num);
    if (high.count > 0)
        Lanes::template ladders<true>(high, num);
}

#undef QUOREL_LANES
} // namespace
} // namespace quorel
