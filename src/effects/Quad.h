// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <emmintrin.h>

namespace quorel
{
/** Four floats that are calculated side by side; most often left and right in the first two lanes. Each lane
    rounds as a plain float does. */
using Quad = float __attribute__((vector_size(16)));
using QuadIndex = int __attribute__((vector_size(16)));

/** Two doubles side by side, left and right. */
using Pair = double __attribute__((vector_size(16)));
using PairIndex = std::int64_t __attribute__((vector_size(16)));

/** The same in floats. */
using FloatPair = float __attribute__((vector_size(8)));

inline Quad quadOf(float x)
{
    return Quad{x, x, x, x};
}

inline Quad loadQuad(const float* p)
{
    return _mm_loadu_ps(p);
}

inline void storeQuad(float* p, Quad v)
{
    _mm_storeu_ps(p, v);
}

/** a < b ? a : b */
inline Quad smaller(Quad a, Quad b)
{
    return _mm_min_ps(a, b);
}

/** a > b ? a : b */
inline Quad larger(Quad a, Quad b)
{
    return _mm_max_ps(a, b);
}

inline Quad heldTo(Quad x, Quad low, Quad high)
{
    return smaller(larger(x, low), high);
}

inline Quad heldTo(Quad x, float limit)
{
    return larger(smaller(x, quadOf(limit)), quadOf(-limit));
}

inline Quad magnitude(Quad x)
{
    return _mm_andnot_ps(quadOf(-0.0f), x);
}

/** x with the sign bit of `sign` turned over. */
inline Quad signedBy(Quad x, Quad sign)
{
    return _mm_xor_ps(x, _mm_and_ps(quadOf(-0.0f), sign));
}

/** Whole part, for anything below 2^31. */
inline Quad truncated(Quad x)
{
    return __builtin_convertvector(__builtin_convertvector(x, QuadIndex), Quad);
}

/** True where a comparison holds in each of the first two lanes. */
inline bool bothTrue(QuadIndex mask)
{
    return (_mm_movemask_ps(_mm_castsi128_ps(reinterpret_cast<__m128i>(mask))) & 3) == 3;
}

inline bool anyTrue(QuadIndex mask)
{
    return _mm_movemask_ps(_mm_castsi128_ps(reinterpret_cast<__m128i>(mask))) != 0;
}

inline Pair pairOf(double x)
{
    return Pair{x, x};
}

inline Pair pairOf(float left, float right)
{
    return __builtin_convertvector((FloatPair{left, right}), Pair);
}

inline FloatPair toFloats(Pair x)
{
    return __builtin_convertvector(x, FloatPair);
}

inline Pair magnitude(Pair x)
{
    return _mm_andnot_pd(pairOf(-0.0), x);
}

/** True if neither is further than its limit from 0. The compiler would take a comparison of doubles apart. */
inline bool bothWithin(Pair a, double limitA, Pair b, double limitB)
{
    const __m128d within =
        _mm_and_pd(_mm_cmple_pd(magnitude(a), pairOf(limitA)), _mm_cmple_pd(magnitude(b), pairOf(limitB)));
    return _mm_movemask_pd(within) == 3;
}

/** Left and right of the first two lanes, and of the last two. */
inline Pair firstPair(Quad x)
{
    return _mm_cvtps_pd(x);
}

inline Pair lastPair(Quad x)
{
    return _mm_cvtps_pd(_mm_movehl_ps(x, x));
}

inline Quad joined(Pair first, Pair last)
{
    return _mm_movelh_ps(_mm_cvtpd_ps(first), _mm_cvtpd_ps(last));
}
} // namespace quorel
