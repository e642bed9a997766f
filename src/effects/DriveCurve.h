// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectMath.h"
#include "effects/Quad.h"

namespace quorel
{
/** Saturator with a drive of d >= 0: a hard clip at +-1 for d = 0, ever rounder above. */
inline float driveCurve(float x, float d)
{
    const float t = x * d + fxTiny;
    const float n = t + x;
    const float y = n / (1.0f + std::abs(t));
    return std::min(std::max(y, -1.0f), 1.0f) + fxTiny;
}

inline Quad driveCurve(Quad x, float d)
{
    const Quad t = x * d + fxTiny;
    const Quad y = (t + x) / (1.0f + magnitude(t));
    return smaller(larger(y, quadOf(-1.0f)), quadOf(1.0f)) + fxTiny;
}

/** The same for a run of samples. */
inline void driveCurve(const float* in, float d, float* out, int num)
{
    int t = 0;
    for (; t + 4 <= num; t += 4)
        storeQuad(out + t, driveCurve(loadQuad(in + t), d));

    for (; t < num; ++t)
        out[t] = driveCurve(in[t], d);
}
} // namespace quorel
