// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/Quad.h"

namespace quorel
{
/** Functions of the effects' inner loops, the same on every system. Sine, cosine and arctangent follow the
    float functions of the GNU C library (polynomials of Arm's Optimized Routines, MIT licence, and of Sun's
    fdlibm), whose results they give to the last bit for arguments up to 120, but for a rare last bit where
    that library uses fused operations. */

/** Adding and taking away this rounds to a whole number, which is left in the lowest bits on the way. */
inline constexpr double roundingOffset = 6755399441055744.0;

inline Pair oddPower(Pair wholePlusOffset)
{
    return reinterpret_cast<Pair>(reinterpret_cast<PairIndex>(wholePlusOffset) << 63);
}

/** Sine of r + k pi / 2 for |r| up to a quarter of pi; k comes with roundingOffset. */
inline Pair sineFrom(Pair r, Pair k)
{
    const Pair square = r * r, fourth = square * square, cube = r * square;
    const Pair sines = (r + cube * -0x1.555545995a603p-3) +
                       cube * square * (square * -0x1.994eb3774cf24p-13 + 0x1.1107605230bc4p-7);
    const Pair cosines = ((square * -0x1.ffffffd0c621cp-2 + 1.0) + fourth * 0x1.55553e1068f19p-5) +
                         fourth * square * (square * 0x1.99343027bf8c3p-16 + -0x1.6c087e89a359dp-10);

    const auto quarter = reinterpret_cast<PairIndex>(k);
    const auto odd = reinterpret_cast<Pair>(-(quarter & 1));
    const Pair value = _mm_or_pd(_mm_and_pd(odd, cosines), _mm_andnot_pd(odd, sines));
    return _mm_xor_pd(value, reinterpret_cast<Pair>((quarter & 2) << 62));
}

inline Pair sine(Pair x)
{
    const Pair k = x * 0.63661977236758134308 + roundingOffset;
    return sineFrom(x - (k - roundingOffset) * 1.57079632679489661923, k);
}

inline Pair cosine(Pair x)
{
    const Pair k = x * 0.63661977236758134308 + roundingOffset;
    return sineFrom(x - (k - roundingOffset) * 1.57079632679489661923, k + 1.0);
}

/** Of a normal number above 0. */
inline Pair log2Of(Pair x)
{
    // x = 2^e m with m from half of the square root of 2 on; the bits of e are read as those of a double.
    const auto bits = reinterpret_cast<PairIndex>(x) - 0x3fe6a09e667f3bcd;
    const PairIndex e =
        reinterpret_cast<PairIndex>(_mm_srli_epi64(reinterpret_cast<__m128i>(bits + 0x4000000000000000), 52));
    const Pair exponent = reinterpret_cast<Pair>(e | 0x4330000000000000) - (4503599627370496.0 + 1024.0);
    const Pair m = reinterpret_cast<Pair>((bits & 0x000fffffffffffff) + 0x3fe6a09e667f3bcd);
    const Pair s = (m - 1.0) / (m + 1.0);
    const Pair square = s * s;
    const Pair series =
        (2.8853900818455234 + square * 0.9617966482348916) +
        square * square *
            ((0.5770866554747446 + square * 0.41153362822708717) + square * square * 0.3428304311851751);
    return exponent + s * series;
}

/** 2^x for |x| below 1000. */
inline Pair exp2Of(Pair x)
{
    const Pair k = x + roundingOffset;
    const Pair r = x - (k - roundingOffset);
    const Pair square = r * r;
    const Pair low = (0.9999999999595501 + r * 0.6931471805350229) +
                     square * (0.2402265121358388 + r * 0.055504109761190044);
    const Pair high = (0.009618025604098102 + r * 0.0013333422637651212) +
                      square * (0.00015469731684506519 + r * 1.531646347609023e-05);
    const Pair power = low + square * square * high;
    return reinterpret_cast<Pair>(reinterpret_cast<PairIndex>(power) +
                                  (reinterpret_cast<PairIndex>(k) << 52));
}

inline Quad sine(Quad x)
{
    return joined(sine(firstPair(x)), sine(lastPair(x)));
}

inline Quad cosine(Quad x)
{
    return joined(cosine(firstPair(x)), cosine(lastPair(x)));
}

inline Quad arctangent(Quad x)
{
    const Quad size = magnitude(x);
    const QuadIndex from0 = size >= 0.4375f, from1 = size >= 0.6875f, from2 = size >= 1.1875f,
                    from3 = size >= 2.4375f;
    const auto pick = [=](Quad first, float q0, float q1, float q2, float q3)
    {
        const Quad low = from1 ? quadOf(q1) : (from0 ? quadOf(q0) : first);
        return from3 ? quadOf(q3) : (from2 ? quadOf(q2) : low);
    };

    // (a size + b) / (c size + d) takes each range to the same small one.
    const Quad none = quadOf(0.0f), one = quadOf(1.0f);
    const Quad numerator = pick(one, 2.0f, 1.0f, 1.0f, 0.0f) * size - pick(none, 1.0f, 1.0f, 1.5f, 1.0f);
    const Quad denominator = pick(none, 1.0f, 1.0f, 1.5f, 1.0f) * size + pick(one, 2.0f, 1.0f, 1.0f, 0.0f);
    const Quad r = numerator / denominator, z = r * r, w = z * z;

    const Quad s1 =
        z * (3.3333334327e-01f +
             w * (1.4285714924e-01f +
                  w * (9.0908870101e-02f +
                       w * (6.6610731184e-02f + w * (4.9768779427e-02f + w * 1.6285819933e-02f)))));
    const Quad s2 = w * (-2.0000000298e-01f +
                         w * (-1.1111110449e-01f +
                              w * (-7.6918758452e-02f + w * (-5.8335702866e-02f + w * -3.6531571299e-02f))));
    const Quad high = pick(none, 4.6364760399e-01f, 7.8539812565e-01f, 9.8279368877e-01f, 1.5707962513e+00f);
    const Quad low = pick(none, 5.0121582440e-09f, 3.7748947079e-08f, 3.4473217170e-08f, 7.5497894159e-08f);
    return signedBy(high - ((r * (s1 + s2) - low) - r), x);
}

} // namespace quorel
