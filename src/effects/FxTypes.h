// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

namespace quorel
{
inline constexpr int fxTypeCount = 33;
inline constexpr int fxParameterCount = 10;

/** How the text of a parameter p, 0 to 1, is made. */
enum class FxText
{
    none,           ///< "-"
    choice,         ///< one of `labels`
    halves,         ///< the second of `labels` from 0.5 on
    percent,        ///< 0 to 100 %
    signedPercent,  ///< -100 to +100 %
    centredPercent, ///< the same without a plus
    hertz,          ///< 20 Hz to 20.5 kHz
    bassHertz,      ///< 10 to 640 Hz
    lfoRate,        ///< 0.01 to 13.75 Hz, and "off"
    lfoNote,        ///< lfoSyncTable
    lfoSpeed,       ///< lfoNote when parameter a is at 0.5 or more, otherwise lfoRate
    autoPanSpeed,   ///< lfoNote from an "Amount" (parameter 1) of an eighth on, otherwise lfoRate
    delayNote,      ///< delaySyncTable
    delay,          ///< delayNote when parameter a is above 0.5, otherwise 1 to 4096 ms
    upTo50Ms,
    stages,       ///< 1 to 8
    boost,        ///< -20 to +20 db
    decibels,     ///< a to b dB
    bits,         ///< 16 down to 1
    heldRate,     ///< 44100 down to 1378
    preDelay,     ///< 0 to 511.5 ms
    roomSize,     ///< 0.25 to 7.75 m
    reverbLength, ///< 1 to 400 %
    time,         ///< 1 to 16384 ms
    envelope,     ///< "Off", then 0.5 to 256 ms
    ratio         ///< "None", to 128:1, "Limiter"
};

struct FxTextRule
{
    FxText kind = FxText::none;
    int a = 0, b = 0;
    const char* const* labels = nullptr;
    std::size_t numLabels = 0;
};

/** One parameter of an effect type. */
struct FxParameter
{
    const char* label = "-"; ///< "-" for one that the type hasn't got, and for Kappel's two patterns
    FxTextRule text;
    float start = 0.0f;   ///< 0 to 1, when the user picks the type
    bool bipolar = false; ///< the knob has its zero in the middle
};

/** An effect type as the user sees it. A comment in it says where the sound doesn't do what the text says. */
struct FxType
{
    const char* name;
    std::array<FxParameter, fxParameterCount> parameters;
};

/** Words for the rows of the types. */
namespace fxtext
{
inline constexpr bool bipolar = true;

inline constexpr FxTextRule noText{};
inline constexpr FxTextRule percent{FxText::percent};
inline constexpr FxTextRule signedPercent{FxText::signedPercent};
inline constexpr FxTextRule centredPercent{FxText::centredPercent};
inline constexpr FxTextRule hertz{FxText::hertz};
inline constexpr FxTextRule bassHertz{FxText::bassHertz};
inline constexpr FxTextRule lfoRate{FxText::lfoRate};
inline constexpr FxTextRule lfoNote{FxText::lfoNote};
inline constexpr FxTextRule autoPanSpeed{FxText::autoPanSpeed};
inline constexpr FxTextRule delayNote{FxText::delayNote};
inline constexpr FxTextRule upTo50Ms{FxText::upTo50Ms};
inline constexpr FxTextRule stages{FxText::stages};
inline constexpr FxTextRule boost{FxText::boost};
inline constexpr FxTextRule bits{FxText::bits};
inline constexpr FxTextRule heldRate{FxText::heldRate};
inline constexpr FxTextRule preDelay{FxText::preDelay};
inline constexpr FxTextRule roomSize{FxText::roomSize};
inline constexpr FxTextRule reverbLength{FxText::reverbLength};
inline constexpr FxTextRule time{FxText::time};
inline constexpr FxTextRule envelope{FxText::envelope};
inline constexpr FxTextRule ratio{FxText::ratio};

/** `sync` is the parameter that switches the type to note lengths. */
constexpr FxTextRule delay(int sync)
{
    return {FxText::delay, sync};
}

constexpr FxTextRule lfoSpeed(int sync)
{
    return {FxText::lfoSpeed, sync};
}

constexpr FxTextRule decibels(int lowest, int highest)
{
    return {FxText::decibels, lowest, highest};
}

template <std::size_t size>
constexpr FxTextRule choice(const std::array<const char*, size>& labels)
{
    return {FxText::choice, 0, 0, labels.data(), size};
}

constexpr FxTextRule halves(const std::array<const char*, 2>& labels)
{
    return {FxText::halves, 0, 0, labels.data(), 2};
}

inline constexpr std::array offOn{"Off", "On"};
inline constexpr std::array lfoWaves{"Sine", "Triangle", "Saw up", "Saw down", "Square"};
} // namespace fxtext

/** The types in order, 0 "None" to 32 "AutoWah". Frame, names, texts and editor read these rows; each stands
    in the header of the family that plays it. */
extern const std::array<FxType, fxTypeCount> fxTypes;

/** Type that a type parameter of 0 to 1 selects: its value x 32, truncated. */
int fxTypeFromParameter(float value);

/** Label of parameter j of a type, by entry = type x 10 + j; "-" outside the table. */
const char* fxParameterLabel(int entry);
} // namespace quorel
