// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

namespace quorel
{

/** Tempo from taps on a button. A pure function of the taps' millisecond stamps; one thread. */
class TapTempo
{
public:
    /** Takes a tap at `millis` of a counter that may wrap. Gives the tempo in quarter notes per minute,
        unclamped, from the fourth tap in a row on, and nothing before that. A pause of more than a second
        ends the row; the tap that ends it starts no new one. */
    std::optional<float> tap(std::uint32_t millis);

private:
    std::uint32_t firstMillis = 0;
    std::uint32_t lastMillis = 0;
    std::uint32_t count = 0;
};

} // namespace quorel
