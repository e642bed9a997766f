// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"

#include <algorithm>
#include <cmath>

namespace quorel
{
/** Holds x to 0..1; what isn't a number gives 0. */
constexpr float clampUnit(float x) noexcept
{
    return x > 0.0f ? std::min(x, 1.0f) : 0.0f;
}

/** Holds x to -limit..+limit; what isn't a number gives 0. */
inline float clampTo(float x, float limit)
{
    return std::abs(x) <= limit ? x : (x > limit ? limit : (x < -limit ? -limit : 0.0f));
}

/** Whole part of x held to low..high; what isn't a number gives low. */
inline int truncateTo(float x, int low, int high)
{
    if (!(x > static_cast<float>(low)))
        return low;

    return x >= static_cast<float>(high) ? high : static_cast<int>(x);
}

/** Entry of a discrete parameter: `span` is the entry count less a hundredth, so that p = 1 is the last one. */
inline int discreteChoice(float p, float span)
{
    return static_cast<int>(p * span);
}

/** 10^((p x range + offset) / 20); exactly 0 when p is below 0.001. */
inline float levelGain(float p, float range, float offset)
{
    return p < 0.001f ? 0.0f : std::pow(10.0f, (p * range + offset) / 20.0f);
}

/** Fractional part of a positive number. */
inline float fraction(float x)
{
    return x - std::floor(x);
}

/** An incoming sample, with anything that is no sound silenced. */
inline float audible(float x)
{
    return std::abs(x) <= fxSignalLimit ? x : 0.0f;
}
} // namespace quorel
