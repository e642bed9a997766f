// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectsTestTools.h"
#include "support/AllocationGuard.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace quorel::test
{
namespace
{
using Parameters = std::array<float, fxParameterCount>;

Parameters randomParameters(std::mt19937& engine)
{
    Parameters p;
    for (float& v : p)
    {
        const auto kind = engine() % 4;
        v = kind == 0 ? 0.0f : (kind == 1 ? 1.0f : std::uniform_real_distribution<float>(0.0f, 1.0f)(engine));
    }
    return p;
}

/** Returns the peak of the output. */
double play(FxSlot& slot, const Parameters& p, float bpm, const Stereo& signal)
{
    const Stereo s = run(slot, {p.begin(), p.end()}, signal, bpm);
    return std::max(peak(s.left), peak(s.right));
}

std::string describe(int type, float rate, float bpm, const Parameters& p)
{
    std::string text = std::string(fxTypes[static_cast<std::size_t>(type)].name) + " at " +
                       std::to_string(rate) + " Hz, " + std::to_string(bpm) + " bpm:";
    for (float v : p)
        text += ' ' + std::to_string(v);
    return text;
}
} // namespace

/** All types at random settings, driven with full-scale square waves and then with what no instrument should
    send. */
class EffectSweep : public testing::TestWithParam<int>
{
};

TEST_P(EffectSweep, StaysBoundedAndRecovers)
{
    const int type = GetParam();
    std::mt19937 engine(static_cast<unsigned>(type));
    double loudest = 0.0;
    const bool boosts = type == 21 || type == 22; // three boosts of 20 dB behind one another, as set

    for (const float rate : {22050.0f, 44100.0f, 48000.0f, 96000.0f, 192000.0f})
    {
        const float bpm = std::uniform_real_distribution<float>(20.0f, 400.0f)(engine);
        const int second = static_cast<int>(rate);

        // Two settings one after the other: coefficients must survive the change. One slot then gets what
        // no instrument should send, the other one silence.
        const Parameters earlier = randomParameters(engine), p = randomParameters(engine);
        const Stereo before = square(second / 4, 2 + static_cast<int>(engine() % 400));
        const Stereo loud = square(second, 2 + static_cast<int>(engine() % 400));
        const float bad[] = {NAN, INFINITY, -INFINITY, 3.0e38f, -1.0e10f, 1.0e4f};
        const Stereo bursts[] = {square(second / 20, 50, bad[engine() % 6]), silence(second / 20)};
        const Stereo after = noise(second / 2, 0.5f);
        double levels[2] = {};

        for (std::size_t i = 0; i < 2; ++i)
        {
            auto slot = makeSlot(type, rate);
            play(*slot, earlier, bpm, before);
            loudest = std::max(loudest, play(*slot, p, bpm, loud));
            loudest = std::max(loudest, play(*slot, p, bpm, bursts[i]));
            loudest = std::max(loudest, play(*slot, p, bpm, silence(second)));
            levels[i] = play(*slot, p, bpm, after);
            EXPECT_LE(std::max(loudest, levels[i]), boosts ? 4000.0 : 100.001)
                << describe(type, rate, bpm, p);
        }

        EXPECT_NEAR(levels[0], levels[1], 0.1 * levels[1] + 1e-3) << describe(type, rate, bpm, p);
    }
}

TEST(Hazards, TypeChangesUnderLoadAllocateNothing)
{
    std::mt19937 engine(7);
    auto slot = makeSlot(0, 48000.0f);
    Stereo s = noise(64);
    const AllocationGuard guard;

    for (int i = 0; i < 2000; ++i)
    {
        if (i % 8 == 0)
            changeType(*slot, static_cast<int>(engine() % fxTypeCount));

        const Parameters p = randomParameters(engine);
        fxUpdate(*slot, p.data(), 120.0f);
        fxProcessBlock(*slot, s.left.data(), s.right.data(), 64);
        ASSERT_LT(std::max(peak(s.left), peak(s.right)), 1.0e5);
        for (std::size_t n = 0; n < 64; ++n)
        {
            s.left[n] = n % 9 < 4 ? 1.0f : -1.0f;
            s.right[n] = -s.left[n];
        }
    }

    EXPECT_EQ(guard.heapCalls(), 0);
}

INSTANTIATE_TEST_SUITE_P(AllTypes, EffectSweep, testing::Range(1, fxTypeCount));
} // namespace quorel::test
