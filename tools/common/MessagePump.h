// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <juce_events/juce_events.h>

namespace quorel
{

/** Runs the message loop until `done`, at most for `timeoutMillis`. Returns whether it is done. Message
    thread. */
inline bool pumpUntil(const std::function<bool()>& done, int timeoutMillis)
{
    constexpr int sliceMillis = 2;
    const auto end = juce::Time::getMillisecondCounterHiRes() + timeoutMillis;
    while (!done())
    {
        if (juce::Time::getMillisecondCounterHiRes() >= end)
            return false;
        juce::MessageManager::getInstance()->runDispatchLoopUntil(sliceMillis);
    }
    return true;
}

} // namespace quorel
