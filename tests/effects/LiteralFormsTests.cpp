// SPDX-License-Identifier: GPL-3.0-or-later
// The plain, sample by sample forms of what the library calculates in a rearranged order, side by side with
// it over ten seconds of noise.
#include "EffectsTestTools.h"
#include "effects/EffectMath.h"
#include "effects/QuadMath.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quorel::test
{
namespace
{
constexpr int tenSeconds = 480000;

/** The reverb's unit as rows of twenty cells, one row a sample. */
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
    float store[20] = {};
    float lpState[2] = {}, hpState[2] = {}, allPass[8][8192] = {};
    int length[8], at[8] = {};

    float channel(int first, float even, float odd, int side)
    {
        float sum = 0.0f;
        for (int i = 0; i < 10; ++i)
        {
            const int comb = first + i;
            const float out =
                cells[((offset[comb] + position) & 0x3fff) * 20 + static_cast<std::uint32_t>(comb)];
            store[comb] = out * bank.damp2 + store[comb] * bank.damp1 + 1e-10f;
            const float in = i % 2 == 0 || (side == 1 && i == 9) ? even : odd;
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
        if (++position == 16384)
            position = 0;
        // The right side hears the left input in every second comb.
        outL = channel(0, l, l, 0);
        outR = channel(10, l, r, 1);
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
