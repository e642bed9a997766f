// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/LayerEq.h"

#include "EffectsTestTools.h"
#include "effects/LayerEqWide.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace quorel::test
{
namespace
{
using Complex = std::complex<double>;

constexpr double pi = 3.14159265358979324;

/** Response at angle w (of one sample) of a filter H that runs twice on each held input, the outputs
    averaged: the held signal has its image at w / 2 + pi. */
Complex heldTwice(double w, const std::function<Complex(Complex)>& response)
{
    const double c = std::cos(w / 4.0), s = std::sin(w / 4.0);
    return c * c * response(std::polar(1.0, w / 2.0)) + s * s * response(std::polar(1.0, w / 2.0 + pi));
}

/** Peaking equaliser of the Audio EQ Cookbook. */
Complex peaking(Complex z, double f, double q, double gainDb)
{
    const double a = std::pow(10.0, gainDb / 40.0), w = 2.0 * pi * f, alpha = std::sin(w) / (2.0 * q);
    const Complex d = 1.0 / z;
    return (1.0 + alpha * a - 2.0 * std::cos(w) * d + (1.0 - alpha * a) * d * d) /
           (1.0 + alpha / a - 2.0 * std::cos(w) * d + (1.0 - alpha / a) * d * d);
}

/** Four one-pole low-passes with a zero at the rate's half. */
Complex ladder(Complex z, double f)
{
    const double g = 2.0 * f, p = (1.0 - g) * g + g;
    const Complex pole = p * (1.0 + 1.0 / z) / (1.0 + (2.0 * p - 1.0) / z);
    return pole * pole * pole * pole;
}

Stereo throughEq(LayerEq& eq, Stereo s)
{
    eqProcessBlock(eq, s.left.data(), s.right.data(), static_cast<int>(s.left.size()));
    return s;
}

LayerEq makeEq(float rate)
{
    LayerEq eq;
    eqInit(eq, rate);
    eq.enabled = 1;
    return eq;
}
} // namespace

TEST(LayerEq, BandsMatchTheClosedForm)
{
    for (const float rate : {44100.0f, 96000.0f})
    {
        for (const auto& [gain, freq, width] :
             {std::tuple{0.9f, 0.5f, 0.4f}, {0.0f, 0.8f, 0.3f}, {1.0f, 1.0f, 0.6f}})
        {
            for (const double hz : {100.0, 640.0, 3000.0, 5120.0, 15000.0})
            {
                LayerEq eq = makeEq(rate);
                eqSetBand(eq, 0, true, gain, freq, width);
                const double f = std::min(std::exp2(10.0 * static_cast<double>(freq)) * 20.0 /
                                              (2.0 * static_cast<double>(rate)),
                                          0.3);
                const double q = std::exp2(4.0 - 10.0 * static_cast<double>(width));
                const auto expected = heldTwice(2.0 * pi * hz / static_cast<double>(rate),
                                                [&, g = static_cast<double>(gain)](Complex z)
                                                { return peaking(z, f, q, g * 40.0 - 20.0); });
                const Stereo in = sine(30000, hz, 0.5f, static_cast<double>(rate));
                const Stereo out = throughEq(eq, in);
                const auto got = component(out.left, 10000, hz, static_cast<double>(rate)) /
                                 component(in.left, 10000, hz, static_cast<double>(rate));
                EXPECT_NEAR(std::abs(got - expected), 0.0, 2e-3 * std::abs(expected))
                    << rate << ' ' << freq << ' ' << hz;
                EXPECT_EQ(out.left, out.right);
            }
        }
    }
}

TEST(LayerEq, LaddersMatchTheClosedForm)
{
    for (const bool highPass : {false, true})
    {
        for (const float p : {0.3f, 0.7f, 1.0f})
        {
            for (const double hz : {60.0, 500.0, 2500.0, 12000.0})
            {
                LayerEq eq = makeEq(48000.0f);
                eqSetFilters(eq, !highPass, p, highPass, p);
                const double f = std::exp2(10.0 * static_cast<double>(p)) * 20.0 / 96000.0;
                const auto low = heldTwice(2.0 * pi * hz / 48000.0, [&](Complex z) { return ladder(z, f); });
                const auto all = heldTwice(2.0 * pi * hz / 48000.0, [](Complex) { return Complex(1.0); });
                const Complex expected = highPass ? all - low : low;
                const Stereo in = sine(40000, hz, 1e-3f); // small: the cubic stage is straight there
                const Stereo out = throughEq(eq, in);
                const auto got = component(out.right, 20000, hz) / component(in.right, 20000, hz);
                EXPECT_NEAR(std::abs(got - expected), 0.0, 1e-3) << highPass << ' ' << p << ' ' << hz;
            }
        }
    }

    // Where the poles lie at 0, a held value comes out as it went in, but for what the cubic stage takes off:
    // 2f = 1 - sqrt(1/2).
    LayerEq eq = makeEq(48000.0f);
    eqSetFilters(eq, true, static_cast<float>(std::log2((1.0 - std::sqrt(0.5)) * 48000.0 / 20.0) / 10.0),
                 false, 0.0f);
    EXPECT_NEAR(throughEq(eq, constant(1000, 0.5f)).left.back(), 0.5 - 0.125 / 6.0, 1e-5);
}

TEST(LayerEq, PassesTheSignalWithNothingOn)
{
    const Stereo in = noise(500);
    LayerEq eq = makeEq(44100.0f);
    EXPECT_EQ(throughEq(eq, in).left, in.left);

    // A band that is on at 0 dB is a unity pass as well; one that was switched off keeps nothing for the next
    // time.
    eqSetBand(eq, 1, true, 0.5f, 0.4f, 0.5f);
    const Stereo flat = throughEq(eq, in);
    for (std::size_t i = 0; i < in.left.size(); ++i)
        EXPECT_NEAR(flat.left[i], in.left[i], 1e-4);

    eqSetBand(eq, 1, false, 1.0f, 0.4f, 0.5f);
    eqSetBand(eq, 1, true, 1.0f, 0.4f, 0.5f);
    EXPECT_LT(peak(throughEq(eq, silence(100)).left), 1e-9);

    // Switched off, the unit touches neither the samples nor its bands.
    eq.enabled = 0;
    eqSetBand(eq, 0, true, 1.0f, 0.4f, 0.5f);
    EXPECT_EQ(eq.bandOn[0], 0);
    EXPECT_EQ(throughEq(eq, in).left, in.left);
}

void setRandomly(LayerEq& eq, std::mt19937::result_type seed)
{
    std::mt19937 random(seed);
    const auto unit = [&] { return static_cast<float>(random() >> 8) * std::ldexp(1.0f, -24); };
    const auto isOn = [&] { return random() % 3 != 0; };

    for (int band = 0; band < 3; ++band)
    {
        const float gain = unit(), freq = unit(), width = unit();
        eqSetBand(eq, band, isOn(), gain, freq, width);
    }

    const float low = unit(), high = unit();
    const bool isLowOn = isOn(), isHighOn = isOn();
    eqSetFilters(eq, isLowOn, low, isHighOn, high);
}

/** Random settings, signals and sets of units, some of them off: what each unit gives in company, with the
    instructions of `process`, has to be what it gives by itself, sample by sample. */
void compareWithUnitsAlone(void (*process)(const EqBlock*, int, int, int))
{
    std::mt19937 random(5);

    for (int round = 0; round < 200; ++round)
    {
        std::vector<LayerEq> together(maxEqUnitsTogether, makeEq(round % 2 == 0 ? 44100.0f : 96000.0f));
        auto alone = together;

        for (int block = 0; block < 8; ++block)
        {
            const int num = 1 + static_cast<int>(random() % fxChunk);
            std::vector<Stereo> sounds;
            std::vector<EqBlock> blocks;

            for (std::size_t i = 0; i < together.size(); ++i)
            {
                const auto seed = random();
                setRandomly(together[i], seed);
                setRandomly(alone[i], seed);
                const float level =
                    random() % 4 == 0 ? 0.0f : std::ldexp(1.0f, 8 - static_cast<int>(random() % 80));
                sounds.push_back(noise(num, level));
            }

            const auto soundsAlone = sounds;

            for (std::size_t i = 0; i < together.size(); ++i)
                if (random() % 3 != 0)
                    blocks.push_back({&together[i], sounds[i].left.data(), sounds[i].right.data()});

            process(blocks.data(), static_cast<int>(blocks.size()), 0, num);

            for (const auto& run : blocks)
            {
                const auto i = static_cast<std::size_t>(run.unit - together.data());
                Stereo expected = soundsAlone[i];
                for (std::size_t n = 0; n < expected.left.size(); ++n)
                    eqProcess(alone[i], &expected.left[n], &expected.right[n]);
                ASSERT_EQ(expected.left, sounds[i].left) << round << ' ' << block << ' ' << i;
                ASSERT_EQ(expected.right, sounds[i].right) << round << ' ' << block << ' ' << i;
            }
        }
    }
}

TEST(LayerEq, UnitsSideBySideGiveWhatEachGivesAlone)
{
    compareWithUnitsAlone(processBaselineLanes);
}

TEST(LayerEq, WideRegistersGiveTheSameBits)
{
    if (!wideLanesWork())
        GTEST_SKIP() << "this processor or build has none";

    compareWithUnitsAlone(processWideLanes);
}

TEST(LayerEq, RecoversFromWhateverCameIn)
{
    for (const float rate : {8000.0f, 22050.0f, 44100.0f, 192000.0f})
    {
        for (const float bad : {1.74f, 4.0f, 500.0f, 1.0e10f, INFINITY, NAN})
        {
            for (const float p : {0.0f, 0.5f, 1.0f})
            {
                LayerEq eq = makeEq(rate);
                for (int band = 0; band < 3; ++band)
                    eqSetBand(eq, band, true, 1.0f, p, 0.0f);
                eqSetFilters(eq, true, 1.0f, true, 0.0f);
                const Stereo burst = square(static_cast<int>(rate) / 2, 101, bad);
                EXPECT_LT(peak(throughEq(eq, burst).left), 1.0e6);

                Stereo after = sine(static_cast<int>(rate) * 2, 1000.0, 1e-2f, static_cast<double>(rate));
                after = throughEq(eq, after);
                const auto second = static_cast<std::size_t>(rate);
                EXPECT_LT(peak(after.left, second), 100.0) << rate << ' ' << bad << ' ' << p;
                EXPECT_GT(rms(after.left, second), 1e-3) << rate << ' ' << bad << ' ' << p;
            }
        }
    }
}
} // namespace quorel::test
