// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/ReverbUnit.h"

#include "effects/EffectMath.h"
#include "effects/Quad.h"

#include <iterator>

namespace quorel
{
namespace
{
// Tunings in samples at 44.1 kHz.
constexpr float combTunings[10] = {1116, 1188, 1277, 1356, 1422, 1491, 1557, 1617, 1680, 1046};
constexpr float allPassTunings[4] = {556, 441, 341, 225};
constexpr float stereoSpread = 23;

constexpr int combCount = CombBank::combs;

int tunedLength(float samples, int longest)
{
    return truncateTo(samples + 0.5f, 1, longest);
}

void setCombDelays(ReverbUnit& unit, float factor)
{
    for (int i = 0; i < 10; ++i)
    {
        const float left = combTunings[i] * factor * unit.combScale[i];
        const float right = (combTunings[i] + stereoSpread) * factor * unit.combScale[i];
        unit.bank.delay[i] = static_cast<std::uint32_t>(tunedLength(left, CombBank::length - 1));
        unit.bank.delay[10 + i] = static_cast<std::uint32_t>(tunedLength(right, CombBank::length - 1));
    }
}

// Which input a comb is fed from: the left one on the left; on the right left and right by turns, but for the
// last.
constexpr bool fedFromRight(int comb)
{
    return comb > 10 && comb < 19 && comb % 2 == 1;
}

/** Copies between a comb's ring, from the row after `row` on, and a plain run of samples. */
void readRing(const float* ring, std::uint32_t row, float* out, int num)
{
    const auto start = static_cast<int>((row + 1) & (CombBank::length - 1));
    const int first = std::min(num, CombBank::length - start);
    std::copy(ring + start, ring + start + first, out);
    std::copy(ring, ring + (num - first), out + first);
}

void writeRing(float* ring, std::uint32_t row, const float* in, int num)
{
    const auto start = static_cast<int>((row + 1) & (CombBank::length - 1));
    const int first = std::min(num, CombBank::length - start);
    std::copy(in, in + first, ring + start);
    std::copy(in + first, in + num, ring);
}

void transpose(Quad& a, Quad& b, Quad& c, Quad& d)
{
    const Quad ab0 = __builtin_shufflevector(a, b, 0, 4, 1, 5);
    const Quad ab1 = __builtin_shufflevector(a, b, 2, 6, 3, 7);
    const Quad cd0 = __builtin_shufflevector(c, d, 0, 4, 1, 5);
    const Quad cd1 = __builtin_shufflevector(c, d, 2, 6, 3, 7);
    a = __builtin_shufflevector(ab0, cd0, 0, 1, 4, 5);
    b = __builtin_shufflevector(ab0, cd0, 2, 3, 6, 7);
    c = __builtin_shufflevector(ab1, cd1, 0, 1, 4, 5);
    d = __builtin_shufflevector(ab1, cd1, 2, 3, 6, 7);
}

/** Where the combs of a run read and write: straight in their rings but where these wrap. */
struct CombRun
{
    const float* from[combCount];
    float* to[combCount];
    alignas(16) float wrapped[combCount][fxChunk];
};

/** Four combs over four samples: adds their taps to the sums, in order, and writes their cells. */
template <bool crossesOver>
[[gnu::always_inline]] inline void runFourCombs(const CombBank& bank, CombRun& run, int group, int t,
                                                Quad& state, const Quad* inputs, Quad& sum, Quad& nextSum)
{
    const Quad damp1 = quadOf(bank.damp1), damp2 = quadOf(bank.damp2), feedback = quadOf(bank.combFeedback);
    Quad rows[4];
    for (int i = 0; i < 4; ++i)
        rows[i] = loadQuad(run.from[group + i] + t);

    if (crossesOver) // from the left combs to the right ones
    {
        sum = sum + rows[0] + rows[1];
        nextSum = rows[2] + rows[3];
    }
    else
    {
        sum = sum + rows[0] + rows[1] + rows[2] + rows[3];
    }

    transpose(rows[0], rows[1], rows[2], rows[3]);

    for (int i = 0; i < 4; ++i)
    {
        state = rows[i] * damp2 + state * damp1 + reverbTiny;
        rows[i] = state * feedback + inputs[i] + reverbTiny;
    }

    transpose(rows[0], rows[1], rows[2], rows[3]);

    for (int i = 0; i < 4; ++i)
        storeQuad(run.to[group + i] + t, rows[i]);
}

/** All combs, four samples at a time. The groups follow each other within a step, so that they overlap: each
    waits for its own states alone. */
void runFours(CombBank& bank, CombRun& run, const float* l, const float* r, float* sumL, float* sumR, int num)
{
    Quad state[combCount / 4];
    for (int group = 0; group < combCount / 4; ++group)
        state[group] = loadQuad(bank.store + 4 * group);

    for (int t = 0; t + 4 <= num; t += 4)
    {
        Quad left[4], third[4], fourth[4], fifth[4];

        for (int i = 0; i < 4; ++i)
        {
            const Quad both = {l[t + i], r[t + i], 0.0f, 0.0f};
            left[i] = __builtin_shufflevector(both, both, 0, 0, 0, 0);
            third[i] = __builtin_shufflevector(both, both, 0, 0, 0, 1);
            fourth[i] = __builtin_shufflevector(both, both, 0, 1, 0, 1);
            fifth[i] = __builtin_shufflevector(both, both, 0, 1, 0, 0);
        }

        Quad sum = quadOf(0.0f), nextSum = quadOf(0.0f);
        runFourCombs<false>(bank, run, 0, t, state[0], left, sum, nextSum);
        runFourCombs<false>(bank, run, 4, t, state[1], left, sum, nextSum);
        runFourCombs<true>(bank, run, 8, t, state[2], third, sum, nextSum);
        runFourCombs<false>(bank, run, 12, t, state[3], fourth, nextSum, nextSum);
        runFourCombs<false>(bank, run, 16, t, state[4], fifth, nextSum, nextSum);
        storeQuad(sumL + t, sum + reverbTiny);
        storeQuad(sumR + t, nextSum + reverbTiny);
    }

    for (int group = 0; group < combCount / 4; ++group)
        storeQuad(bank.store + 4 * group, state[group]);
}

void runRest(CombBank& bank, CombRun& run, const float* l, const float* r, float* sumL, float* sumR, int from,
             int num)
{
    for (int t = from; t < num; ++t)
    {
        float sums[2] = {0.0f, 0.0f};

        for (int comb = 0; comb < combCount; ++comb)
        {
            const float tap = run.from[comb][t];
            sums[comb / 10] = sums[comb / 10] + tap;
            bank.store[comb] = tap * bank.damp2 + bank.store[comb] * bank.damp1 + reverbTiny;
            run.to[comb][t] =
                bank.store[comb] * bank.combFeedback + (fedFromRight(comb) ? r : l)[t] + reverbTiny;
        }

        sumL[t] = sums[0] + reverbTiny;
        sumR[t] = sums[1] + reverbTiny;
    }
}

/** At most as many samples as the shortest comb is long, so that no tap reads what the same run writes. A
    comb nearly as long as its ring does read cells of the same run, but always ahead of the writing. */
void runCombs(CombBank& bank, float* cells, const float* l, const float* r, float* sumL, float* sumR, int num)
{
    CombRun run;
    constexpr std::uint32_t mask = CombBank::length - 1;
    const std::uint32_t writeStart = (bank.position + 1) & mask;
    const bool writesWrap = writeStart + static_cast<std::uint32_t>(num) > CombBank::length;

    for (int comb = 0; comb < combCount; ++comb)
    {
        float* ring = cells + comb * ReverbCells::stride;
        const std::uint32_t readStart = (writeStart - bank.delay[comb]) & mask;
        run.from[comb] = ring + readStart;
        run.to[comb] = writesWrap ? run.wrapped[comb] : ring + writeStart;

        if (readStart + static_cast<std::uint32_t>(num) > CombBank::length)
        {
            readRing(ring, readStart - 1, run.wrapped[comb], num);
            run.from[comb] = run.wrapped[comb];
        }
    }

    runFours(bank, run, l, r, sumL, sumR, num);
    runRest(bank, run, l, r, sumL, sumR, num & ~3, num);

    for (int comb = 0; writesWrap && comb < combCount; ++comb)
        writeRing(cells + comb * ReverbCells::stride, bank.position, run.wrapped[comb], num);

    bank.position = (bank.position + static_cast<std::uint32_t>(num)) & mask;
}

/** Tone filters of up to four units in the lanes, one channel each. */
struct ToneLanes
{
    Quad lp{}, lpInv{}, hp{}, hpInv{}, low{}, high{};

    [[gnu::always_inline]] Quad tick(Quad x)
    {
        low = x * lp + lpInv * low + reverbTiny;
        high = low * hp + hpInv * high + reverbTiny;
        return low - high;
    }
};

/** Tone filters of some units in place; together, as each waits for itself from sample to sample. */
void runTones(ReverbUnit* units, int numUnits, float (*left)[fxChunk], float (*right)[fxChunk], int num)
{
    ToneLanes l, r;

    for (int u = 0; u < numUnits; ++u)
    {
        const CombBank& bank = units[u].bank;
        l.lp[u] = r.lp[u] = bank.lp;
        l.lpInv[u] = r.lpInv[u] = bank.lpInv;
        l.hp[u] = r.hp[u] = bank.hp;
        l.hpInv[u] = r.hpInv[u] = bank.hpInv;
        l.low[u] = bank.lpStateL;
        l.high[u] = bank.hpStateL;
        r.low[u] = bank.lpStateR;
        r.high[u] = bank.hpStateR;
    }

    for (int t = 0; t < num; t += 4) // what lies past the end stays out of the states
    {
        Quad rowsL[4], rowsR[4];
        for (int u = 0; u < 4; ++u)
        {
            rowsL[u] = u < numUnits ? loadQuad(left[u] + t) : quadOf(0.0f);
            rowsR[u] = u < numUnits ? loadQuad(right[u] + t) : quadOf(0.0f);
        }

        transpose(rowsL[0], rowsL[1], rowsL[2], rowsL[3]);
        transpose(rowsR[0], rowsR[1], rowsR[2], rowsR[3]);

        for (int i = 0; i < std::min(4, num - t); ++i)
        {
            rowsL[i] = l.tick(rowsL[i]);
            rowsR[i] = r.tick(rowsR[i]);
        }

        transpose(rowsL[0], rowsL[1], rowsL[2], rowsL[3]);
        transpose(rowsR[0], rowsR[1], rowsR[2], rowsR[3]);

        for (int u = 0; u < numUnits; ++u)
        {
            storeQuad(left[u] + t, rowsL[u]);
            storeQuad(right[u] + t, rowsR[u]);
        }
    }

    for (int u = 0; u < numUnits; ++u)
    {
        CombBank& bank = units[u].bank;
        bank.lpStateL = l.low[u];
        bank.hpStateL = l.high[u];
        bank.lpStateR = r.low[u];
        bank.hpStateR = r.high[u];
    }
}

void runAllPass(AllPass& unit, float* ring, float* signal, int num)
{
    while (num > 0)
    {
        const int start = unit.position + 1 < unit.length ? unit.position + 1 : 0;
        const int run = std::min(num, unit.length - start);
        float* __restrict buffer = ring + start;
        float* __restrict v = signal;

        for (int t = 0; t < run; ++t)
        {
            const float b = buffer[t], in = v[t];
            v[t] = b - in;
            buffer[t] = b * 0.5f + in + reverbTiny;
        }

        unit.position = start + run - 1;
        signal += run;
        num -= run;
    }
}
} // namespace

void reverbSetSampleRate(ReverbUnit& unit)
{
    const float f = unit.sampleRate / 44100.0f;
    std::fill(std::begin(unit.combScale), std::end(unit.combScale), 1.0f);
    setCombDelays(unit, f);

    for (int i = 0; i < 4; ++i)
    {
        unit.allPass[i].length = tunedLength(allPassTunings[i] * f, AllPass::capacity - 1);
        unit.allPass[4 + i].length =
            tunedLength((allPassTunings[i] + stereoSpread) * f, AllPass::capacity - 1);
        unit.allPass[i].position = unit.allPass[4 + i].position = 0;
    }

    reverbRest(unit);
}

void reverbRest(ReverbUnit& unit)
{
    CombBank& bank = unit.bank;
    std::fill(std::begin(bank.store), std::end(bank.store), 0.0f);
    bank.lpStateL = bank.hpStateL = bank.lpStateR = bank.hpStateR = 0.0f;
}

void reverbSetFeedback(ReverbUnit& unit, float size)
{
    unit.feedback = std::log10(size * 20.0f + 1.0f) * 0.249579f + 0.65f;
    unit.bank.combFeedback = unit.feedback;
}

void reverbSetDamping(ReverbUnit& unit, float pDamp)
{
    unit.damp = unit.bank.damp1 = pDamp * 0.55f;
    unit.bank.damp2 = 1.0f - unit.bank.damp1;
}

void reverbSetTone(ReverbUnit& unit, float pLow, float pHigh)
{
    const auto coefficient = [&unit](float p)
    { return 2.0f * std::min(std::exp2(10.0f * p) * 20.0f / unit.sampleRate, 0.3f); };

    CombBank& bank = unit.bank;
    bank.lp = coefficient(pLow);
    if (bank.lp > 0.59f)
        bank.lp = 1.0f;

    bank.hp = coefficient(pHigh);
    if (bank.hp < 0.01f)
        bank.hp = 0.0f;

    bank.lpInv = 1.0f - bank.lp;
    bank.hpInv = 1.0f - bank.hp;
}

void reverbSetLength(ReverbUnit& unit, float scale)
{
    setCombDelays(unit, scale * unit.sampleRate / 44100.0f);
}

void reverbProcess(ReverbUnit* units, int numUnits, const float* l, const float* r, float* outL, float* outR,
                   int num)
{
    float left[4][fxChunk], right[4][fxChunk];

    for (int u = 0; u < numUnits; ++u)
    {
        CombBank& bank = units[u].bank;
        const auto shortest =
            static_cast<int>(*std::min_element(std::begin(bank.delay), std::end(bank.delay)));

        for (int start = 0; start < num;)
        {
            const int run = std::min(num - start, shortest);
            runCombs(bank, units[u].cells->combs, l + start, r + start, left[u] + start, right[u] + start,
                     run);
            start += run;
        }

        std::fill(left[u] + num, std::end(left[u]), 0.0f);
        std::fill(right[u] + num, std::end(right[u]), 0.0f);
    }

    runTones(units, numUnits, left, right, num);
    std::fill(outL, outL + num, 0.0f);
    std::fill(outR, outR + num, 0.0f);

    for (int u = 0; u < numUnits; ++u)
    {
        ReverbCells& cells = *units[u].cells;
        for (int i = 0; i < 4; ++i)
        {
            runAllPass(units[u].allPass[i], cells.allPasses[i], left[u], num);
            runAllPass(units[u].allPass[4 + i], cells.allPasses[4 + i], right[u], num);
        }

        for (int t = 0; t < num; ++t)
        {
            outL[t] = outL[t] + left[u][t] * 0.025f;
            outR[t] = outR[t] + right[u][t] * 0.025f;
        }
    }
}
} // namespace quorel
