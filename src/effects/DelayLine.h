// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"

#include <algorithm>
#include <cstdint>

namespace quorel
{
/** Linear read at a distance d >= 0 behind writeCount; silent before the counter has run that far. */
inline float lineRead(const float* line, std::uint32_t mask, std::uint32_t writeCount, float d)
{
    const int whole = static_cast<int>(d);
    const int n = static_cast<int>(writeCount) - whole;
    const float f = d - static_cast<float>(whole) + fxTiny;
    const float s0 = n >= 0 ? line[static_cast<std::uint32_t>(n) & mask] : 0.0f;
    const float s1 = n - 1 >= 0 ? line[static_cast<std::uint32_t>(n - 1) & mask] : 0.0f;
    return (s1 - s0) * f + s0 + fxTiny;
}

/** Moves a read distance a hundredth of the way to its target, or all the way if they are a factor apart. */
inline float glideDistance(float smooth, float target, float factor)
{
    smooth = smooth * 0.99f + target * 0.00999999f + fxTiny;
    return target > smooth * factor || smooth * (1.0f / factor) > target ? target : smooth;
}

/** Keeps what goes into a line with feedback, or comes out of one, at most 40 dB over full scale. */
inline float heldForLine(float x)
{
    return std::min(std::max(x, -fxLineLimit), fxLineLimit);
}
} // namespace quorel
