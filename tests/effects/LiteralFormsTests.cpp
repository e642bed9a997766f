// SPDX-License-Identifier: GPL-3.0-or-later
// The plain, sample by sample forms of what the library calculates in a rearranged order, side by side with
// it over ten seconds of noise.
#include "EffectsTestTools.h"
#include "effects/AmpTables.h"
#include "effects/EffectMath.h"
#include "effects/LayerEq.h"
#include "effects/QuadMath.h"

#include <cmath>
#include <deque>
#include <gtest/gtest.h>

namespace quorel::test
{
namespace
{
constexpr int tenSeconds = 480000;
constexpr double fullScaleLimit = 1e-6;

double deviation(const std::vector<float>& a, const std::vector<float>& b)
{
    double most = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        most = std::max(most, std::abs(static_cast<double>(a[i]) - static_cast<double>(b[i])));
    return most;
}

/** The reverb's unit as rows of twenty cells, one row a sample, with both input rings and their taps. */
struct LiteralReverb
{
    explicit LiteralReverb(const ReverbUnit& unit)
        : bank(unit.bank)
    {
        for (int i = 0; i < 20; ++i)
            offset[i] = 16384 - bank.delay[i];
        for (int i = 0; i < 8; ++i)
            length[i] = unit.allPass[i].length;
    }

    const CombBank& bank;
    std::uint32_t offset[20], position = 0;
    std::vector<float> cells = std::vector<float>(16384 * 20);
    float store[20] = {}, ringA[16385] = {}, ringB[16385] = {};
    std::uint32_t tapOffsetA = 16384 - 1700, tapOffsetB = 16384 - 1100;
    float lpState[2] = {}, hpState[2] = {}, allPass[8][8192] = {};
    int length[8], at[8] = {};

    float channel(int first, const float* even, const float* odd, int side)
    {
        float sum = 0.0f;
        for (int i = 0; i < 10; ++i)
        {
            const int comb = first + i;
            const float out =
                cells[((offset[comb] + position) & 0x3fff) * 20 + static_cast<std::uint32_t>(comb)];
            store[comb] = out * bank.damp2 + store[comb] * bank.damp1 + 1e-10f;
            const float in = i % 2 == 0 || (side == 1 && i == 9) ? *even : *odd;
            cells[position * 20 + static_cast<std::uint32_t>(comb)] =
                store[comb] * bank.combFeedback + in + 1e-10f;
            sum = i == 0 ? out : sum + out;
        }
        sum = sum + 1e-10f;
        lpState[side] = sum * bank.lp + bank.lpInv * lpState[side] + 1e-10f;
        hpState[side] = lpState[side] * bank.hp + bank.hpInv * hpState[side] + 1e-10f;
        float v = lpState[side] - hpState[side];
        for (int k = side * 4; k < side * 4 + 4; ++k)
        {
            if (++at[k] == length[k])
                at[k] = 0;
            const float b = allPass[k][at[k]];
            allPass[k][at[k]] = b * 0.5f + v + 1e-10f;
            v = b - v;
        }
        return v * 0.025f;
    }

    void process(float l, float r, float& outL, float& outR)
    {
        ringA[0] = ringB[0] = l; // both positions are masked with 0x4000, and so stay where they are
        const float tapA = ringA[tapOffsetA & 0x4000], tapB = ringB[tapOffsetB & 0x4000];
        if (++position == 16384)
            position = 0;
        outL = channel(0, &l, &tapA, 0);
        outR = channel(10, &tapB, &r, 1);
    }
};

/** Tape as two queues a channel. */
struct LiteralTape
{
    std::deque<double> times{0.0}, values{0.0};
    double pos = 0.0;

    double read(double speed, double in)
    {
        pos += speed;
        if (pos < 100.0)
        {
            times.push_back(pos);
            values.push_back(in);
            return 0.0;
        }
        const double t = pos - 100.0;
        for (; times.size() >= 3; times.pop_front(), values.pop_front())
            if (t < times[1])
                return (values[1] - values[0]) * (t - times[0]) / (times[1] - times[0]) + values[0];
        return 0.0;
    }
};
} // namespace

TEST(LiteralForms, ReverbUnit)
{
    auto unit = std::make_unique<ReverbUnit>();
    unit->sampleRate = 48000.0f;
    reverbSetSampleRate(*unit);
    reverbSetFeedback(*unit, 0.9f);
    reverbSetDamping(*unit, 0.4f);
    reverbSetTone(*unit, 0.8f, 0.2f);

    for (const float scale : {1.0f, 0.0156f, 4.4f})
    {
        const auto cells = std::make_unique<ReverbCells>();
        unit->cells = cells.get();
        reverbSetLength(*unit, scale);
        reverbRest(*unit);
        for (AllPass& allPass : unit->allPass)
            allPass.position = 0;
        auto literal = std::make_unique<LiteralReverb>(*unit);
        literal->position = unit->bank.position;

        const Stereo in = noise(tenSeconds);
        Stereo got = in, expected = in;
        for (std::size_t i = 0; i < in.left.size(); i += 60)
            reverbProcess(unit.get(), 1, &in.left[i], &in.right[i], &got.left[i], &got.right[i], 60);
        for (std::size_t i = 0; i < in.left.size(); ++i)
            literal->process(in.left[i], in.right[i], expected.left[i], expected.right[i]);

        EXPECT_EQ(got.left, expected.left) << scale;
        EXPECT_EQ(got.right, expected.right) << scale;
    }
}

TEST(LiteralForms, TapeQueues)
{
    auto slot = makeSlot(4);
    TapeLine& tape = slot->tape;
    tapeSetLengths(tape, 0.5f, 0.6f, 0.0f, 0.0f, 1.0f);
    tapeSetFeedback(tape, 0.6f, -0.3f);
    LiteralTape left, right;
    const Stereo in = noise(tenSeconds);

    for (std::size_t i = 0; i < in.left.size(); ++i)
    {
        if (i % 9600 == 0) // wind faster and slower
            tapeSetLengths(tape, static_cast<float>(i % 7) / 10.0f, static_cast<float>(i % 11) / 12.0f, 0.0f,
                           4.0f, 1.0f);

        float gotL, gotR;
        tapeProcess(tape, in.left[i], in.right[i], gotL, gotR);
        const double speedL = 100.0 / static_cast<double>(tape.delayL);
        const double speedR = 100.0 / static_cast<double>(tape.delayR);
        const auto l = static_cast<float>(left.read(speedL, static_cast<double>(in.left[i])));
        const auto r = static_cast<float>(right.read(speedR, static_cast<double>(in.right[i])));
        const float wL = in.left[i] + l * tape.feedbackL + r * tape.crossL + fxTiny;
        const float wR = in.right[i] + r * tape.feedbackR + l * tape.crossR + fxTiny;
        left.times.push_back(left.pos);
        left.values.push_back(static_cast<double>(clampTo(wL, 100.0f)));
        right.times.push_back(right.pos);
        right.values.push_back(static_cast<double>(clampTo(wR, 100.0f)));
        ASSERT_EQ(gotL, l) << i;
        ASSERT_EQ(gotR, r) << i;
    }
}

TEST(LiteralForms, AmpAndCabinetSums)
{
    for (const int type : {21, 22})
    {
        for (const float choice : {0.3f, 0.6f, 0.95f})
        {
            auto slot = makeSlot(type);
            const Stereo in = noise(tenSeconds, 0.05f);
            Stereo out = in;
            run(*slot, {choice, 0.0f, 0.5f, 0.5f, 0.5f}, out); // no drive, a flat tone stack

            float history[64] = {}, ins[32] = {}, outs[32] = {};
            std::vector<float> expected(in.left.size());
            for (std::size_t n = 0; n < in.left.size(); ++n)
            {
                float sum = 0.0f;
                if (type == 21)
                {
                    const std::size_t i = (n + 1) & 63;
                    history[i] = in.left[n];
                    for (std::size_t k = 0; k < 64; ++k)
                        sum += ampTaps[slot->amp.type][k] * history[(i + k) & 63];
                }
                else
                {
                    ins[n & 31] = in.left[n];
                    for (std::size_t k = 0; k < 32; ++k)
                        sum += cabFeed[slot->cabinet.type][k] * ins[(n - k) & 31] +
                               cabBack[slot->cabinet.type][k] * outs[(n - k) & 31];
                    outs[n & 31] = sum;
                    sum *= cabGain[slot->cabinet.type];
                }
                expected[n] = sum;
            }

            EXPECT_LE(deviation(out.left, expected), fullScaleLimit) << type << ' ' << choice;
        }
    }
}

TEST(LiteralForms, EqLadder)
{
    LayerEq eq;
    eqInit(eq, 48000.0f);
    eq.enabled = 1;
    eqSetFilters(eq, true, 0.85f, false, 0.0f);
    const Stereo in = noise(tenSeconds);
    Stereo got = in;
    eqProcessBlock(eq, got.left.data(), got.right.data(), tenSeconds);

    const double tiny = static_cast<double>(fxTiny);
    double prev = 0.0, s1 = 0.0, s2 = 0.0, s3 = 0.0, s4 = 0.0;
    std::vector<float> expected(in.left.size());
    for (std::size_t n = 0; n < in.left.size(); ++n)
    {
        double sum = 0.0;
        for (int pass = 0; pass < 2; ++pass)
        {
            const double x = static_cast<double>(in.left[n]) - eq.lowPass.feedback * s4 + tiny;
            const double n1 = (x + prev) * eq.lowPass.p - eq.lowPass.scale * s1 + tiny;
            const double n2 = (n1 + s1) * eq.lowPass.p - eq.lowPass.scale * s2 + tiny;
            const double n3 = (n2 + s2) * eq.lowPass.p - eq.lowPass.scale * s3 + tiny;
            const double v = (n3 + s3) * eq.lowPass.p - eq.lowPass.scale * s4 + tiny;
            s1 = n1;
            s2 = n2;
            s3 = n3;
            s4 = (1.0 - v * v * 0.166666) * v;
            prev = x + tiny;
            sum += s4;
        }
        expected[n] = static_cast<float>(sum * 0.5);
    }

    EXPECT_LE(deviation(got.left, expected), fullScaleLimit);
}

TEST(LiteralForms, StateVariableFilter)
{
    SvfBanks banks;
    setSvf(banks, 0.6f, 0.9f, 0.0f, 48000.0f);
    SvfRun svf(banks.svfA);
    const double tiny = static_cast<double>(fxTiny);
    double low = 0.0, band = 0.0, most = 0.0;
    const Stereo in = noise(tenSeconds);

    for (std::size_t n = 0; n < in.left.size(); ++n)
    {
        svf.tick(pairOf(in.left[n], in.right[n]), SvfSetting{banks.svfF, banks.svfQ});
        band = band - band * band * band * 0.0010000000474974513 + tiny;
        const double high = static_cast<double>(in.left[n]) - low - band * banks.svfQ + tiny;
        band = high * banks.svfF + tiny + band;
        low = band * banks.svfF + tiny + low;
        most = std::max(
            {most, std::abs(low - svf.low[0]), std::abs(band - svf.band[0]), std::abs(high - svf.high[0])});
    }

    EXPECT_LE(most, fullScaleLimit);
}

TEST(LiteralForms, FilterCoreLadderAndStateVariable)
{
    for (const int type : {3, 17})
    {
        for (const float cutoff : {0.2f, 0.5f, 0.8f})
        {
            auto core = std::make_unique<FilterCore>();
            FilterCoefficients c{};
            filterConstruct(*core);
            filterInit(*core, 48000.0f);
            core->type = type;
            core->cutoffTarget = core->cutoffSmooth = cutoff;
            core->resonance = 0.8f;
            filterCoefficients(*core, c);

            const Stereo in = noise(tenSeconds);
            std::vector<float> left(in.left.size()), right(in.left.size()), expected(in.left.size());
            const FilterStep step{&c, tenSeconds};
            filterProcess(*core, in.left.data(), in.right.data(), left.data(), right.data(), 1.0f, 1.0f,
                          &step, 1);

            float s1 = 0.0f, s2 = 0.0f, s3 = 0.0f, s4 = 0.0f, prev = 0.0f, band = 0.0f, low = 0.0f;
            for (std::size_t n = 0; n < in.left.size(); ++n)
            {
                for (int pass = 0; pass < 2; ++pass)
                {
                    const float x = in.left[n] - c.ladderFeedback * s4 + fxTiny;
                    const float n1 = (x + prev) * c.ladderP - c.ladderScale * s1 + fxTiny;
                    const float n2 = (n1 + s1) * c.ladderP - c.ladderScale * s2 + fxTiny;
                    const float n3 = (n2 + s2) * c.ladderP - c.ladderScale * s3 + fxTiny;
                    const float v = (n3 + s3) * c.ladderP - c.ladderScale * s4 + fxTiny;
                    s1 = n1;
                    s2 = n2;
                    s3 = n3;
                    s4 = (1.0f - v * v * 0.166666f) * v;
                    prev = x + fxTiny;

                    band = band - band * band * band * 0.001f + fxTiny;
                    const float high = in.left[n] - low - band * c.svfQ + fxTiny;
                    band = high * c.svfF + fxTiny + band;
                    low = band * c.svfF + fxTiny + low;
                    expected[n] += type == 17 ? s4 : low * 0.70710678f;
                }
            }

            EXPECT_LE(deviation(left, expected), fullScaleLimit) << type << ' ' << cutoff;
        }
    }
}

TEST(LiteralForms, CompressorGain)
{
    for (const float threshold : {0.2f, 0.6f})
    {
        auto slot = makeSlot(27);
        const Stereo in = noise(tenSeconds, 0.9f);
        Stereo out = in;
        run(*slot, {threshold, 0.9f, 0.1f, 0.4f, 0.5f}, out);

        float envelope = 0.0f, peak = 0.0f, gain = 1.0f, look[256] = {};
        std::vector<float> expected(in.left.size());
        for (std::size_t n = 0; n < in.left.size(); ++n)
        {
            const float delayed = look[n & 255], level = std::abs(in.left[n]);
            look[n & 255] = in.left[n];
            const float c = peak > envelope ? slot->compressor.attack : slot->compressor.release;
            envelope = (1.0f - c) * peak + c * envelope;
            peak = level > peak ? level : level * 0.001f + peak * 0.999f + fxTiny;
            const float target =
                envelope > slot->compressor.thresholdLin
                    ? std::pow(10.0f, (slot->compressor.thresholdDb - 20.0f * std::log10(envelope)) *
                                          slot->compressor.slope * 0.05f)
                    : 1.0f;
            gain = (1.0f - slot->compressor.attack) * target + slot->compressor.attack * gain;
            expected[n] = slot->compressor.post * gain * delayed;
        }

        EXPECT_LE(deviation(out.left, expected), fullScaleLimit) << threshold;
    }
}

TEST(LiteralForms, FunctionsOfTheCurves)
{
    for (float x = -100.0f; x < 100.0f; x += 0.00137f)
    {
        const Quad v = quadOf(x);
        ASSERT_NEAR(quorel::sine(v)[0], std::sin(static_cast<double>(x)), 1e-7) << x;
        ASSERT_NEAR(quorel::cosine(v)[1], std::cos(static_cast<double>(x)), 1e-7) << x;
        ASSERT_NEAR(quorel::arctangent(v)[2], std::atan(static_cast<double>(x)), 2e-7) << x;
    }
}

TEST(LiteralForms, SampleBySampleEqualsAnyBlock)
{
    for (int type = 0; type < fxTypeCount; ++type)
    {
        auto blocks = makeSlot(type), samples = makeSlot(type);
        const std::vector<float> p = {0.4f, 0.7f, 0.6f, 0.8f, 0.55f, 0.45f, 0.7f, 0.6f, 0.3f, 0.5f};
        Stereo a = noise(4800, 0.7f), b = a;

        for (std::size_t from = 0, length = 1; from < a.left.size();
             from += length, length = length % 150 + 7)
        {
            length = std::min(length, a.left.size() - from);
            fxUpdate(*blocks, p.data(), 131.0f);
            fxUpdate(*samples, p.data(), 131.0f);
            fxProcessBlock(*blocks, &a.left[from], &a.right[from], static_cast<int>(length));
            for (std::size_t i = from; i < from + length; ++i)
                fxProcessSample(*samples, b.left[i], b.right[i], &b.left[i], &b.right[i]);
        }

        EXPECT_EQ(a.left, b.left) << fxTypes[static_cast<std::size_t>(type)].name;
        EXPECT_EQ(a.right, b.right) << fxTypes[static_cast<std::size_t>(type)].name;
        EXPECT_EQ(blocks->silenceCount, samples->silenceCount);
    }
}
} // namespace quorel::test
