// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/CustomPlayHead.h"
#include "engine/TapTempo.h"
#include "hosting/HostRate.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>
#include <limits>

namespace quorel
{
namespace
{

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/** A host's transport that reports what a test has set. */
struct HostTransport final : juce::AudioPlayHead
{
    juce::Optional<PositionInfo> getPosition() const override { return info; }

    void set(bool playing, double bpm, int numerator, int denominator, double ppq)
    {
        PositionInfo position;
        position.setIsPlaying(playing);
        position.setBpm(bpm);
        position.setTimeSignature(TimeSignature{numerator, denominator});
        position.setPpqPosition(ppq);
        info = position;
    }

    juce::Optional<PositionInfo> info;
};

struct CustomPlayHeadTest : testing::Test
{
    CustomPlayHeadTest()
    {
        HostRate::store(48000.0);
        head.setHostPlayHead(&host);
    }

    /** One block on an audio thread. */
    void block()
    {
        test::onOtherThread([this] { head.updateFromHost(); });
    }

    void playBlock(double bpm, int numerator, int denominator, double ppq)
    {
        host.set(true, bpm, numerator, denominator, ppq);
        block();
    }

    /** What the message thread does between two blocks. */
    void deliver()
    {
        head.deliverPending();
        test::pumpFor(10);
    }

    HostTransport host;
    CustomPlayHead head;
};

TEST_F(CustomPlayHeadTest, ServesTheUsersTempoWithoutAHost)
{
    head.setHostPlayHead(nullptr);
    block();
    EXPECT_EQ(head.bpm(), 120.0);
    test::pumpFor(20);
    EXPECT_EQ(head.bpm(), 120.0) << "the linked value's start is no change of tempo";

    head.setBpm(90.0f);
    EXPECT_EQ(head.getSamplesPerBar(), 128000u); // 4 beats of 2/3 s
    EXPECT_EQ(head.masterBpm.getNumber(), 90.0);
    EXPECT_EQ(*head.getPosition()->getBpm(), 90.0);
    EXPECT_EQ(head.getPosition()->getTimeSignature()->numerator, 4);
    EXPECT_FALSE(head.getPosition()->getIsPlaying());

    head.masterBpm.setValue(150.0);
    EXPECT_TRUE(test::pumpUntil([this] { return head.bpm() == 150.0; }, 5000));
    for (const double bad : {0.0, -20.0, nan, infinity, 1.0e300})
    {
        head.setBpm(static_cast<float>(bad));
        head.masterBpm.setValue(bad);
        test::pumpFor(10);
        EXPECT_EQ(head.bpm(), 150.0);
    }
}

TEST_F(CustomPlayHeadTest, CountsBarsInQuarterNotes)
{
    struct Case
    {
        double bpm;
        int numerator, denominator;
        double ppq;
        unsigned samplesPerBar;
        double fraction;
    };

    // Bar lengths are beats * 60 / bpm * 48000 Hz, down to the sample.
    const Case cases[] = {
        {120.0, 4, 4, 5.0, 96000, 0.25},
        {93.75, 7, 8, 13.25, 215040, 25.0 / 28.0},
        {60.0, 5, 4, -0.5, 240000, -0.1},
    };
    for (const auto& c : cases)
    {
        playBlock(c.bpm, c.numerator, c.denominator, c.ppq);
        SCOPED_TRACE(juce::String(c.numerator) + " beats at " + juce::String(c.ppq));
        EXPECT_NEAR(head.getSamplesPerBar(), c.samplesPerBar, 1.0);
        EXPECT_NEAR(head.getBarFraction(), c.fraction, 1.0e-6);
        EXPECT_NEAR(static_cast<double>(head.getPositionInBar()), c.fraction * c.samplesPerBar, 1.0);
        EXPECT_EQ(head.masterBpm.getNumber(), c.bpm);
    }
}

TEST_F(CustomPlayHeadTest, TellsEachBeatOnTheMessageThread)
{
    test::Listener listener;
    head.beat.addListener(&listener);
    std::vector<double> expected;
    // Two bars of 3/4 in half beats, then a loop back to the second beat.
    const double positions[] = {0.0, 0.5, 1.0, 1.5, 2.0, 2.5, 3.0, 3.5, 4.0, 4.5, 5.0, 5.5, 1.0};
    const int beats[] = {0, 0, 1, 1, 2, 2, 0, 0, 1, 1, 2, 2, 1};
    for (std::size_t i = 0; i < std::size(positions); ++i)
    {
        playBlock(120.0, 3, 4, positions[i]);
        EXPECT_EQ(static_cast<int>(head.beat.getValue()), beats[i]);
        if (i > 0 && beats[i] != beats[i - 1])
            expected.push_back(beats[i]);
        deliver();
    }
    EXPECT_EQ(listener.heard, expected);
    EXPECT_TRUE(listener.alwaysOnMessageThread);
}

TEST_F(CustomPlayHeadTest, FollowsAStoppedTransportButNotIntoTheLinkedTempo)
{
    playBlock(123.4, 4, 4, 1.0);
    for (int i = 0; i < 5; ++i)
    {
        deliver();
        block();
        EXPECT_EQ(head.bpm(), 123.4) << "the listener's echo must not round the host's tempo";
    }
    host.set(false, 80.0, 3, 4, 2.0);
    block();
    EXPECT_FALSE(head.getPosition()->getIsPlaying());
    EXPECT_EQ(*head.getPosition()->getBpm(), 80.0);
    EXPECT_EQ(head.masterBpm.getNumber(), 123.4);
    EXPECT_NEAR(head.getBarFraction(), 0.25, 1.0e-6);
}

TEST_F(CustomPlayHeadTest, HoldsTheUsersTempoUntilTheHostPlaysAgain)
{
    const auto standingHostTells = [this](double bpm)
    {
        host.set(false, bpm, 4, 4, 0.0);
        block();
        deliver();
        block();
        return head.bpm();
    };
    playBlock(111.0, 4, 4, 1.0);
    EXPECT_EQ(standingHostTells(85.0), 85.0)
        << "the late echo of the host's own tempo is no choice of the user";
    head.setBpm(97.0f);
    EXPECT_EQ(standingHostTells(85.0), 97.0);
    EXPECT_EQ(standingHostTells(86.0), 97.0);
    EXPECT_EQ(*head.getPosition()->getBpm(), 97.0);
    playBlock(0.0, 4, 4, 1.0);
    EXPECT_EQ(head.bpm(), 97.0) << "a host that plays without a tempo has none to offer";
    playBlock(130.0, 4, 4, 1.0);
    EXPECT_EQ(head.bpm(), 130.0);
    EXPECT_EQ(standingHostTells(86.0), 86.0);
    head.masterBpm.setValue(132.0);
    EXPECT_EQ(standingHostTells(86.0), 132.0);
}

TEST_F(CustomPlayHeadTest, KeepsTheLastGoodValuesOfAHostThatTellsNonsense)
{
    playBlock(100.0, 5, 8, 2.0);
    for (const double bpm : {0.0, -120.0, nan, infinity, -infinity, 1.0e-300, 1.0e300})
        for (const int beats : {0, std::numeric_limits<int>::min()})
        {
            playBlock(bpm, beats, 8, 2.0);
            playBlock(bpm, 3, beats, 2.0);
            EXPECT_EQ(head.bpm(), 100.0);
            EXPECT_EQ(head.getPosition()->getTimeSignature()->numerator, 5);
            EXPECT_EQ(head.getSamplesPerBar(), 144000u);
            EXPECT_NEAR(head.getBarFraction(), 0.4, 1.0e-6);
        }
    for (const double ppq : {nan, infinity, -infinity})
    {
        playBlock(100.0, 5, 8, ppq);
        EXPECT_NEAR(head.getBarFraction(), 0.4, 1.0e-6);
    }
    for (const double ppq : {1.0e300, -1.0e300, 1.0e18})
        for (const int beats : {1, std::numeric_limits<int>::max()})
        {
            playBlock(1.0e-3, beats, 4, ppq);
            EXPECT_LE(std::abs(head.getBarFraction()), 1.0001);
        }
    playBlock(130.0, 4, 4, 3.0);
    const auto good = head.getPosition();
    host.info = {};
    block();
    EXPECT_EQ(*head.getPosition(), *good) << "a host without an answer changes nothing";
}

TEST_F(CustomPlayHeadTest, TempoFromBothThreadsAtOnceIsOneOfThem)
{
    host.set(true, 140.0, 4, 4, 0.0);
    test::onOtherThread(
        [this]
        {
            std::atomic<bool> stop{false};
            std::thread audio(
                [&]
                {
                    while (!stop)
                    {
                        head.updateFromHost();
                        const double bpm = *head.getPosition()->getBpm();
                        ASSERT_TRUE(bpm == 140.0 || bpm == 70.0);
                    }
                });
            for (int i = 0; i < 20000; ++i)
                head.setBpm(70.0f);
            stop = true;
            audio.join();
        });
}

TEST(TapTempo, AveragesARowOfTaps)
{
    struct Case
    {
        std::vector<std::uint32_t> stamps;
        float expected; // 0: none at the last tap
    };

    const Case cases[] = {
        {{5000, 5500, 6000}, 0.0f},
        {{5000, 5500, 6000, 6500}, 120.0f},
        {{0, 400, 1000, 1500, 2000}, 120.0f},
        {{0, 333, 666, 1000}, static_cast<float>(1000.0 / 333.0) * 60.0f},
        {{0, 500, 1000, 2001}, 0.0f},                   // a pause ends the row
        {{0, 500, 1000, 2001, 2100, 2600, 3100}, 0.0f}, // and its tap isn't counted
        {{0, 500, 1000, 2001, 2100, 2600, 3100, 3600}, 120.0f},
        {{7, 7, 7, 7}, 0.0f},                 // no time, no tempo
        {{0xfffffe0c, 0, 500, 1000}, 120.0f}, // the counter wraps
        {{5000, 4000, 3000, 2000}, 0.0f},     // or runs backwards
    };
    for (const auto& c : cases)
    {
        TapTempo taps;
        std::optional<float> bpm;
        for (const auto stamp : c.stamps)
            bpm = taps.tap(stamp);
        EXPECT_EQ(bpm.value_or(0.0f), c.expected) << c.stamps.size() << " taps from " << c.stamps[0];
    }
}

} // namespace
} // namespace quorel
