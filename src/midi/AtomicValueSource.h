// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <juce_data_structures/juce_data_structures.h>

namespace quorel
{

/** The number behind a `juce::Value` that the audio thread writes too.

    A change made on the message thread tells the listeners in the usual way. A change made anywhere else is
    only marked, and told at the next `deliverPending`: the listeners hear of it on the message thread, once
    for however many writes came together. */
class AtomicValueSource final : public juce::Value::ValueSource
{
public:
    /** How the number looks to readers of the `juce::Value`: an integer reads "2", not "2.0". */
    enum class Kind
    {
        real,
        integer
    };

    explicit AtomicValueSource(double initial = 0.0, Kind kind = Kind::real);

    juce::var getValue() const override;
    /** `store` of the number in `newValue`. */
    void setValue(const juce::var& newValue) override;

    /** Any thread, wait-free. */
    double load() const noexcept { return number.load(std::memory_order_relaxed); }

    /** Any thread. Off the message thread: no allocation, lock or system call. */
    void store(double newNumber) noexcept;

    /** Takes over a number that the listeners know already, and forgets a pending change. Any thread. */
    void adopt(double newNumber) noexcept;

    /** Changes `expected` to `next` and tells the listeners; false, and nothing changed, if the number is no
        longer `expected`. Message thread, or its lock held. */
    bool replace(double expected, double next);

    /** Tells the listeners about changes made off the message thread. Message thread, or its lock held. */
    void deliverPending();

    /** True once after a change off the message thread; for an owner that passes the change on by itself. */
    bool takePending() noexcept;

private:
    std::atomic<double> number;
    std::atomic<bool> pending{false};
    const Kind kind;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(AtomicValueSource)
};

} // namespace quorel
