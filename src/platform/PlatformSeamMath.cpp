// SPDX-License-Identifier: GPL-3.0-or-later
// Polynomials, tables and order of operations are those of the GNU C library: of Arm's Optimized Routines (MIT licence)
// for powers, logarithms, sine and cosine, which work in double, and of Sun's fdlibm for the others, which work in
// float. What lies outside the usual ranges is left to the functions for doubles.
#include "platform/PlatformSeamMath.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace quorel::portable
{
namespace
{
std::uint32_t bitsOf(float x)
{
    std::uint32_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    return bits;
}

float floatOf(std::uint32_t bits)
{
    float x;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

std::uint64_t bitsOf(double x)
{
    std::uint64_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    return bits;
}

double doubleOf(std::uint64_t bits)
{
    double x;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

bool isPositiveAndNormal(float x)
{
    return x >= std::numeric_limits<float>::min() && x <= std::numeric_limits<float>::max();
}

/** Adding and taking away this rounds to a whole number, which is left in the lowest bits on the way. */
constexpr double roundingOffset = 0x1.8p52;

//==============================================================================================================
// Powers and logarithms

/** The bits of 2^(i / 32) less i in the place that the exponent starts five bits above. */
constexpr std::uint64_t powersOfTwo[32] = {
    0x3ff0000000000000, 0x3fefd9b0d3158574, 0x3fefb5586cf9890f, 0x3fef9301d0125b51, 0x3fef72b83c7d517b,
    0x3fef54873168b9aa, 0x3fef387a6e756238, 0x3fef1e9df51fdee1, 0x3fef06fe0a31b715, 0x3feef1a7373aa9cb,
    0x3feedea64c123422, 0x3feece086061892d, 0x3feebfdad5362a27, 0x3feeb42b569d4f82, 0x3feeab07dd485429,
    0x3feea47eb03a5585, 0x3feea09e667f3bcd, 0x3fee9f75e8ec5f74, 0x3feea11473eb0187, 0x3feea589994cce13,
    0x3feeace5422aa0db, 0x3feeb737b0cdc5e5, 0x3feec49182a3f090, 0x3feed503b23e255d, 0x3feee89f995ad3ad,
    0x3feeff76f2fb5e47, 0x3fef199bdd85529c, 0x3fef3720dcef9069, 0x3fef5818dcfba487, 0x3fef7c97337b9b5f,
    0x3fefa4afa2a490da, 0x3fefd0765b6e4540};

/** 2^(r + k / 32) for |r| up to 1/64; `k` comes with an offset that leaves it in the lowest bits. */
double power(double r, double kPlusOffset)
{
    const std::uint64_t k = bitsOf(kPlusOffset);
    const double scale = doubleOf(powersOfTwo[k % 32] + (k << 47));
    const double high = 0x1.c6af84b912394p-5 * r + 0x1.ebfce50fac4f3p-3;
    const double low = 0x1.62e42ff0c52d6p-1 * r + 1.0;
    return (high * (r * r) + low) * scale;
}

/** 2^x for results that are normal. */
double powerOfTwo(double x)
{
    constexpr double offset = roundingOffset / 32.0;
    const double k = x + offset;
    return power(x - (k - offset), k);
}

/** x = 2^exponent z, with z near 1 and `row` its part of the tables. */
struct SplitFloat
{
    explicit SplitFloat(float x)
    {
        const std::uint32_t bits = bitsOf(x), above = bits - 0x3f330000;
        row = (above >> 19) % 16;
        exponent = static_cast<std::int32_t>(above) >> 23;
        z = static_cast<double>(floatOf(bits - (above & 0xff800000)));
    }

    std::uint32_t row;
    std::int32_t exponent;
    double z;
};

struct LogRow
{
    double inverse, natural, binary;
};

/** 1 / c, ln c and log2 c of a number c in each sixteenth. */
constexpr LogRow logRows[16] = {{0x1.661ec79f8f3bep+0, -0x1.57bf7808caadep-2, -0x1.efec65b963019p-2},
                                {0x1.571ed4aaf883dp+0, -0x1.2bef0a7c06ddbp-2, -0x1.b0b6832d4fca4p-2},
                                {0x1.49539f0f010bp+0, -0x1.01eae7f513a67p-2, -0x1.7418b0a1fb77bp-2},
                                {0x1.3c995b0b80385p+0, -0x1.b31d8a68224e9p-3, -0x1.39de91a6dcf7bp-2},
                                {0x1.30d190c8864a5p+0, -0x1.6574f0ac07758p-3, -0x1.01d9bf3f2b631p-2},
                                {0x1.25e227b0b8eap+0, -0x1.1aa2bc79c81p-3, -0x1.97c1d1b3b7afp-3},
                                {0x1.1bb4a4a1a343fp+0, -0x1.a4e76ce8c0e5ep-4, -0x1.2f9e393af3c9fp-3},
                                {0x1.12358f08ae5bap+0, -0x1.1973c5a611cccp-4, -0x1.960cbbf788d5cp-4},
                                {0x1.0953f419900a7p+0, -0x1.252f438e10c1ep-5, -0x1.a6f9db6475fcep-5},
                                {0x1p+0, 0.0, 0.0},
                                {0x1.e608cfd9a47acp-1, 0x1.aa5aa5df25984p-5, 0x1.338ca9f24f53dp-4},
                                {0x1.ca4b31f026aap-1, 0x1.c5e53aa362eb4p-4, 0x1.476a9543891bap-3},
                                {0x1.b2036576afce6p-1, 0x1.526e57720db08p-3, 0x1.e840b4ac4e4d2p-3},
                                {0x1.9c2d163a1aa2dp-1, 0x1.bc2860d22477p-3, 0x1.40645f0c6651cp-2},
                                {0x1.886e6037841edp-1, 0x1.1058bc8a07ee1p-2, 0x1.88e9c2c1b9ff8p-2},
                                {0x1.767dcf5534862p-1, 0x1.4043057b6ee09p-2, 0x1.ce0a44eb17bccp-2}};

/** Of a positive, normal number. */
double binaryLogarithm(float x)
{
    const SplitFloat split(x);
    const auto& row = logRows[split.row];
    const double r = split.z * row.inverse - 1.0, square = r * r;
    const double y0 = row.binary + static_cast<double>(split.exponent);
    const double high = 0x1.27616c9496e0bp-2 * r - 0x1.71969a075c67ap-2;
    const double middle = 0x1.ec70a6ca7baddp-2 * r - 0x1.7154748bef6c8p-1;
    const double low = 0x1.71547652ab82bp+0 * r + y0;
    return high * (square * square) + (middle * square + low);
}
} // namespace

float exp2(float x)
{
    if (!(x > -126.0f && x < 128.0f))
        return static_cast<float>(std::exp2(static_cast<double>(x)));
    return static_cast<float>(powerOfTwo(static_cast<double>(x)));
}

float exp(float x)
{
    if (!(x > -87.0f && x < 88.0f))
        return static_cast<float>(std::exp(static_cast<double>(x)));
    const double thirtySeconds = 0x1.71547652b82fep+5 * static_cast<double>(x);
    const double k = thirtySeconds + roundingOffset;
    return static_cast<float>(power((thirtySeconds - (k - roundingOffset)) / 32.0, k));
}

float log(float x)
{
    if (!isPositiveAndNormal(x))
        return static_cast<float>(std::log(static_cast<double>(x)));
    const SplitFloat split(x);
    const auto& row = logRows[split.row];
    const double r = split.z * row.inverse - 1.0, square = r * r;
    const double y0 = row.natural + static_cast<double>(split.exponent) * 0x1.62e42fefa39efp-1;
    const double y = -0x1.00ea348b88334p-2 * square + (0x1.5575b0be00b6ap-2 * r - 0x1.ffffef20a4123p-2);
    return static_cast<float>(y * square + (y0 + r));
}

float log10(float x)
{
    if (!isPositiveAndNormal(x))
        return static_cast<float>(std::log10(static_cast<double>(x)));
    const std::uint32_t bits = bitsOf(x);
    const auto exponent = static_cast<std::int32_t>(bits >> 23) - 127;
    const std::uint32_t below = exponent < 0 ? 1u : 0u;
    const float z = floatOf((bits & 0x007fffff) | ((127 - below) << 23));
    const auto y = static_cast<float>(exponent + static_cast<std::int32_t>(below));
    const float low = y * 7.9034151668e-07f + 4.3429449201e-01f * log(z);
    return low + y * 3.0102920532e-01f;
}

float pow(float x, float y)
{
    if (isPositiveAndNormal(x))
    {
        const double exponent = static_cast<double>(y) * binaryLogarithm(x);
        if (exponent > -126.0 && exponent < 127.9)
            return static_cast<float>(powerOfTwo(exponent));
    }
    return static_cast<float>(std::pow(static_cast<double>(x), static_cast<double>(y)));
}

//==============================================================================================================
// Sine and cosine

namespace
{
constexpr float quarterOfPi = 0x1.921fb6p-1f;
/** Up to here an angle less whole quarters of a turn is exact enough with a quarter of 53 bits. */
constexpr float largestNearAngle = 120.0f;
constexpr float largestAngle = 0x1p29f;

/** An angle less `quarter` quarters of a turn. */
struct Angle
{
    explicit Angle(float x)
    {
        const auto wide = static_cast<double>(x);
        if (std::abs(x) < quarterOfPi)
        {
            r = wide;
            return;
        }
        const double kPlusOffset = wide * 0x1.45f306dc9c883p-1 + roundingOffset;
        const double k = kPlusOffset - roundingOffset;
        quarter = static_cast<std::uint32_t>(bitsOf(kPlusOffset));
        if (std::abs(x) < largestNearAngle)
            r = wide - k * 0x1.921fb54442d18p0;
        else // the first two products are exact
            r = ((wide - k * 0x1.921fb4p0) - k * 0x1.4442dp-24) - k * 0x1.8469898cc5170p-48;
    }

    /** Of this many quarters further on. */
    float sine(std::uint32_t further) const
    {
        const std::uint32_t at = quarter + further;
        const double square = r * r;
        const double value = at % 2 == 0 ? sineNearZero(square) : cosineNearZero(square);
        return static_cast<float>((at & 2) != 0 ? -value : value);
    }

    double sineNearZero(double square) const
    {
        const double cube = r * square;
        const double high = 0x1.1107605230bc4p-7 - square * 0x1.994eb3774cf24p-13;
        return (r - cube * 0x1.555545995a603p-3) + cube * square * high;
    }

    static double cosineNearZero(double square)
    {
        const double fourth = square * square;
        const double high = square * 0x1.99343027bf8c3p-16 - 0x1.6c087e89a359dp-10;
        const double low = 1.0 - square * 0x1.ffffffd0c621cp-2;
        return (low + fourth * 0x1.55553e1068f19p-5) + fourth * square * high;
    }

    double r = 0.0;
    std::uint32_t quarter = 0;
};

bool isAngle(float x)
{
    return std::abs(x) < largestAngle;
}

/** Sine and tangent of angles this small are the angle itself. */
bool isTiny(float x)
{
    return std::abs(x) < 0x1p-12f;
}
} // namespace

float sin(float x)
{
    if (isTiny(x))
        return x;
    return isAngle(x) ? Angle(x).sine(0) : static_cast<float>(std::sin(static_cast<double>(x)));
}

float cos(float x)
{
    return isAngle(x) ? Angle(x).sine(1) : static_cast<float>(std::cos(static_cast<double>(x)));
}

void sincos(float x, float& sine, float& cosine)
{
    sine = sin(x);
    cosine = cos(x);
}

//==============================================================================================================
// Tangent and its inverse

namespace
{
/** The higher bits, so that products with them are exact. */
float upperHalf(float x)
{
    return floatOf(bitsOf(x) & 0xfffff000);
}

/** Tangent of x + y, or with `inverted` -1 of its negative inverse, for |x| up to a quarter of pi; y is what x lacks. */
float tangentNearZero(float x, float y, bool inverted)
{
    if (isTiny(x))
        return inverted ? -1.0f / x : x;

    const float sign = std::signbit(x) ? -1.0f : 1.0f;
    const bool nearQuarter = std::abs(x) >= floatOf(0x3f2ca140);
    if (nearQuarter)
    {
        x = (7.8539812565e-01f - sign * x) + (3.7748947079e-08f - sign * y);
        y = 0.0f;
        if (std::abs(x) < 0x1p-13f)
            return inverted ? -sign * (1.0f + 2.0f * x) : sign * (1.0f - 2.0f * x);
    }

    const float z = x * x, w = z * z;
    const float odd = 1.3333334029e-01f +
                      w * (2.1869488060e-02f +
                           w * (3.5920790397e-03f +
                                w * (5.8804126456e-04f + w * (7.8179444245e-05f + w * -1.8558637748e-05f))));
    const float even =
        z * (5.3968254477e-02f +
             w * (8.8632395491e-03f +
                  w * (1.4562094584e-03f +
                       w * (2.4646313977e-04f + w * (7.1407252108e-05f + w * 2.5907305826e-05f)))));
    const float cube = z * x;
    const float rest = y + z * (cube * (odd + even) + y) + 3.3333334327e-01f * cube;
    const float tangent = x + rest;

    if (nearQuarter)
    {
        const float one = inverted ? -1.0f : 1.0f;
        return sign * (one - 2.0f * (x - (tangent * tangent / (tangent + one) - rest)));
    }
    if (!inverted)
        return tangent;

    const float high = upperHalf(tangent), low = rest - (high - x);
    const float inverse = -1.0f / tangent, inverseHigh = upperHalf(inverse);
    return inverseHigh + inverse * ((1.0f + inverseHigh * high) + inverseHigh * low);
}

/** Rows of arctangent's ranges: (a x + b) / (c x + d) takes each to the same small one. */
struct ArctangentRange
{
    float from, a, b, c, d, high, low;
};

constexpr ArctangentRange arctangentRanges[] = {
    {2.4375f, 0.0f, -1.0f, 1.0f, 0.0f, 1.5707962513e+00f, 7.5497894159e-08f},
    {1.1875f, 1.0f, -1.5f, 1.5f, 1.0f, 9.8279368877e-01f, 3.4473217170e-08f},
    {0.6875f, 1.0f, -1.0f, 1.0f, 1.0f, 7.8539812565e-01f, 3.7748947079e-08f},
    {0.4375f, 2.0f, -1.0f, 1.0f, 2.0f, 4.6364760399e-01f, 5.0121582440e-09f}};

/** r less its arctangent. */
float arctangentRest(float r)
{
    const float z = r * r, w = z * z;
    const float s1 =
        z * (3.3333334327e-01f +
             w * (1.4285714924e-01f +
                  w * (9.0908870101e-02f +
                       w * (6.6610731184e-02f + w * (4.9768779427e-02f + w * 1.6285819933e-02f)))));
    const float s2 = w * (-2.0000000298e-01f +
                          w * (-1.1111110449e-01f +
                               w * (-7.6918758452e-02f + w * (-5.8335702866e-02f + w * -3.6531571299e-02f))));
    return r * (s1 + s2);
}
} // namespace

float tan(float x)
{
    if (!isAngle(x))
        return static_cast<float>(std::tan(static_cast<double>(x)));
    if (std::abs(x) <= quarterOfPi)
        return tangentNearZero(x, 0.0f, false);
    const Angle angle(x);
    const auto r = static_cast<float>(angle.r);
    const auto rest = static_cast<float>(angle.r - static_cast<double>(r));
    return tangentNearZero(r, rest, angle.quarter % 2 != 0);
}

float atan(float x)
{
    const float size = std::abs(x);
    if (size >= 0x1p25f)
        return std::copysign(1.5707962513e+00f + 7.5497894159e-08f, x);
    if (size < 0x1p-29f || std::isnan(x))
        return x;
    for (const auto& range : arctangentRanges)
    {
        if (size >= range.from)
        {
            const float r = (range.a * size + range.b) / (range.c * size + range.d);
            return std::copysign(range.high - ((arctangentRest(r) - range.low) - r), x);
        }
    }
    return x - arctangentRest(x);
}

float atan2(float y, float x)
{
    if (x == 0.0f || y == 0.0f || !std::isfinite(x) || !std::isfinite(y))
        return static_cast<float>(std::atan2(static_cast<double>(y), static_cast<double>(x)));
    if (x == 1.0f)
        return atan(y);
    constexpr float pi = 3.1415927410e+00f, piRest = -8.7422776573e-08f;
    const auto exponents =
        static_cast<std::int32_t>(bitsOf(std::abs(y))) - static_cast<std::int32_t>(bitsOf(std::abs(x)));
    float angle = 0.0f;
    if (exponents >> 23 > 60)
        angle = 0.5f * pi + 0.5f * piRest;
    else if (!(x < 0.0f && exponents >> 23 < -60))
        angle = atan(std::abs(y / x));
    if (x > 0.0f)
        return std::copysign(angle, y);
    return y > 0.0f ? pi - (angle - piRest) : (angle - piRest) - pi;
}
} // namespace quorel::portable
