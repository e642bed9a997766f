// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi/AtomicValueSource.h"

#include <cmath>
#include <juce_events/juce_events.h>

namespace quorel
{

namespace
{
/** Equal as a listener sees it: a NaN that follows a NaN is no news. */
bool sameNumber(double a, double b) noexcept
{
    return !(a < b) && !(a > b) && std::isnan(a) == std::isnan(b);
}
} // namespace

AtomicValueSource::AtomicValueSource(double initial, Kind kindIn)
    : number(initial)
    , kind(kindIn)
{
}

juce::var AtomicValueSource::getValue() const
{
    const double current = load();
    if (kind == Kind::real)
        return current;
    return static_cast<int>(juce::jlimit(-2147483648.0, 2147483647.0, std::isnan(current) ? 0.0 : current));
}

void AtomicValueSource::setValue(const juce::var& newValue)
{
    store(static_cast<double>(newValue));
}

void AtomicValueSource::store(double newNumber) noexcept
{
    if (sameNumber(number.exchange(newNumber, std::memory_order_relaxed), newNumber))
        return;
    if (juce::MessageManager::existsAndIsCurrentThread())
        sendChangeMessage(false);
    else
        pending.store(true, std::memory_order_release);
}

void AtomicValueSource::adopt(double newNumber) noexcept
{
    number.store(newNumber, std::memory_order_relaxed);
    pending.store(false, std::memory_order_relaxed);
}

bool AtomicValueSource::replace(double expected, double next)
{
    if (!number.compare_exchange_strong(expected, next, std::memory_order_relaxed))
        return false;
    if (!sameNumber(expected, next))
        sendChangeMessage(false);
    return true;
}

void AtomicValueSource::deliverPending()
{
    if (takePending())
        sendChangeMessage(false);
}

bool AtomicValueSource::takePending() noexcept
{
    // The plain look first: nearly always there is nothing.
    return pending.load(std::memory_order_relaxed) && pending.exchange(false, std::memory_order_acquire);
}

} // namespace quorel
