// SPDX-License-Identifier: GPL-3.0-or-later
// Chorus, ensemble, flanger, phaser, and the effects of gain: pan, tremolo, Kappel.
#include "EffectsTestTools.h"
#include "effects/ModLine.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quorel::test
{
namespace
{
struct Range
{
    double least = 1e9, most = 0.0;
};

/** Where the left output puts an impulse, over many impulses. */
Range impulseRange(int type, const std::vector<float>& p)
{
    auto slot = makeSlot(type);
    run(*slot, p, silence(4800));
    Range range;

    for (int i = 0; i < 150; ++i)
    {
        const auto at = static_cast<double>(peakPosition(run(*slot, p, impulse(3300)).left));
        range.least = std::min(range.least, at);
        range.most = std::max(range.most, at);
    }

    return range;
}

int countNotches(int type, const std::vector<float>& p)
{
    auto slot = makeSlot(type);
    fxSetMix(*slot, 0.75f, 0.5f, 0.5f);
    const Stereo s = runAfter(64, *slot, p, impulse(2048));
    std::vector<double> level;
    for (double hz = 60.0; hz < 23000.0; hz *= 1.01)
        level.push_back(gainAt(s.right, hz, 48000.0));

    int notches = 0;
    for (std::size_t i = 1; i + 1 < level.size(); ++i)
        if (level[i] < 0.3 && level[i] < level[i - 1] && level[i] <= level[i + 1])
            ++notches;
    return notches;
}
} // namespace

TEST(Chorus, LineIsReadBetweenItsSamples)
{
    // A Catmull-Rom curve through samples of a parabola is that parabola, also where the ring begins.
    std::vector<float> line(fxModLineLength);
    for (const int newest : {700, 5, 0, 16383})
    {
        for (int age = 0; age < 300; ++age)
        {
            const auto at = static_cast<std::size_t>((newest - age) & (fxModLineLength - 1));
            line[at] = 1.0f + 0.01f * static_cast<float>(age * age - 40 * age);
        }
        for (const float d : {2.0f, 2.25f, 3.5f, 60.125f, 200.75f})
            EXPECT_NEAR(modLineRead(line.data(), static_cast<std::uint32_t>(newest), d),
                        1.0f + 0.01f * (d * d - 40.0f * d), 1e-2f)
                << newest << ' ' << d;
    }
}

TEST(Chorus, ReadsBetweenAHundredthOfTheLengthAndAllOfIt)
{
    struct Case
    {
        int type;
        std::vector<float> p;
        double least, most, tolerance;
    };

    const Case cases[] = {
        {7, {0.5f, 0, 1, 0, 0, 0, 1, 0}, 1201, 1201, 0}, // no width: a plain delay
        {7, {0.5f, 1, 0.97f, 0, 0, 0, 1, 0}, 12, 1201, 12},
        {8, {0.5f, 0, 1, 0, 0, 0, 1, 0}, 1201, 1201, 1},
        {11, {0.5f, 0, 1, 0, 0.5f, 0, 1, 0}, 1254, 1254, 0},
        {11, {0.5f, 1, 0.97f, 0, 0.5f, 0, 1, 0}, 22, 1254, 14},
        {12, {0.5f, 0, 1, 0, 0.5f, 0, 1, 0}, 1254, 1254, 1},
    };

    for (const Case& c : cases)
    {
        const Range range = impulseRange(c.type, c.p);
        EXPECT_NEAR(range.least, c.least, c.tolerance) << c.type;
        EXPECT_NEAR(range.most, c.most, c.tolerance) << c.type;
    }

    // "Widen" puts the right side 5 to 1025 samples behind.
    const Stereo s = run(*makeSlot(7), {0.5f, 0, 0, 0, 0, 0.5f, 1, 0}, impulse(4800));
    EXPECT_EQ(peakPosition(s.right), 1201u + 65u);
}

TEST(Chorus, DelayBehindItKeepsTime)
{
    // 1/16 of 110 bpm behind a chorus of 1201 samples.
    const Stereo s =
        runAfter(64, *makeSlot(9), {0.5f, 0, 0, 0, 0, 4.5f / 14.99f, 0.5f, 1}, impulse(40000), 110.0f);
    const double sixteenth = 48000.0 * 60.0 / 110.0 / 4.0 + 1.0;
    EXPECT_EQ(peakPosition(s.left, 0, 5000), 1201u);
    EXPECT_NEAR(static_cast<double>(peakPosition(s.left, 5000, 10000)), 1201 + sixteenth, 1.0);
    EXPECT_NEAR(peak({s.left.begin() + 13000, s.left.begin() + 15500}) /
                    peak({s.left.begin() + 7000, s.left.begin() + 9000}),
                0.5, 0.1);
}

TEST(Chorus, EnsembleSpreadsItsVoices)
{
    // One length for all six at "Ensemble" 1; each a factor 2^-0.4 shorter than the last at 0.
    for (const bool together : {true, false})
    {
        const Stereo s = runAfter(20000, *makeSlot(10), {0.5f, 0, 0, 0, 0, together ? 1.0f : 0.0f, 0, 1, 0},
                                  impulse(4800));
        for (int i = 0; i < 6; ++i)
        {
            const double expected = together ? 1201.0 : 1201.0 * std::exp2(-0.4 * i);
            const auto around = static_cast<std::size_t>(expected);
            EXPECT_GT(peak({s.left.begin() + static_cast<std::ptrdiff_t>(around) - 2,
                            s.left.begin() + static_cast<std::ptrdiff_t>(around) + 3}),
                      together ? 1.0 : 0.2)
                << i;
        }
    }
}

TEST(Flangers, FeedbackCrossesInOneAndStaysOnItsSideInTheOther)
{
    struct Case
    {
        int type;
        float feedback;
        bool crosses;
        double gain; // of the second echo against the first
    };

    // The line subtracts its feedback, the tape adds it, and only the line sends it across.
    const Case cases[] = {
        {11, 1, true, -0.99}, {11, 0, true, 0.99}, {12, 1, false, 0.99}, {12, 0, false, -0.99}};

    for (const Case& c : cases)
    {
        const Stereo s = runAfter(4800, *makeSlot(c.type), {0.5f, 0, 0, 0, c.feedback, 0, 1, 0},
                                  impulse(3300, 1.0f, 0.0f));

        const auto& second = c.crosses ? s.right : s.left;
        const auto& other = c.crosses ? s.left : s.right;
        const auto first = peakPosition(s.left, 0, 2000), next = peakPosition(second, 2000);
        EXPECT_NEAR(static_cast<double>(first), 1254, 1) << c.type;
        EXPECT_NEAR(static_cast<double>(next), 2508, 2) << c.type;
        EXPECT_NEAR(static_cast<double>(second[next] / s.left[first]), c.gain, 0.02) << c.type;
        EXPECT_LT(peak(other, 2000), 0.01) << c.type;
    }
}

TEST(Flangers, PanSwingsFromSideToSideAtFullLevel)
{
    for (const int type : {11, 12})
    {
        const Stereo s = run(*makeSlot(type), {0.2f, 0, 1, 0, 0.5f, 1, 1, 0}, sine(48000, 1000.0));
        double leastLeft = 1.0, leastRight = 1.0;

        for (std::size_t from = 4800; from < 48000; from += 480)
        {
            const double left = rms(s.left, from, from + 480), right = rms(s.right, from, from + 480);
            leastLeft = std::min(leastLeft, left);
            leastRight = std::min(leastRight, right);
            EXPECT_NEAR(std::max(left, right), std::sqrt(0.5), 0.06) << type;
        }

        EXPECT_LT(leastLeft, 0.1) << type;
        EXPECT_LT(leastRight, 0.1) << type;
    }
}

TEST(Phasers, NotchesFollowTheStages)
{
    // n first-order all-passes turn by n half circles, n second-order ones by n whole circles.
    EXPECT_EQ(countNotches(13, {0, 0.6f, 0, 0, 0, 0, 0, 0}), 0);
    EXPECT_EQ(countNotches(13, {0.5f, 0.6f, 0, 0, 0, 0, 0, 0}), 2);
    EXPECT_EQ(countNotches(13, {1, 0.6f, 0, 0, 0, 0, 0, 0}), 4);
    EXPECT_EQ(countNotches(14, {0, 0.9f, 0, 0, 0, 0, 0, 0, 0.5f}), 1);
    EXPECT_EQ(countNotches(14, {0.5f, 0.9f, 0, 0, 0, 0, 0, 0, 0.5f}), 4);
}

TEST(Phasers, SpreadDelaysTheLeftSide)
{
    // At full pitch the stages only turn the sign around; "Spread" of the Ana. Phaser is its "Width" slot.
    for (const auto& [type, p] : {std::pair{13, std::vector<float>{0, 0, 0, 0, 0, 0, 0.5f, 0}},
                                  std::pair{14, std::vector<float>{0, 0.5f, 0, 0.5f, 0, 0, 1, 0, 0.5f}}})
    {
        Stereo s = noise(4800);
        s.left = s.right;
        s = run(*makeSlot(type), p, s);
        for (std::size_t i = 1000; i < 4000; i += 100)
            EXPECT_NEAR(s.left[i], s.right[i - 65], 1e-6f) << type;
    }
}

TEST(Gains, PanAndTremeloRanges)
{
    // A square wave without smoothing: from one end to the other.
    struct Case
    {
        int type;
        float amount;
        double least, most;
    };

    for (const Case& c : {Case{24, 1.0f, 0.0, 1.0},
                          {24, 0.5f, 0.5, 1.0},
                          {25, 1.0f, 0.0, 1.0},
                          {25, 0.5f, 0.5, 1.0},
                          {25, 0.0f, 1.0, 1.0}})
    {
        const Stereo s =
            run(*makeSlot(c.type), {1, c.amount, 0, 20.5f / 30.99f, 1}, constant(96000, 1.0f), 117.0f);
        const auto [least, most] = std::minmax_element(s.left.begin() + 100, s.left.end());
        EXPECT_NEAR(*least, c.least, 1e-5) << c.type << ' ' << c.amount;
        EXPECT_NEAR(*most, c.most, 1e-5) << c.type << ' ' << c.amount;

        // One cycle of "1/4" lasts two quarters; pan sends left and right opposite ways, tremolo the same.
        const auto halfCycle = static_cast<std::size_t>(48000.0 * 60.0 / 117.0);
        if (c.amount > 0.0f)
        {
            EXPECT_GT(std::abs(s.left[halfCycle / 2] - s.left[halfCycle + halfCycle / 2]), 0.4f) << c.type;
            EXPECT_EQ(s.left[halfCycle / 2] == s.right[halfCycle / 2], c.type == 25);
        }
    }

    // Smoothing is a one-pole: after 2^6.5 samples a step has come to 1 - 1 / e.
    const Stereo s = run(*makeSlot(25), {0, 0, 0.5f, 0, 0}, constant(91, 1.0f));
    EXPECT_NEAR(s.left.back(), 1.0 - std::exp(-1.0), 0.01);
}

TEST(Kappel, StepsFollowPatternTempoAndSwing)
{
    struct Case
    {
        float speed; // entry of the table
        double halfNotes;
        float swing;
        int mode;
        float bpm;
    };

    const unsigned left = 0xa5c3, right = 0x0ff1;

    for (const Case& c : {Case{14, 2.0, 0.0f, 0, 120.0f},
                          {17, 1.0, 0.0f, 0, 97.3f},
                          {20, 0.5, 0.6f, 0, 141.7f},
                          {11, 4.0, 0.0f, 1, 120.0f},
                          {14, 2.0, 0.0f, 2, 120.0f}})
    {
        const double step = c.halfNotes * 2.0 * 60.0 / static_cast<double>(c.bpm) * 48000.0 / 16.0;
        const std::vector<float> p = {(c.speed + 0.5f) / 30.99f,
                                      0,
                                      (static_cast<float>(c.mode) + 0.5f) / 2.99f,
                                      0,
                                      c.swing,
                                      static_cast<float>(left) / 65535.9f + 1e-6f,
                                      static_cast<float>(right) / 65535.9f + 1e-6f};
        const Stereo s = run(*makeSlot(26), p, constant(static_cast<int>(step * 16.0), 1.0f), c.bpm);

        const double share = static_cast<double>(c.swing) * 0.5 + 0.5; // of a pair, for its first step
        for (unsigned i = 0; i < 16; ++i)
        {
            const double pair = 2.0 * step * (i / 2);
            const double middle =
                i % 2 == 0 ? pair + step * share : pair + 2.0 * step * (share + (1.0 - share) / 2.0);
            const auto at = static_cast<std::size_t>(middle);
            EXPECT_NEAR(s.left[at], c.mode == 2 || ((left >> i) & 1u) ? 1.0 : 0.0, 1e-3)
                << i << ' ' << c.speed;
            EXPECT_NEAR(s.right[at], c.mode == 1 || ((right >> i) & 1u) ? 1.0 : 0.0, 1e-3)
                << i << ' ' << c.speed;
        }

        // The edges lie where the tempo puts them: bits 1 and 2 of the left pattern differ.
        if (c.mode != 2)
        {
            const auto edge = static_cast<std::size_t>(2.0 * step);
            EXPECT_GT(s.left[edge - 20], 0.99f);
            EXPECT_LT(s.left[edge + 20], 0.01f);
        }
    }
}
} // namespace quorel::test
