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

/** Turns four combs' taps (rows of fxChunk samples) into the cells that they write, four samples at a time.
 */
void runFourCombs(const CombBank& bank, float* store, float* taps, const Quad* inputs, int num)
{
    const Quad damp1 = quadOf(bank.damp1), damp2 = quadOf(bank.damp2), feedback = quadOf(bank.combFeedback);
    const Quad tiny = quadOf(reverbTiny);
    Quad state = loadQuad(store);

    for (int t = 0; t + 4 <= num; t += 4)
    {
        Quad rows[4];
        for (int i = 0; i < 4; ++i)
            rows[i] = loadQuad(taps + i * fxChunk + t);

        transpose(rows[0], rows[1], rows[2], rows[3]);

        for (int i = 0; i < 4; ++i)
        {
            state = rows[i] * damp2 + state * damp1 + tiny;
            rows[i] = state * feedback + inputs[t + i] + tiny;
        }

        transpose(rows[0], rows[1], rows[2], rows[3]);

        for (int i = 0; i < 4; ++i)
            storeQuad(taps + i * fxChunk + t, rows[i]);
    }

    storeQuad(store, state);
}

void runRest(CombBank& bank, float (*taps)[fxChunk], const float* l, const float* r, int from, int num)
{
    for (int comb = 0; comb < combCount; ++comb)
    {
        const float* in = fedFromRight(comb) ? r : l;

        for (int t = from; t < num; ++t)
        {
            bank.store[comb] = taps[comb][t] * bank.damp2 + bank.store[comb] * bank.damp1 + reverbTiny;
            taps[comb][t] = bank.store[comb] * bank.combFeedback + in[t] + reverbTiny;
        }
    }
}

void sumCombs(float (*taps)[fxChunk], float* sum, int num)
{
    for (int t = 0; t < num; ++t)
    {
        float total = taps[0][t];
        for (int i = 1; i < 10; ++i)
            total = total + taps[i][t];
        sum[t] = total + reverbTiny;
    }
}

/** At most as many samples as the shortest comb is long, so that no tap reads what the same run writes. */
void runCombs(CombBank& bank, const float* l, const float* r, float* sumL, float* sumR, int num)
{
    alignas(16) float taps[combCount][fxChunk];
    constexpr std::uint32_t mask = CombBank::length - 1;

    for (int comb = 0; comb < combCount; ++comb)
        readRing(bank.cells + comb * CombBank::stride, (bank.position - bank.delay[comb]) & mask, taps[comb],
                 num);

    sumCombs(taps, sumL, num);
    sumCombs(taps + 10, sumR, num);

    const int whole = num & ~3;

    if (whole > 0)
    {
        Quad fromLeft[fxChunk], fromRight[fxChunk], mixed[fxChunk];

        for (int t = 0; t < whole; ++t)
        {
            fromLeft[t] = quadOf(l[t]);
            fromRight[t] = quadOf(r[t]);
        }

        for (int group = 0; group < combCount; group += 4)
        {
            QuadIndex right{};
            for (int i = 0; i < 4; ++i)
                right[i] = fedFromRight(group + i) ? -1 : 0;

            const bool mixes = group >= 8;
            for (int t = 0; mixes && t < whole; ++t)
                mixed[t] = right ? fromRight[t] : fromLeft[t];

            runFourCombs(bank, bank.store + group, taps[group], mixes ? mixed : fromLeft, whole);
        }
    }

    runRest(bank, taps, l, r, whole, num);

    for (int comb = 0; comb < combCount; ++comb)
        writeRing(bank.cells + comb * CombBank::stride, bank.position, taps[comb], num);

    bank.position = (bank.position + static_cast<std::uint32_t>(num)) & mask;
}

void runTone(CombBank& bank, float* left, float* right, int num)
{
    const float lp = bank.lp, lpInv = bank.lpInv, hp = bank.hp, hpInv = bank.hpInv;
    float lpL = bank.lpStateL, hpL = bank.hpStateL, lpR = bank.lpStateR, hpR = bank.hpStateR;

    for (int t = 0; t < num; ++t)
    {
        lpL = left[t] * lp + lpInv * lpL + reverbTiny;
        lpR = right[t] * lp + lpInv * lpR + reverbTiny;
        hpL = lpL * hp + hpInv * hpL + reverbTiny;
        hpR = lpR * hp + hpInv * hpR + reverbTiny;
        left[t] = lpL - hpL;
        right[t] = lpR - hpR;
    }

    bank.lpStateL = lpL;
    bank.hpStateL = hpL;
    bank.lpStateR = lpR;
    bank.hpStateR = hpR;
}

void runAllPass(AllPass& unit, float* signal, int num)
{
    while (num > 0)
    {
        const int start = unit.position + 1 < unit.length ? unit.position + 1 : 0;
        const int run = std::min(num, unit.length - start);
        float* __restrict buffer = unit.buffer + start;
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

    reverbClear(unit);
}

void reverbClear(ReverbUnit& unit)
{
    CombBank& bank = unit.bank;
    std::fill(std::begin(bank.cells), std::end(bank.cells), 0.0f);
    std::fill(std::begin(bank.store), std::end(bank.store), 0.0f);
    bank.lpStateL = bank.hpStateL = bank.lpStateR = bank.hpStateR = 0.0f;

    for (AllPass& allPass : unit.allPass)
        std::fill(std::begin(allPass.buffer), std::end(allPass.buffer), 0.0f);
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

void reverbProcess(ReverbUnit& unit, const float* l, const float* r, float* outL, float* outR, int num)
{
    const auto shortest =
        static_cast<int>(*std::min_element(std::begin(unit.bank.delay), std::end(unit.bank.delay)));

    for (int start = 0; start < num;)
    {
        const int run = std::min(num - start, shortest);
        runCombs(unit.bank, l + start, r + start, outL + start, outR + start, run);
        start += run;
    }

    runTone(unit.bank, outL, outR, num);

    for (int i = 0; i < 4; ++i)
    {
        runAllPass(unit.allPass[i], outL, num);
        runAllPass(unit.allPass[4 + i], outR, num);
    }

    for (int t = 0; t < num; ++t)
    {
        outL[t] = outL[t] * 0.025f;
        outR[t] = outR[t] * 0.025f;
    }
}
} // namespace quorel
