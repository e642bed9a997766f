// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi/MidiLinkedValueObject.h"
#include "support/TestLoop.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quorel
{
namespace
{

using test::Listener;

double now()
{
    return juce::Time::getMillisecondCounterHiRes();
}

/** A linked value with its listener, and a way to record where it stands while the loop runs. */
struct Gliding
{
    explicit Gliding(double seconds, double initial = 0.0)
        : value(initial)
    {
        value.addListener(&listener);
        value.easingTime = seconds;
        test::pumpFor(5);
    }

    std::vector<double> recordUntil(const std::function<bool()>& done)
    {
        std::vector<double> seen{value.getNumber()};
        EXPECT_TRUE(test::pumpUntil(
            [&]
            {
                if (value.getNumber() != seen.back())
                    seen.push_back(value.getNumber());
                return done();
            },
            10000));
        return seen;
    }

    std::vector<double> recordToEnd()
    {
        return recordUntil([this] { return !value.isInTransition(); });
    }

    Listener listener;
    MidiLinkedValueObject value;
};

TEST(LinkedValue, AudioThreadWritesReachListenersOnTheMessageThread)
{
    Gliding g(0.0);
    test::onOtherThread(
        [&]
        {
            for (int i = 1; i <= 1000; ++i)
                g.value.setValueEased(i * 0.001);
        });
    EXPECT_EQ(g.value.getNumber(), 1.0);
    test::pumpFor(20);
    EXPECT_TRUE(g.listener.heard.empty()) << "nothing is told before the message thread asks";

    g.value.deliverPending();
    g.value.deliverPending();
    test::pumpFor(20);
    EXPECT_EQ(g.listener.heard, std::vector<double>{1.0}) << "once, with the newest number";
    EXPECT_TRUE(g.listener.alwaysOnMessageThread);

    // On the message thread listeners hear at once. Writing the same number again tells nobody, on either
    // thread.
    g.value.setValueEased(0.5);
    test::pumpFor(20);
    g.value.setValueEased(0.5);
    test::onOtherThread([&] { g.value.setValueEased(0.5); });
    g.value.deliverPending();
    test::pumpFor(20);
    EXPECT_EQ(g.listener.heard, (std::vector<double>{1.0, 0.5}));
    EXPECT_FALSE(g.value.isInTransition());
}

TEST(LinkedValue, FollowsAndFeedsTheValueItRefersTo)
{
    Listener listener;
    juce::Value shared(0.25);
    MidiLinkedValueObject value(0.75);
    value.addListener(&listener);
    value.referTo(shared);
    EXPECT_EQ(value.getNumber(), 0.25);

    shared = 0.5;
    value.deliverPending();
    EXPECT_EQ(value.getNumber(), 0.5);

    value.setValueEased(0.125);
    EXPECT_EQ(static_cast<double>(shared.getValue()), 0.125);

    test::onOtherThread([&] { value.setValueEased(1.0); });
    EXPECT_EQ(static_cast<double>(shared.getValue()), 0.125)
        << "foreign storage is not written off the thread";
    value.deliverPending();
    EXPECT_EQ(static_cast<double>(shared.getValue()), 1.0);
    test::pumpFor(20);
    EXPECT_EQ(listener.heard.back(), 1.0);
}

TEST(Easing, GlidesInAStraightLineAndEndsOnTheTarget)
{
    for (const double target : {1.0, 0.1})
    {
        Gliding g(0.4, 0.7);
        const double start = now();
        g.value.setValueEased(target);
        const auto seen = g.recordUntil(
            [&]
            {
                // As a host does with its tempo in every block: it must not prolong the glide.
                g.value.setValueEased(target);
                return !g.value.isInTransition();
            });
        const double took = now() - start;
        EXPECT_TRUE(took >= 395.0 && took < 1500.0) << took;
        EXPECT_GE(seen.size(), 5u);
        EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()) || std::is_sorted(seen.rbegin(), seen.rend()));
        EXPECT_EQ(seen.back(), static_cast<double>(static_cast<float>(target)));
        test::pumpFor(20);
        EXPECT_TRUE(g.listener.alwaysOnMessageThread);
        EXPECT_EQ(g.listener.heard.back(), seen.back());
    }

    Gliding brief(0.004);
    brief.value.setValueEased(1.0);
    EXPECT_EQ(brief.value.getNumber(), 1.0) << "below 5 ms it jumps";
}

TEST(Easing, ANewTargetOrAJumpEndsTheRunningGlide)
{
    Gliding g(0.4);
    g.value.setValueEased(1.0);
    g.recordUntil([&] { return g.value.getNumber() > 0.4; });
    const double turn = g.value.getNumber();
    g.value.setValueEased(0.0);
    const auto down = g.recordToEnd();
    EXPECT_LE(down.front(), turn);
    EXPECT_TRUE(std::is_sorted(down.rbegin(), down.rend())) << "the first glide writes no more";
    EXPECT_EQ(down.back(), 0.0);

    // A jump ends a glide for good.
    g.value.setValueEased(1.0);
    g.recordUntil([&] { return g.value.getNumber() > 0.0; });
    g.value.easingTime = 0.0;
    test::onOtherThread([&] { g.value.setValueEased(0.75); });
    g.recordToEnd();
    EXPECT_EQ(g.value.getNumber(), 0.75);
}

TEST(Easing, OffTheMessageThreadItWaitsForDelivery)
{
    Gliding g(0.2);
    test::onOtherThread(
        [&]
        {
            g.value.setValueEased(0.5);
            g.value.setValueEased(1.0);
        });
    test::pumpFor(80);
    EXPECT_FALSE(g.value.isInTransition());
    EXPECT_EQ(g.value.getNumber(), 0.0);
    g.value.deliverPending();
    EXPECT_TRUE(g.value.isInTransition());
    EXPECT_EQ(g.recordToEnd().back(), 1.0);

    // A jump that comes after a waiting target replaces it.
    test::onOtherThread(
        [&]
        {
            g.value.setValueEased(0.25);
            g.value.easingTime = 0.0;
            g.value.setValueEased(0.5);
        });
    g.value.deliverPending();
    EXPECT_FALSE(g.value.isInTransition());
    EXPECT_EQ(g.value.getNumber(), 0.5);
}

TEST(Easing, StopsPromptlyAtDestruction)
{
    for (const bool loopRuns : {true, false})
    {
        auto g = std::make_unique<Gliding>(60.0);
        g->value.setValueEased(1.0);
        // Without a running loop the glide waits for the lock.
        loopRuns ? test::pumpFor(80) : juce::Thread::sleep(30);
        ASSERT_TRUE(g->value.isInTransition());
        const double start = now();
        g.reset();
        EXPECT_LT(now() - start, 1000.0);
    }
}

} // namespace
} // namespace quorel
