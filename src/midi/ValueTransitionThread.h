// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_data_structures/juce_data_structures.h>
#include <juce_events/juce_events.h>

namespace quorel
{

/** Glides one value to a target: a straight line in time, written about twenty times a second with the
    message thread's lock held, its last write exactly the target. Somebody else's write ends the glide: the
    newest word counts. */
class ValueTransitionThread final : public juce::Thread
{
public:
    ValueTransitionThread();
    ~ValueTransitionThread() override;

    /** Stops a running glide and starts one from where `destination` now stands. `seconds` above 0. Message
        thread, or its lock held. */
    void startTransition(const juce::Value& destination, float target, float seconds);

    /** True while a glide to `target` runs undisturbed. Message thread, or its lock held. */
    bool isHeadingFor(float target) const;

    void run() override;

private:
    bool write(double newNumber);
    double readNumber() const;

    // Written with the thread stopped, or under the message thread's lock.
    float targetValue = 0.0f;
    double startMillis = 0.0;
    float durationMillis = 0.0f;
    double startValue = 0.0;
    double lastWritten = 0.0;
    juce::Value value;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(ValueTransitionThread)
};

} // namespace quorel
