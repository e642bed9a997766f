// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"

#include <cstdint>

namespace quorel
{
/** Catmull-Rom read of a chorus or flanger line at a distance d >= 0 behind sampleCount. */
inline float modLineRead(const float* line, std::uint32_t sampleCount, float d)
{
    constexpr int mask = fxModLineLength - 1;
    float p = static_cast<float>(sampleCount & static_cast<std::uint32_t>(mask)) - d;
    if (p < 0.0f)
        p += static_cast<float>(fxModLineLength);

    const int i = static_cast<int>(p); // may round to the length itself: hence the masks
    const float f = p - static_cast<float>(i);
    const float a = line[(i - 1) & mask];
    const float b = line[i & mask];
    const float c = line[(i + 1) & mask];
    const float e = line[(i + 2) & mask];
    return ((((b - c) * 1.5f + (e - a) * 0.5f) * f + (a - b * 2.5f + c * 2.0f - e * 0.5f)) * f +
            (c - a) * 0.5f) *
               f +
           b;
}
} // namespace quorel
