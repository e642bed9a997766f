// SPDX-License-Identifier: GPL-3.0-or-later
// Helpers for tests that need the real message loop and other threads.
#pragma once

#include "common/MessagePump.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <juce_data_structures/juce_data_structures.h>
#include <juce_events/juce_events.h>
#include <thread>
#include <vector>

namespace quorel::test
{

using quorel::pumpUntil;

inline void pumpFor(int millis)
{
    pumpUntil([] { return false; }, millis);
}

/** Runs `work` on another thread while the message loop goes on. */
inline void onOtherThread(const std::function<void()>& work)
{
    std::atomic<bool> done{false};
    std::thread thread(
        [&]
        {
            work();
            done = true;
        });
    constexpr int patienceMillis = 60000;
    EXPECT_TRUE(pumpUntil([&] { return done.load(); }, patienceMillis));
    thread.join();
}

/** Remembers every number that a value reported, and whether all came on the message thread. */
struct Listener final : juce::Value::Listener
{
    void valueChanged(juce::Value& value) override
    {
        heard.push_back(static_cast<double>(value.getValue()));
        alwaysOnMessageThread &= juce::MessageManager::existsAndIsCurrentThread();
    }

    std::vector<double> heard;
    bool alwaysOnMessageThread = true;
};

} // namespace quorel::test
