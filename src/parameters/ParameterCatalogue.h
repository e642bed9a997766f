// SPDX-License-Identifier: GPL-3.0-or-later
// What each slot of the parameter table holds: the one list that names, texts, typed values, resets, the
// editor's double clicks, the tools and docs/parameters.md read.
#pragma once

#include "parameters/ParameterLayout.h"

#include <array>
#include <cstdint>

namespace quorel
{

/** Where the host's name of a parameter comes from. In a layer, "Layer1 " and so on stands before it. */
enum class Naming : std::uint8_t
{
    none,
    /** Its index, or its number within the layer. */
    number,
    /** `ParameterName::text`. */
    text,
    /** The hosted instrument's parameter that an Easy value is mapped to. */
    easyTarget,
    /** What the effect type in its block calls it. */
    effectLabel
};

struct ParameterName
{
    Naming naming = Naming::none;
    /** Put in place of the first and second '#' of the text; counted from 1. */
    std::array<std::uint8_t, 2> numbers{};
    const char* text = "";
};

/** How a value of 0 to 1 is read. */
enum class Coding : std::uint8_t
{
    /** Stored, and read by nothing. */
    unused,
    /** 0 to 1 as it is, or by a law of the place that reads it. */
    position,
    /** Off at 0 alone. */
    onOff,
    /** On above one half. */
    onAboveHalf,
    /** On at 1 alone. */
    onAtOne,
    /** Linear gain, by `cubicGain`. */
    fader,
    /** -100 to 100, 0 at one half. */
    centred,
    /** 0 to 100. */
    percent,
    /** 20 Hz to 20480 Hz, ten octaves. */
    frequency,
    /** `low` to `high`, by `paramToInt`. */
    integer,
    /** The value times `high`, cut off. */
    steps,
    /** By `decodeParamInt`. */
    encodedInteger,
    /** One byte of a text, by `decodeParamChar`. */
    character,
    /** Eleven flags, by `hasCategory`. */
    categoryBits
};

struct ParameterCoding
{
    Coding kind = Coding::unused;
    std::int8_t low = 0;
    std::uint8_t high = 0;
};

/** What a parameter reads, in the host's lists and in the editor. Each text follows the coding; texts of one
    coding differ in their unit. */
enum class TextRule : std::uint8_t
{
    none,
    onOff,
    /** "-6 db" of a fader. */
    decibels,
    /** "640 hz" */
    hertz,
    /** "40 %" */
    percent,
    /** "-30" */
    centred,
    /** "-30 %" */
    centredPercent,
    /** "12" */
    integer,
    /** "12 db" */
    integerDecibels,
    steps,
    midiChannel,
    /** The page in front. */
    view,
    /** "Original" or "Edited". */
    compared,
    effectType,
    /** "100D/40W" */
    dryWet,
    /** "100L/40R" */
    leftRight,
    /** By the effect type in its block. */
    effect,
    /** What the hosted instrument says. */
    easyTarget
};

struct ParameterInfo
{
    ParameterName name;
    ParameterCoding coding;
    TextRule text = TextRule::none;
    /** A reset leaves the value as it is. */
    bool isKeptByReset = true;
    /** What a new instrument holds, 0 to 1. The name of preset and folder is written over it. */
    float defaultValue = 0.0f;
};

/** Any thread. `index` must be a slot, 0 to 1507. */
const ParameterInfo& parameterInfo(int index) noexcept;

inline float parameterDefault(int index) noexcept
{
    return parameterInfo(index).defaultValue;
}

} // namespace quorel
