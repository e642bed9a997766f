// SPDX-License-Identifier: GPL-3.0-or-later
// How integers, gains and characters travel in parameters of 0 to 1. Pure functions, any thread.
#pragma once

#include "effects/EffectMath.h"

#include <algorithm>
#include <cmath>

namespace quorel
{

/** Ranged integer from `low` to `high`. A range of 0 counts as 1. */
inline int paramToInt(float value, int low, int high) noexcept
{
    const int range = high - low == 0 ? 1 : high - low;
    const float step = static_cast<float>(1.0 / range);
    return static_cast<int>(clampUnit(value) / step) + low;
}

/** The nearest whole number; halves away from zero. `x` is within int's range. */
constexpr int nearestInt(double x) noexcept
{
    return static_cast<int>(x < 0.0 ? x - 0.5 : x + 0.5);
}

// Numbers, texts and programs are read to the nearest step. Some hosts store a parameter with six digits and
// write it back after the sound is restored: cut, the value just below a step would read one lower.

/** -32768 to 32768: 0 at 0.5, and never positive below it. */
constexpr int decodeParamInt(float value) noexcept
{
    return nearestInt((static_cast<double>(clampUnit(value)) - 0.5) * 65536.0);
}

/** Inverse of `decodeParamInt`, for -32767 to 32767; numbers beyond are held to that range. */
constexpr float encodeParamInt(int number) noexcept
{
    const int limited = number < -32767 ? -32767 : (number > 32767 ? 32767 : number);
    return static_cast<float>(limited * 1.5258789e-05 + 0.5);
}

/** Linear gain of a fader: 4 v^3, so 0.63 is unity to within 0.0002 and 1 is +12 dB. */
constexpr double cubicGainExact(double value) noexcept
{
    return 4.0 * value * value * value;
}

/** The same, rounded once at the end. */
constexpr float cubicGain(float value) noexcept
{
    return static_cast<float>(cubicGainExact(static_cast<double>(value)));
}

/** Fader position of a level in dB: (g / 4)^(1/3) of its linear gain g. Above 1 from about +12.04 dB. */
inline double faderPositionOfDecibels(double decibels) noexcept
{
    return std::cbrt(std::pow(10.0, decibels / 20.0) * 0.25);
}

/** A character as a text slot holds it: c / 256, with c taken as signed. The table clamps what lies below 0,
    so only seven-bit characters come back. */
constexpr float encodeParamChar(char character) noexcept
{
    return static_cast<float>(static_cast<double>(static_cast<signed char>(character)) / 256.0);
}

/** The byte that a text slot holds. */
constexpr char decodeParamChar(float value) noexcept
{
    const int code = nearestInt(static_cast<double>(clampUnit(value)) * 256.0);
    return static_cast<char>(static_cast<unsigned char>(code & 0xff));
}

/** A hosted instrument's program as its parameter holds it: a fraction of their number. */
constexpr float parameterOfProgram(int program, int numPrograms) noexcept
{
    return numPrograms > 0 ? clampUnit(static_cast<float>(program) / static_cast<float>(numPrograms)) : 0.0f;
}

/** The program, 0 to `numPrograms` - 1, that the parameter holds; 0 where there are none. */
constexpr int programOfParameter(float value, int numPrograms) noexcept
{
    if (numPrograms < 1)
        return 0;

    return std::min(nearestInt(static_cast<double>(clampUnit(value)) * numPrograms), numPrograms - 1);
}

} // namespace quorel
