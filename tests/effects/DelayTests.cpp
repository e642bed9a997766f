// SPDX-License-Identifier: GPL-3.0-or-later
// Delays, tape, comb and reverb.
#include "EffectsTestTools.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <numeric>
#include <string>

namespace quorel::test
{
namespace
{
/** Length parameter of a delay in milliseconds. */
float delayOf(double ms)
{
    return static_cast<float>(std::log2(ms) / 12.0);
}

Stereo impulseThrough(int type, const std::vector<float>& p, int length, float bpm = 120.0f)
{
    return runAfter(64, *makeSlot(type), p, impulse(length), bpm);
}
} // namespace

TEST(Delays, EchoesComeInTimeAndWithTheRightSign)
{
    struct Case
    {
        const char* what;
        int type;
        std::vector<float> p;
        float bpm;
        double left, right; // samples
        double ratio;       // second echo to first
        double tolerance;   // samples
    };

    const Case cases[] = {
        {"mono", 1, {delayOf(50), 0, 0.75f, 1, 0, 0}, 120, 2401, 2405, -0.495, 0},
        {"mono, lower half", 1, {delayOf(50), 0, 0.25f, 1, 0, 0}, 120, 2401, 2405, 0.495, 0},
        {"mono, widened", 1, {delayOf(50), 0, 0.75f, 1, 0, 0.75f}, 120, 2401, 2657, -0.495, 0},
        {"mono, 1/8", 1, {7.5f / 14.99f, 1, 0.75f, 1, 0, 0}, 133.7f, 10771.88, 10775.88, -0.495, 1},
        {"stereo", 2, {delayOf(30), delayOf(80), 0, 0.75f, 0.5f, 0, 1, 0}, 120, 1441, 3845, -0.495, 0},
        {"mono tape", 3, {delayOf(50), 0, 0.75f, 1, 0, 0}, 120, 2401, 2405, 0.495, 1},
        {"mono tape, below centre", 3, {delayOf(50), 0, 0.25f, 1, 0, 0}, 120, 2401, 2405, 0.0, 1},
        // 1/16 left, 1/8T right
        {"stereo tape", 4, {0.3003f, 0.4337f, 1, 0.75f, 0.5f, 0, 1, 0}, 97.3f, 7400.82, 9867.43, 0.495, 2},
    };

    for (const Case& c : cases)
    {
        const Stereo s = impulseThrough(c.type, c.p, 40000, c.bpm);
        EXPECT_NEAR(static_cast<double>(peakPosition(s.left)), c.left, c.tolerance) << c.what;
        EXPECT_NEAR(static_cast<double>(peakPosition(s.right)), c.right, c.tolerance) << c.what;

        // Whatever a fractional delay and the low-pass spread, the sum of an echo stays.
        const auto echo = [&s](double around)
        {
            const auto at = s.left.begin() + static_cast<std::ptrdiff_t>(around);
            return static_cast<double>(std::accumulate(at - 4, at + 16, 0.0f));
        };
        EXPECT_NEAR(echo(2.0 * c.left) / echo(c.left), c.ratio, 0.01) << c.what;
    }
}

TEST(Delays, CrossFeedSwapsSides)
{
    // The left impulse alone: its first echo on the left, its second crosses over.
    const Stereo s = runAfter(64, *makeSlot(2), {delayOf(50), delayOf(50), 0, 0.5f, 0.9f, 0, 1, 0},
                              impulse(12000, 1.0f, 0.0f));
    EXPECT_GT(std::abs(s.left[2401]), 0.5f);
    EXPECT_LT(peak({s.right.begin(), s.right.begin() + 4800}), 1e-6);
    EXPECT_GT(peak({s.right.begin() + 4800, s.right.begin() + 4900}), 0.3);

    // "Feed Equal" makes both sides lose as much in the same time: the right side is 2.5 times as long.
    const Stereo equal = impulseThrough(2, {delayOf(40), delayOf(100), 0, 0.9f, 0.9f, 1, 1, 0}, 40000);
    const double shortLoop = std::pow(0.7919, 40.0 / 100.0);
    EXPECT_NEAR(peak({equal.left.begin() + 3800, equal.left.begin() + 3900}) /
                    peak({equal.left.begin() + 1900, equal.left.begin() + 2000}),
                shortLoop * 40960.0 / 48000.0, 0.02);
}

TEST(Delays, ShortChangesGlideAndLongOnesJump)
{
    for (const bool jump : {false, true})
    {
        auto slot = makeSlot(1);
        run(*slot, {delayOf(20), 0, 0.5f, 1, 0, 0}, silence(3200));
        run(*slot, {delayOf(jump ? 400 : 100), 0, 0.5f, 1, 0, 0}, silence(64));
        const float target = jump ? 19201.0f : 4801.0f;
        if (jump)
            EXPECT_NEAR(slot->delay.smoothL, target, 0.01f);
        else
            EXPECT_TRUE(slot->delay.smoothL > 961.0f && slot->delay.smoothL < 0.5f * target)
                << slot->delay.smoothL;
    }
}

TEST(Delays, WhatIsLeftInTheLinesIsHeardInTheNextDelayOrChorus)
{
    auto slot = makeSlot(1);
    run(*slot, {delayOf(500), 0, 0.5f, 1, 0, 0}, noise(100000));
    changeType(*slot, 2);
    const Stereo tail = run(*slot, {delayOf(500), delayOf(500), 0, 0.5f, 0.5f, 0, 1, 0}, silence(9600));
    EXPECT_GT(rms(tail.left, 100), 0.1);

    // Of those with a chorus, the one with a delay clears nothing, and other types leave its lines alone.
    slot = makeSlot(7);
    run(*slot, {1, 0, 0, 0, 0, 0, 1, 0}, noise(20000));
    for (const int between : {6, 3, 10})
    {
        changeType(*slot, between);
        run(*slot, {0.5f, 0.5f, 0.5f}, noise(640));
    }
    changeType(*slot, 9);
    EXPECT_GT(rms(run(*slot, {1, 0, 0, 0, 0, 0, 0, 0}, silence(1000)).left), 0.1);
}

TEST(Delays, ATypeThatClearsItsMemoryStartsAsInANewSlot)
{
    // The types share their memory, so each is started where every other one has left something.
    const std::vector<float> p = {0.0f, 0.6f, 0.7f, 0.8f, 0.4f, 0.5f, 0.9f, 0.3f, 0.5f, 0.5f};
    const std::vector<int> clearing = {3, 4, 5, 6, 7, 8, 10, 11, 12, 13, 14, 23};

    for (const int before : clearing)
    {
        for (const int type : clearing)
        {
            // The reverb's pre-delay is a delay line, which it leaves as it is.
            if (before == 6 && type == 6)
                continue;

            auto used = makeSlot(before), fresh = makeSlot(0);
            run(*used, p, noise(20000));
            run(*fresh, p, silence(20000));
            changeType(*used, type);
            changeType(*fresh, type);
            // A second change at once, as on loading a preset, finds nothing to clear.
            changeType(*used, type);
            Stereo a = run(*used, p, noise(20000, 0.5f, 2)), b = run(*fresh, p, noise(20000, 0.5f, 2));
            EXPECT_EQ(a.left, b.left) << before << " to " << type;
            EXPECT_EQ(a.right, b.right) << before << " to " << type;

            // And so does the one that was there before.
            changeType(*used, before);
            changeType(*fresh, before);
            a = run(*used, p, noise(9000, 0.5f, 3));
            b = run(*fresh, p, noise(9000, 0.5f, 3));
            EXPECT_EQ(a.left, b.left) << type << " back to " << before;
        }
    }
}

TEST(Memory, IsTouchedOnlyWhenATypePlays)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer keeps books of its own";
#endif
    if (!std::ifstream("/proc/self/smaps_rollup"))
        GTEST_SKIP() << "this system doesn't tell what memory is in use";

    const auto resident = []
    {
        long kilobytes = 0;
        std::ifstream rollup("/proc/self/smaps_rollup"); // unlike statm it counts to the page
        for (std::string word; rollup >> word && word != "Rss:";)
        {
        }
        rollup >> kilobytes;
        return kilobytes;
    };

    // What all slots share, and what the system's library loads.
    run(*makeSlot(6), {0.5f, 0.5f, 0.5f}, noise(4800));

    std::vector<std::unique_ptr<FxSlot>> slots;
    for (int type = 0; type < fxTypeCount; ++type)
    {
        const long before = resident();
        slots.push_back(makeSlot(type, 44100.0f));
        fxInit(*slots.back(), 48000.0f);
        EXPECT_LE(resident() - before, 60) << "KB by type " << type;
    }

    // And what a short run touches is far from all of it.
    const long before = resident();
    run(*slots[6], {0.5f, 0.5f, 0.5f}, noise(4800));
    EXPECT_GT(resident() - before, 400);
    EXPECT_LT(resident() - before, 4000);
}

TEST(Tape, ChangeOfLengthBendsThePitch)
{
    for (const double factor : {2.0, 0.5})
    {
        auto slot = makeSlot(3);
        run(*slot, {delayOf(100), 0, 0.5f, 1, 0, 0}, sine(24000, 1000.0, 0.5f));

        // Half the length is twice the tape's speed: what is on the tape comes out an octave up.
        const Stereo bent = run(*slot, {delayOf(100 / factor), 0, 0.5f, 1, 0, 0}, silence(2304));
        EXPECT_GT(std::abs(component(bent.left, 64, 1000.0 * factor)), 0.4) << factor;
        EXPECT_LT(std::abs(component(bent.left, 64, 1000.0)), 0.1) << factor;
    }
}

TEST(Tape, RunsOnWhereItsRingBegins)
{
    // Eight seconds go round the ring once and a half; a tone comes out late and otherwise as it went in.
    Stereo tone = run(*makeSlot(3), {delayOf(100), 0, 0.5f, 1, 0, 0}, sine(384000, 100.0, 0.5f));
    for (std::size_t i = 10000; i < tone.left.size(); ++i)
        ASSERT_NEAR(tone.left[i],
                    0.5 * std::sin(6.283185307179586 * 100.0 * (static_cast<double>(i) - 4801.0) / 48000.0),
                    1e-3)
            << i;
}

TEST(Tape, NeverRunsOutOfRoomOrPrecision)
{
    auto slot = makeSlot(3, 192000.0f);
    tapeSetDistances(slot->tape, 262143.0f, 262143.0f);
    float l, r;
    for (int i = 0; i < 600000; ++i)
        tapeProcess(slot->tape, 0.5f, 0.5f, l, r);
    EXPECT_NEAR(l, 0.5f, 1e-4f);
    EXPECT_LE(slot->tape.headL.later, TapeReel::capacity);

    // A position far out is wound back, and the sound doesn't notice.
    slot->tape.posL += 2.0e9;
    slot->tape.headL.time += 2.0e9;
    slot->tape.headL.nextTime += 2.0e9;
    for (int i = 0; i < 1000; ++i)
        tapeProcess(slot->tape, 0.5f, 0.5f, l, r);
    EXPECT_LT(slot->tape.posL, 1.1e9);
    EXPECT_NEAR(l, 0.5f, 1e-4f);
}

TEST(Comb, PitchAndSign)
{
    // The impulse on the left comes out right after the second comb's delay, then left after the first one's,
    // and so on.
    for (const float feed : {0.0f, 0.5f, 1.0f})
    {
        Stereo s = run(*makeSlot(5), {0.35f, feed, 0, 0.9f, 0.3f, feed, 0, 0.9f}, impulse(3000, 1.0f, 0.0f));
        const int first = static_cast<int>(std::ceil(48000.0 / (20.0 * std::exp2(3.5) + 1.0)));
        const int second = static_cast<int>(std::ceil(48000.0 / (20.0 * std::exp2(3.0) + 1.0)));
        EXPECT_NEAR(s.right[static_cast<std::size_t>(second)], 1.0f, 1e-6f);

        const auto again = static_cast<std::size_t>(first + second);
        EXPECT_NEAR(s.left[again], feed * 2.0f - 1.0f, 1e-6f) << feed;
    }
}

TEST(Reverb, DecayFollowsSizeAndDamping)
{
    const auto tail = [](const std::vector<float>& p, std::size_t from)
    { return rms(run(*makeSlot(6, 44100.0f), p, impulse(88200)).left, from, from + 4410); };

    // Each comb loses its feedback once a round; the shortest has 0.9 x 1046 samples, the longest 1.1 x 1703.
    for (const auto& [size, feedback] : {std::pair{0.0f, 0.65}, {0.5f, 0.9099}, {1.0f, 0.98}})
    {
        const std::vector<float> p = {0, size, 0.75f, 0, 0, 1, 0, 0, 0, 0};
        const std::size_t early = size > 0.9f ? 22050 : 8820, late = early + (size > 0.9f ? 44100 : 8820);
        const double seconds = static_cast<double>(late - early) / 44100.0;
        const double slope = decibels(tail(p, late) / tail(p, early)) / seconds;
        EXPECT_GT(slope, 44100.0 / 941.0 * decibels(feedback)) << size;
        EXPECT_LT(slope, 44100.0 / 1873.0 * decibels(feedback)) << size;
    }

    EXPECT_LT(tail({0, 0.9f, 0.75f, 1, 0, 1, 0, 0, 0, 0}, 30000),
              0.5 * tail({0, 0.9f, 0.75f, 0, 0, 1, 0, 0, 0, 0}, 30000));
}

TEST(Reverb, PreDelaySpreadAndGate)
{
    // 100 ms before, 8191 samples of "Spread" on the right. The shortest comb and the all-passes let the
    // first sound through after 0.9 x 1046 samples, 0.9 x 1069 on the right.
    const float preDelay = static_cast<float>(std::log2(200.0) / 10.0);
    const Stereo s =
        run(*makeSlot(6, 44100.0f), {preDelay, 0.5f, 0.75f, 0, 1, 1, 0, 0, 0, 0}, impulse(44100));
    const auto begin = [](const std::vector<float>& x)
    { return std::find_if(x.begin(), x.end(), [](float v) { return std::abs(v) > 1e-4f; }) - x.begin(); };
    EXPECT_NEAR(static_cast<double>(begin(s.left)), 4411 + 941, 5);
    EXPECT_NEAR(static_cast<double>(begin(s.right)), 4411 + 962 + 8191, 5);

    // The gate lets a tail through that is loud enough, and cuts it within its decay time of 128 ms.
    const std::vector<float> gated = {0, 0.5f, 0.75f, 0, 0, 1, 0, 0.5f, 0.3f, 0.5f};
    std::vector<float> open = gated;
    open[7] = 0.0f;
    Stereo burst = noise(22050);
    burst.left.resize(220500);
    burst.right.resize(220500);
    const Stereo cut = run(*makeSlot(6, 44100.0f), gated, burst);
    const Stereo whole = run(*makeSlot(6, 44100.0f), open, burst);
    EXPECT_EQ(cut.left[10000], whole.left[10000]);
    EXPECT_GT(rms(whole.left, 150000, 151000), 1e-6);
    EXPECT_LT(peak(cut.left, 150000), 1e-9);

    std::size_t last = 22050, full = 0;
    for (std::size_t i = 22050; i < 210000; ++i)
    {
        if (std::abs(cut.left[i]) > 1e-9f)
            last = i;
        if (cut.left[i] == whole.left[i])
            full = i;
    }
    EXPECT_NEAR(static_cast<double>(last - full), 0.128 * 44100.0, 60.0);
}
} // namespace quorel::test
