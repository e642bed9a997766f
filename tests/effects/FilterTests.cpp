// SPDX-License-Identifier: GPL-3.0-or-later
// The filter core's 29 types and the effects that are built on filters.
#include "EffectsTestTools.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quorel::test
{
namespace
{
constexpr float rate = 96000.0f;
constexpr float oneKilohertz = 0.5643856f; // of 20 Hz x 2^(10 p)

std::vector<float> filterParameters(int type, float cutoff = oneKilohertz, float q = 0.0f, float vowel = 0.0f)
{
    return {(static_cast<float>(type) + 0.5f) / 29.99f, 0, cutoff, q, vowel, 0, 0, 0, 0, 0.5f};
}

/** Impulse response of a settled filter at a level where it is linear. */
Stereo response(const std::vector<float>& p, float left = 1e-3f, float right = 1e-3f)
{
    return runAfter(40000, *makeSlot(29, rate), p, impulse(8192, left, right));
}

double gainAt(const std::vector<float>& impulseResponse, double hz)
{
    return 1e3 * test::gainAt(impulseResponse, hz, 96000.0);
}
} // namespace

TEST(FilterTypes, SlopesAndPassBands)
{
    struct Case
    {
        int type;
        bool lowPass;
        double slope; // dB to an octave, far from the corner
        double pass;  // gain in the pass band
    };

    // "18 LP" has the slope of "12 LP"; 17 and 18 sum two passes without halving them; the ladder's
    // high-passes are what is left without the low-pass, and that falls by 6 dB.
    const Case cases[] = {
        {1, true, 6, 1},       {3, true, 12, 1.414}, {7, true, 12, 1},       {11, true, 12, 1.414},
        {13, true, 24, 1.414}, {17, true, 24, 2},    {21, true, 36, 2},      {2, false, 6, 1},
        {4, false, 12, 1.414}, {8, false, 12, 1},    {12, false, 18, 1.414}, {14, false, 24, 1.414},
        {18, false, 6, 2},     {22, false, 12, 1},
    };

    for (const Case& c : cases)
    {
        const Stereo s = response(filterParameters(c.type));
        const double octave = c.lowPass ? 2.0 : 0.5, far = c.lowPass ? 4000.0 : 125.0;
        const double slope = decibels(gainAt(s.left, far) / gainAt(s.left, far * octave));
        EXPECT_NEAR(slope, c.slope, 0.12 * c.slope + 0.5) << c.type;
        EXPECT_NEAR(gainAt(s.left, c.lowPass ? 25.0 : 14000.0), c.pass, 0.12 * c.pass) << c.type;
        EXPECT_EQ(s.left, s.right) << c.type;
    }

    const Stereo bypass = response(filterParameters(0));
    EXPECT_NEAR(bypass.left[0], 1e-3f, 1e-9f);
    EXPECT_LT(peak(bypass.left, 1), 1e-12);
}

TEST(FilterTypes, CentreFrequencies)
{
    // Resonant peaks and notches sit at the cutoff; "12 N", the low-pass less the high-pass, peaks there; the
    // ladder's self-damped band a little lower.
    struct Case
    {
        int type;
        float q;
        bool isNotch;
        double tolerance;
    };

    for (const Case& c : {Case{5, 0.8f, false, 30}, Case{6, 0.8f, false, 30}, Case{9, 0.8f, false, 30},
                          Case{15, 1.0f, false, 250}, Case{19, 0.8f, false, 30}, Case{10, 0.5f, true, 40},
                          Case{20, 0.5f, true, 40}})
    {
        const Stereo s = response(filterParameters(c.type, oneKilohertz, c.q));
        double extreme = c.isNotch ? 1e9 : 0.0, at = 0.0;
        for (double hz = 300.0; hz < 3000.0; hz *= 1.01)
            if (const double g = gainAt(s.left, hz); c.isNotch ? g < extreme : g > extreme)
                extreme = g, at = hz;
        EXPECT_NEAR(at, 1000.0, c.tolerance) << c.type;
        EXPECT_TRUE(c.isNotch ? extreme < 0.2 : extreme > 2.0) << c.type << ' ' << extreme;
    }

    // The ladder's notch at its poles, 1292 Hz here: what its band takes out, 3 (1 + i)^-3 (1 - (1 + i)^-1) =
    // -0.75 i, turns the rest rather than cancelling it.
    EXPECT_NEAR(gainAt(response(filterParameters(16)).left, 1292.0), 1.25, 0.03);
}

TEST(FilterTypes, TheLadderBendsWhatIsLoud)
{
    // With its poles at 0 and no feedback, a held value comes out of each of the two passes as it went in,
    // but for what the cubic stage takes off.
    FilterCore core;
    FilterCoefficients c{};
    filterConstruct(core);
    filterInit(core, 48000.0f);
    core.type = 17;
    filterCoefficients(core, c);
    c.ladderP = 0.5f;
    c.ladderScale = c.ladderFeedback = 0.0f;
    const Stereo in = constant(1000, 0.5f);
    Stereo out = silence(1000);
    const FilterStep step{&c, 1000};
    filterProcess(core, in.left.data(), in.right.data(), out.left.data(), out.right.data(), 1.0f, 1.0f, &step,
                  1);
    EXPECT_NEAR(out.left.back(), 2.0 * (0.5 - 0.125 / 6.0), 1e-5);
}

TEST(FilterTypes, CombsVowelsAndRing)
{
    // Combs: the input 96 samples late, then an echo every 96 samples at 1 kHz, of one sign or of turning
    // signs, (0.95 q)^(1/4) of the last.
    for (const auto& [type, sign] : {std::pair{23, 1.0}, {24, -1.0}})
    {
        const Stereo s = response(filterParameters(type, oneKilohertz, 0.5f));
        const auto first = peakPosition(s.left, 10, 150);
        EXPECT_NEAR(static_cast<double>(first), 96.0, 1.0);
        EXPECT_NEAR(static_cast<double>(s.left[first]) * 1e3, 1.0, 1e-3);
        EXPECT_NEAR(static_cast<double>(s.left[2 * first]) * 1e3, sign * std::pow(0.475, 0.25), 1e-3);
    }

    // "Vox" listens to the right channel alone and plays it on both: "A" at 440 Hz has its formants
    // untransposed.
    const auto vox = filterParameters(25, std::log2(22.0f) / 10.0f, 0.9f, 0.0f);
    EXPECT_LT(peak(response(vox, 1e-3f, 0.0f).left), 1e-9);
    const Stereo a = response(vox, 0.0f, 1e-3f);
    EXPECT_EQ(a.left, a.right);
    EXPECT_GT(gainAt(a.left, 650.0), 2.0 * gainAt(a.left, 300.0));
    EXPECT_GT(gainAt(a.left, 1080.0), 1.5 * gainAt(a.left, 1700.0));

    // "Form2" with half the vowel: an octave to each side.
    const Stereo form = response(filterParameters(26, oneKilohertz, 1.0f, 0.5f));
    EXPECT_GT(gainAt(form.left, 500.0), 3.0 * gainAt(form.left, 1000.0));
    EXPECT_GT(gainAt(form.left, 2000.0), 3.0 * gainAt(form.left, 1000.0));

    // "Ring": 1 kHz times 3 kHz, with a depth of 0.95.
    const Stereo s = runAfter(4800, *makeSlot(29, rate), filterParameters(28, oneKilohertz, 1.0f),
                              sine(19200, 3000.0, 0.5f, 96000.0));
    EXPECT_NEAR(std::abs(component(s.left, 0, 2000.0, 96000.0)), 0.95 * 0.25, 0.01);
    EXPECT_NEAR(std::abs(component(s.left, 0, 4000.0, 96000.0)), 0.95 * 0.25, 0.01);
}

TEST(FilterTypes, ExtremesStayStable)
{
    for (int type = 0; type < 29; ++type)
    {
        for (const float sampleRate : {22050.0f, 192000.0f})
        {
            for (const float cutoff : {0.0f, 0.1f, 1.0f})
            {
                auto p = filterParameters(type, cutoff, 1.0f, 1.0f);
                p[1] = 1.0f;
                const Stereo s = run(*makeSlot(29, sampleRate), p, square(40000, 97));
                EXPECT_LT(std::max(peak(s.left), peak(s.right)), 100.0)
                    << type << ' ' << sampleRate << ' ' << cutoff;
            }
        }
    }
}

TEST(FilterEffects, BassDistortsTheLowsAlone)
{
    // 100 Hz corner and all the drive: 50 Hz grows harmonics, 5 kHz passes as it is.
    for (const auto& [hz, rough] : {std::pair{50.0, true}, {5000.0, false}})
    {
        Stereo s = run(*makeSlot(30, rate), {0.3f, 0.8f, 0.5f, 0.5f}, sine(38400, hz, 0.5f, 96000.0));
        const double third = std::abs(component(s.left, 19200, 3.0 * hz, 96000.0));
        EXPECT_EQ(third > 0.02, rough) << hz << ' ' << third;
        const double first = std::abs(component(s.left, 19200, hz, 96000.0));
        EXPECT_TRUE(rough || std::abs(first - 0.5) < 0.03) << hz << ' ' << first;
    }
}

TEST(FilterEffects, AutoWahOpensWithTheLevel)
{
    const auto treble = [](float amplitude, float sense)
    {
        Stereo s = run(*makeSlot(32, rate), {0, 0.2f, 0.9f, sense, 0, 0.2f},
                       sine(48000, 4000.0, amplitude, 96000.0));
        return rms(s.left, 24000) / static_cast<double>(amplitude);
    };

    EXPECT_GT(treble(0.5f, 0.6f), 10.0 * treble(0.005f, 0.6f));
    EXPECT_NEAR(treble(0.5f, 0.0f), treble(0.005f, 0.0f), 1e-4);
}

TEST(FilterEffects, WahWahDelayRepeatsInTime)
{
    const Stereo s =
        runAfter(9600, *makeSlot(31), {1, 1, 0, 0, 0, 0, 0, 4.5f / 14.99f, 0.5f, 1}, impulse(24000), 125.0f);
    const double sixteenth = 48000.0 * 60.0 / 125.0 / 4.0 + 1.0;
    const auto direct = static_cast<double>(peakPosition(s.left, 0, 1000));
    EXPECT_NEAR(static_cast<double>(peakPosition(s.left, 3000, 8000)), direct + sixteenth, 1.0);
    EXPECT_NEAR(peak({s.left.begin() + 10000, s.left.begin() + 13000}) /
                    peak({s.left.begin() + 4000, s.left.begin() + 8000}),
                0.5, 0.03);
}

TEST(FilterEffects, WidenerDelaysTheRightSide)
{
    // 2^4 x 4 + 1 = 65 samples, unmoved.
    const Stereo s = run(*makeSlot(23), {0.5f, 0, 0, 1, 0}, impulse(2000));
    EXPECT_EQ(peakPosition(s.left), 0u);
    EXPECT_EQ(peakPosition(s.right), 65u);
}
} // namespace quorel::test
