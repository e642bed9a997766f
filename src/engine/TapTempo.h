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
    /** Takes a tap at `millis` of a counter that may wrap. From the fourth tap of a row on the tempo in
       quarter notes a minute, unlimited; nothing before. A second's pause ends the row, and the tap that ends
       it belongs to no row. */
    std::optional<float> tap(std::uint32_t millis);

private:
    std::uint32_t firstMillis = 0;
    std::uint32_t lastMillis = 0;
    std::uint32_t count = 0;
};

} // namespace quorel
