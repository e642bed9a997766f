// SPDX-License-Identifier: GPL-3.0-or-later
// Vector registers as lanes, two to an EQ unit: the left and the right channel. What the loops of LayerEqLanes.h need
// of them, and how they are filled from the units' channels and written back. Included there alone, and in an unnamed
// namespace for the reason that stands there.
#pragma once

#include "effects/EffectConstants.h"
#include "effects/Quad.h"

#include <immintrin.h>

namespace quorel
{
namespace
{
#define QUOREL_LANES [[gnu::always_inline]] inline

constexpr double ladderTiny = static_cast<double>(fxTiny);

/** Far below anything heard, yet far above the denormal numbers. */
constexpr float floorLevel = 1e-20f;

/** Past the square root of 12 the ladder's cubic stage returns more than it was given, and would run off for good:
    from there on it returns its own maximum. */
constexpr double largestCubicSquare = 12.0;
constexpr double largestCubicOutput = 0.94280904158206336587;

//==============================================================================================================
// Lanes of the baseline instructions: one unit in a `Pair`, two in a `Quad`

QUOREL_LANES bool allWithin(Pair squares)
{
    return _mm_movemask_pd(_mm_cmple_pd(squares, Pair{largestCubicSquare, largestCubicSquare})) == 3;
}

QUOREL_LANES Pair toLanes(const float* const* left, const float* const* right, int t, Pair*)
{
    return __builtin_convertvector((FloatPair{left[0][t], right[0][t]}), Pair);
}

QUOREL_LANES void fromLanes(Pair v, float* const* left, float* const* right, int units, int t)
{
    const FloatPair rounded = __builtin_convertvector(v, FloatPair);

    if (units > 0)
    {
        left[0][t] = rounded[0];
        right[0][t] = rounded[1];
    }
}

QUOREL_LANES Quad toLanes(const float* const* left, const float* const* right, int t, Quad*)
{
    return Quad{left[0][t], right[0][t], left[1][t], right[1][t]};
}

QUOREL_LANES void fromLanes(Quad v, float* const* left, float* const* right, int units, int t)
{
    for (int i = 0; i < 2; ++i)
    {
        if (i < units)
        {
            left[i][t] = v[2 * i];
            right[i][t] = v[2 * i + 1];
        }
    }
}

QUOREL_LANES Quad chosen(QuadIndex mask, Quad a, Quad b)
{
    return mask ? a : b;
}

/** Zeroes the lanes whose last two outputs have fallen below the floor: a tail ends before it turns into denormal
    numbers. An offset on the input would do that as well, but in a narrow low band it also moves the rounding of
    what is heard. */
QUOREL_LANES void endFadedTails(Quad& y1, Quad& y2)
{
    const Quad floor = {floorLevel, floorLevel, floorLevel, floorLevel};
    const Quad zero = {};
    const Quad sign = {-0.0f, -0.0f, -0.0f, -0.0f};
    const Quad louder = _mm_max_ps(_mm_andnot_ps(sign, y1), _mm_andnot_ps(sign, y2));
    const QuadIndex fades = (louder < floor) & (louder > zero);

    if (_mm_movemask_ps(_mm_castsi128_ps(reinterpret_cast<__m128i>(fades))) != 0)
    {
        y1 = fades ? zero : y1;
        y2 = fades ? zero : y2;
    }
}

#if defined(__AVX2__)
//==============================================================================================================
// Lanes of twice that width: two units in a `WidePair`, four in a `WideQuad`

using WidePair = double __attribute__((vector_size(32)));
using WideQuad = float __attribute__((vector_size(32)));
using WideQuadIndex = int __attribute__((vector_size(32)));

QUOREL_LANES bool allWithin(WidePair squares)
{
    const WidePair limit = {largestCubicSquare, largestCubicSquare, largestCubicSquare, largestCubicSquare};
    return _mm256_movemask_pd(_mm256_cmp_pd(squares, limit, _CMP_LE_OQ)) == 15;
}

QUOREL_LANES WidePair toLanes(const float* const* left, const float* const* right, int t, WidePair*)
{
    return __builtin_convertvector((Quad{left[0][t], right[0][t], left[1][t], right[1][t]}), WidePair);
}

QUOREL_LANES void fromLanes(WidePair v, float* const* left, float* const* right, int units, int t)
{
    fromLanes(__builtin_convertvector(v, Quad), left, right, units, t);
}

QUOREL_LANES WideQuad toLanes(const float* const* left, const float* const* right, int t, WideQuad*)
{
    return WideQuad{left[0][t], right[0][t], left[1][t], right[1][t],
                    left[2][t], right[2][t], left[3][t], right[3][t]};
}

QUOREL_LANES void fromLanes(WideQuad v, float* const* left, float* const* right, int units, int t)
{
    for (int i = 0; i < 4; ++i)
    {
        if (i < units)
        {
            left[i][t] = v[2 * i];
            right[i][t] = v[2 * i + 1];
        }
    }
}

QUOREL_LANES WideQuad chosen(WideQuadIndex mask, WideQuad a, WideQuad b)
{
    return mask ? a : b;
}

QUOREL_LANES void endFadedTails(WideQuad& y1, WideQuad& y2)
{
    const WideQuad floor = WideQuad{} + floorLevel;
    const WideQuad zero = {};
    const WideQuad sign = -zero;
    const WideQuad louder = _mm256_max_ps(_mm256_andnot_ps(sign, y1), _mm256_andnot_ps(sign, y2));
    const WideQuadIndex fades = (louder < floor) & (louder > zero);

    if (_mm256_movemask_ps(_mm256_castsi256_ps(reinterpret_cast<__m256i>(fades))) != 0)
    {
        y1 = fades ? zero : y1;
        y2 = fades ? zero : y2;
    }
}
#endif

template <typename Lanes>
constexpr int unitsIn = static_cast<int>(sizeof(Lanes)) / (sizeof(Lanes{}[0]) == sizeof(float) ? 8 : 16);
} // namespace
} // namespace quorel
