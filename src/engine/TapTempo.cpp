// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/TapTempo.h"

namespace quorel
{

namespace
{
constexpr std::uint32_t longestInterval = 1000;
constexpr std::uint32_t tapsNeeded = 4;
} // namespace

std::optional<float> TapTempo::tap(std::uint32_t millis)
{
    if (count > 0 && millis - lastMillis > longestInterval)
    {
        count = 0;
        return std::nullopt;
    }

    if (count == 0)
        firstMillis = millis;
    lastMillis = millis;
    ++count;
    if (count < tapsNeeded)
        return std::nullopt;

    // The average interval is the row's length over their number, in whole milliseconds. Taps within the same
    // millisecond have no tempo.
    const std::uint32_t interval = (lastMillis - firstMillis) / (count - 1);
    if (interval == 0)
        return std::nullopt;
    return static_cast<float>(1000.0 / interval) * 60.0f;
}

} // namespace quorel
