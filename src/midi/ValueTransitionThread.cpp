// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi/ValueTransitionThread.h"

#include "midi/AtomicValueSource.h"

namespace quorel
{

namespace
{
constexpr int writeIntervalMillis = 50;
} // namespace

ValueTransitionThread::ValueTransitionThread()
    : juce::Thread("Value Easing Thread")
{
}

ValueTransitionThread::~ValueTransitionThread()
{
    // Without a limit: JUCE kills a thread by force when the limit is over, and this one always comes soon,
    // since both its wait and its attempt at the lock end with the exit signal.
    stopThread(-1);
}

void ValueTransitionThread::startTransition(const juce::Value& destination, float target, float seconds)
{
    stopThread(-1);
    value.referTo(destination);
    startValue = readNumber();
    lastWritten = startValue;
    targetValue = target;
    durationMillis = seconds * 1000.0f;
    if (!startThread())
        write(static_cast<double>(target));
}

bool ValueTransitionThread::isHeadingFor(float target) const
{
    return isThreadRunning() && targetValue == target && readNumber() == lastWritten;
}

void ValueTransitionThread::run()
{
    const auto target = static_cast<double>(targetValue);
    startMillis = juce::Time::getMillisecondCounterHiRes();
    double t = 0.0;
    while (t < 1.0 && !threadShouldExit())
    {
        t = (juce::Time::getMillisecondCounterHiRes() - startMillis) / static_cast<double>(durationMillis);
        t = juce::jlimit(0.0, 1.0, t);
        {
            const juce::MessageManagerLock lock(this);
            if (!lock.lockWasGained() || !write(t < 1.0 ? (target - startValue) * t + startValue : target))
                return;
        }
        if (t < 1.0)
            wait(writeIntervalMillis);
    }
}

double ValueTransitionThread::readNumber() const
{
    return static_cast<double>(value.getValue());
}

bool ValueTransitionThread::write(double newNumber)
{
    // Host automation writes the atomic kind at any time, so there look and write must be one.
    if (auto* source = dynamic_cast<AtomicValueSource*>(&value.getValueSource()))
    {
        if (!source->replace(lastWritten, newNumber))
            return false;
    }
    else
    {
        if (readNumber() != lastWritten)
            return false;
        value.setValue(newNumber);
    }
    lastWritten = newNumber;
    return true;
}

} // namespace quorel
