// SPDX-License-Identifier: GPL-3.0-or-later
// Distortions, amp and cabinet, compressor and gate.
#include "EffectsTestTools.h"
#include "effects/AmpTables.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numeric>

namespace quorel::test
{
namespace
{
/** Amplitudes of the first four harmonics of a 250 Hz sine through an effect. */
std::array<double, 5> harmonics(int type, const std::vector<float>& p, float amplitude)
{
    const Stereo s = run(*makeSlot(type), p, sine(19200, 250.0, amplitude));
    std::array<double, 5> h{};
    for (std::size_t k = 1; k < h.size(); ++k)
        h[k] = std::abs(component(s.left, 9600, 250.0 * static_cast<double>(k)));
    return h;
}

/** Last output for a constant input. */
float steady(int type, const std::vector<float>& p, float level)
{
    return run(*makeSlot(type), p, constant(48000, level)).left.back();
}
} // namespace

TEST(MultiDistort, CurvesAtHandComputedPoints)
{
    // A sine against the same sine through "None": the filters around the curve drop out of the ratio at 250
    // Hz, and -10 dB behind keeps the output from its limit.
    struct Case
    {
        const char* what;
        int curve;
        float a, b, amplitude;
        double first, second; // harmonics, by the input's amplitude
    };

    const Case cases[] = {
        {"Atan, small", 1, 0.5f, 0, 0.02f, 4.6669 / 1.35973, 0},
        {"Cos, small", 2, 0.5f, 0, 0.002f, 1, 0},
        {"Cos with no amount", 2, 0, 0, 0.5f, 1, 0},
        {"Cross with no amount", 3, 0, 0, 0.5f, 1, 0},
        {"Foldover, below the fold", 4, 0.5f, 0, 0.3f, 1 / 0.505, 0},
        {"Fuzz, small", 5, 0.5f, 0.25f, 0.002f, 1 + 0.5 * 3.14159, 0},
        {"Limiter, below its limit", 6, 1.0f / 6, 0, 0.4f, 2, 0},
        {"Limiter, far above", 6, 1, 0, 0.5f, 4 / 3.14159 / 0.5, 0},
        {"Overdrive, small", 7, 1.0f / 6, 0, 0.002f, 1, 0},
        {"Power, small", 8, 0.5f, 0, 0.001f, 2.996, 0},
        {"Rectifier, half wave", 9, 0.5f, 0, 0.5f, 0.5, 0.2122},
        {"Rectifier, full wave", 9, 1, 0, 0.5f, 0, 0.4244},
        {"Saturator, small", 10, 0.25f, 0, 0.002f, 2, 0},
        {"Square", 11, 0, 0, 0.25f, 4 / 3.14159 / 0.25, 0},
    };

    for (const Case& c : cases)
    {
        const auto parameters = [&c](int curve)
        {
            return std::vector<float>{
                (static_cast<float>(curve) + 0.5f) / 11.99f, 0.5f, c.a, c.b, 0, 1, 0, 1.0f / 3};
        };
        const auto plain = harmonics(17, parameters(0), c.amplitude),
                   got = harmonics(17, parameters(c.curve), c.amplitude);
        EXPECT_NEAR(got[1] / plain[1], c.first, 0.02 * c.first + 0.01) << c.what;
        EXPECT_NEAR(got[2] / plain[1], c.second, 0.02) << c.what;
    }
}

TEST(MultiDistort, NormalizeFollowsTheInput)
{
    // At full "Normalize" a square follows the level of the input.
    const std::vector<float> p = {11.5f / 11.99f, 0.5f, 0, 0, 1, 1, 0, 0.5f};
    const double soft = harmonics(17, p, 0.02f)[1], loud = harmonics(17, p, 0.2f)[1];
    EXPECT_NEAR(loud / soft, 10.0, 0.3);
}

TEST(Distortions, CurvesAndHarmonics)
{
    // "Distort": limited at 0.25, the last parabola makes that 0.34375; half wave, then full wave.
    for (const auto& [rect, mean] : {std::pair{1.0f, 0.0}, {0.5f, 0.17}, {0.0f, 0.3}})
    {
        Stereo s = run(*makeSlot(16), {0.25f, rect, 0, 0.532f, 0, 0.75f, 0}, sine(9600, 800.0, 1.0f));
        const auto [low, high] = std::minmax_element(s.left.begin() + 4800, s.left.end());
        EXPECT_NEAR(*high, 0.34375f, 1e-5f);
        EXPECT_NEAR(*low, rect == 1.0f ? -0.34375f : 0.0f, rect == 0.0f ? 0.1f : 1e-5f);
        EXPECT_NEAR(std::accumulate(s.left.begin() + 4800, s.left.end(), 0.0) / 4800.0, mean, 0.03) << rect;
    }

    // "Low Fi" with one bit: two steps to a unit, towards zero; its low-pass has 3 dB.
    EXPECT_NEAR(steady(18, {1, 0, 1, 0}, 0.45f), 0.0f, 1e-6f);
    EXPECT_NEAR(steady(18, {1, 0, 1, 0}, 0.6f), 0.5f * 1.41421f, 1e-4f);
    EXPECT_NEAR(steady(18, {1, 0, 1, 0}, -0.6f), -0.5f * 1.41421f, 1e-4f);

    // A hold of 32 samples is a rate of 1500 Hz: 1600 Hz comes out at 100 Hz.
    Stereo s = run(*makeSlot(18), {0, 1, 1, 0}, sine(19200, 1600.0, 0.5f));
    EXPECT_GT(std::abs(component(s.left, 4800, 100.0)), 0.5);

    // "Waveshaper": x cos(2 pi x top), the lower half turned round by "Rect".
    EXPECT_NEAR(steady(19, {0.25f, 0, 0, 1, 0, 1}, 0.5f), -0.5f * 1.41421f, 1e-3f);
    EXPECT_NEAR(steady(19, {0.25f, 0, 1, 1, 0, 1}, -0.5f), 0.5f * 1.41421f, 1e-3f);

    // "Clipper" at 1/4, a quarter of the knob's way to one side: from -0.25 to 0.125 in all.
    const Stereo c = run(*makeSlot(20), {1, 0, 0.2f, 0.25f, 1, 0, 0.5f}, sine(19200, 500.0));
    const auto [low, high] = std::minmax_element(c.left.begin() + 9600, c.left.end());
    EXPECT_NEAR(*high - *low, 0.375f, 0.025f);
}

TEST(RingMod, ShiftsBothWays)
{
    // 20 x 2^5 = 640 Hz on 1000 Hz: 360 and 1640 Hz, each at half.
    Stereo s = run(*makeSlot(15), {0, 0.5f, 1}, sine(19200, 1000.0));
    EXPECT_NEAR(std::abs(component(s.left, 0, 360.0)), 0.5, 0.01);
    EXPECT_NEAR(std::abs(component(s.left, 0, 1640.0)), 0.5, 0.01);
    EXPECT_LT(std::abs(component(s.left, 0, 1000.0)), 0.01);

    Stereo both = constant(1, 0.5f);
    both.right[0] = -0.3f;
    both = run(*makeSlot(15), {1, 0.5f, 1}, both);
    EXPECT_NEAR(both.left[0], -0.3f, 1e-6f);
    EXPECT_NEAR(both.right[0], -0.3f, 1e-6f);
}

TEST(AmpSim, AppliesItsTapsInTheRotatedOrder)
{
    // First tap first, then the others from the last to the second. "4x10".
    Stereo s = run(*makeSlot(21), {1.5f / 5.99f, 0, 0.5f, 0.5f, 0.5f}, impulse(128, 0.01f, 0.02f));
    const float expected[] = {0.0039f, 0.0666f, 0.0588f, 0.0f, 0.0f, -0.0589f};
    for (std::size_t i = 0; i < 6; ++i)
    {
        EXPECT_NEAR(s.left[i], 0.01f * expected[i], 1e-7f) << i;
        EXPECT_NEAR(s.right[i], 0.02f * expected[i], 1e-7f) << i;
    }
    EXPECT_NEAR(s.left[63], 0.01f * -0.0039f, 1e-7f);
    EXPECT_LT(peak(s.left, 64), 1e-8);
}

TEST(AmpSim, ToneStackBoostsItsBands)
{
    // +20 dB below 200 Hz or above 4 kHz; in "Cabinet" the treble works below 4 kHz instead.
    const auto gain = [](int type, float bass, float treble, double hz)
    {
        Stereo s = run(*makeSlot(type), {0, 0, bass, treble, 0.5f}, sine(19200, hz, 0.01f));
        return std::abs(component(s.left, 9600, hz)) / 0.01;
    };

    for (const int type : {21, 22})
    {
        EXPECT_NEAR(gain(type, 0.5f, 0.5f, 1000.0), 1.0, 0.01) << type;
        EXPECT_NEAR(gain(type, 1, 0.5f, 20.0), 1.0 + 9.0 * 1.414, 0.5) << type;
        EXPECT_NEAR(gain(type, 1, 0.5f, 12000.0), 1.0, 0.1) << type;
    }
    EXPECT_GT(gain(21, 0.5f, 1, 15000.0), 9.0);
    EXPECT_NEAR(gain(21, 0.5f, 1, 100.0), 1.0, 0.1);
    EXPECT_NEAR(gain(22, 0.5f, 1, 100.0), 1.0 + 9.0 * 1.414, 0.5);
}

TEST(Cabinet, HighRatesSoundAsLowOnes)
{
    const auto gain = [](float choice, double hz, float sampleRate)
    {
        const auto rate = static_cast<double>(sampleRate);
        const Stereo s = run(*makeSlot(22, sampleRate), {choice, 0, 0.5f, 0.5f, 0.5f},
                             sine(static_cast<int>(sampleRate) / 2, hz, 0.05f, rate));
        return decibels(std::abs(component(s.left, s.left.size() / 2, hz, rate)) / 0.05);
    };

    // The first row's response, worked out from its printed taps; a third of the level for the other two.
    EXPECT_NEAR(gain(0.3f, 1000.0, 44100.0f), -5.6, 0.1);
    EXPECT_NEAR(gain(0.3f, 8000.0, 44100.0f), 7.5, 0.1);
    EXPECT_NEAR(gain(0.6f, 4000.0, 44100.0f), 15.5 - 9.54, 0.1);
    EXPECT_NEAR(gain(0.9f, 1000.0, 44100.0f), 11.7 - 9.54, 0.1);

    for (const float choice : {0.3f, 0.6f, 0.9f})
        for (const double hz : {30.0, 100.0, 300.0, 800.0, 1800.0, 4000.0, 7000.0, 11000.0, 15000.0, 18000.0})
            EXPECT_NEAR(gain(choice, hz, 88200.0f), gain(choice, hz, 44100.0f), 1.5) << choice << ' ' << hz;
}

TEST(Compressor, LooksAheadAndFollowsItsCurve)
{
    Stereo s = run(*makeSlot(27), {1, 1, 0.5f, 0.5f, 0.5f}, impulse(1000, 0.5f, 0.25f));
    EXPECT_EQ(peakPosition(s.left), 256u);
    EXPECT_NEAR(s.left[256], 0.5f, 1e-6f);
    EXPECT_NEAR(s.right[256], 0.25f, 1e-6f);

    // Threshold -20 dB. In at -6 dB: all of the 14 dB of excess out at slope 1, half of it at 1/2.
    EXPECT_NEAR(steady(27, {0.5f, 1, 0.3f, 0.5f, 0.5f}, 0.5f), 0.1, 1e-3);
    EXPECT_NEAR(steady(27, {0.5f, 6.0f / 7, 0.3f, 0.5f, 0.5f}, 0.5f), 0.5 * std::sqrt(0.2), 1e-3);
    EXPECT_NEAR(steady(27, {0.5f, 1, 0.3f, 0.5f, 0.75f}, 0.5f), 0.316, 2e-3);
    EXPECT_NEAR(steady(27, {0.5f, 1, 0.3f, 0.5f, 0.5f}, 0.05f), 0.05, 1e-6);

    // Release of 128 ms: after the level has gone, the envelope falls from 0.5 by e in that time; the peak
    // holder adds its 21 ms to the start.
    Stereo fall = constant(96000, 0.5f);
    std::fill(fall.left.begin() + 48000, fall.left.end(), 0.0f);
    auto slot = makeSlot(27);
    run(*slot, {0.5f, 1, 0, 0.7f, 0.5f}, fall);
    EXPECT_LT(slot->compressor.env[0], 0.5f * std::exp(-7.0f));
    fall.left.resize(48000 + 12288);
    slot = makeSlot(27);
    run(*slot, {0.5f, 1, 0, 0.7f, 0.5f}, fall);
    EXPECT_NEAR(slot->compressor.env[0],
                0.5 * (0.128 * std::exp(-2.0) - 0.0208 * std::exp(-12.288)) / (0.128 - 0.0208), 0.002);
}

TEST(NoiseGate, OpensHoldsAndDecaysInTime)
{
    // Opens within 2^4 ms, holds for 2^7 ms, decays within 2^7 ms. The envelope falls from 1 to the threshold
    // of 0.1 in 10000 ln(0.999 / 0.099) samples once only a hundredth of 0.1 is left.
    Stereo s = constant(60000, 0.001f);
    std::fill_n(s.left.begin(), 4800, 1.0f);
    std::fill_n(s.right.begin(), 4800, 1.0f);
    s = run(*makeSlot(28), {0.5f, 0.5f, 0.5f, 0.5f}, s);
    EXPECT_NEAR(s.left[384], 0.5, 0.01); // half open
    EXPECT_NEAR(s.left[768], 1.0, 0.01);
    const double close = 4800 + 1e4 * std::log(0.999 / 0.099);
    const auto at = static_cast<std::size_t>(close);
    EXPECT_NEAR(s.left[at - 20], 1e-3, 1e-8);
    EXPECT_NEAR(s.left[at + 3072], 0.5e-3, 1e-5);
    EXPECT_LT(peak(s.left, at + 6144 + 40), 1e-9);

    // A threshold of 0 opens at once and for good; a level under the threshold never does.
    EXPECT_NEAR(steady(28, {0, 0, 0, 0}, 1e-4f), 1e-4f, 1e-9f);
    EXPECT_LT(std::abs(steady(28, {0.5f, 0, 0, 0}, 0.09f)), 1e-9f);
}
} // namespace quorel::test
