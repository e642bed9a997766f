// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests here share: the real message loop, foreign threads, and a count of heap use by thread.
#pragma once

#include <functional>
#include <juce_data_structures/juce_data_structures.h>
#include <juce_events/juce_events.h>
#include <thread>
#include <vector>

namespace quorel::test
{

/** Runs the message loop until `done` or until the time is over. */
inline bool pumpUntil(const std::function<bool()>& done, int timeoutMillis = 5000)
{
    const auto end = juce::Time::getMillisecondCounterHiRes() + timeoutMillis;
    while (!done())
    {
        if (juce::Time::getMillisecondCounterHiRes() > end)
            return false;
        juce::MessageManager::getInstance()->runDispatchLoopUntil(2);
    }
    return true;
}

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
    pumpUntil([&] { return done.load(); });
    thread.join();
}

/** Calls of operator new on this thread so far. */
std::size_t heapCallsOnThisThread() noexcept;

/** Remembers every number a value told, and whether it came on the message thread. */
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
