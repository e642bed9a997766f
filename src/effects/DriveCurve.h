// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectMath.h"

namespace quorel
{
/** Saturator with a drive of d >= 0: a hard clip at +-1 for d = 0, ever rounder above. */
inline float driveCurve(float x, float d)
{
    const float t = x * d + fxTiny;
    const float n = t + x;
    const float y = t > 0.0f ? n / (1.0f + t) : n / (1.0f - t);
    return std::min(std::max(y, -1.0f), 1.0f) + fxTiny;
}
} // namespace quorel
