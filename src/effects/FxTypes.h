// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

namespace quorel
{
struct FxSlot;

inline constexpr int fxTypeCount = 33;
inline constexpr int fxParameterCount = 10;

/** One effect type: its texts, and the functions of the family that plays it. */
struct FxType
{
    using Update = void (*)(FxSlot&);
    using Process = void (*)(FxSlot&, const float* x, const float* y, float* wetLeft, float* wetRight, int);

    const char* name;

    /** Labels of the ten parameters; empty for a slot without a parameter and for the Kappel's two patterns.
     */
    std::array<const char*, fxParameterCount> labels;

    /** Clears the memory that the type reads, at a change of type or rate; null if it has none. */
    Update clear;

    /** Works the ten parameters into the type's settings; null if there is nothing to set. */
    Update update;

    /** Makes the wet signal of at most fxChunk samples from x and y; sample t runs at sampleCount + 1 + t and
        writeCount + 1 + t. Null leaves the wet signal as it stands. */
    Process process;
};

/** The types in order, 0 "None" to 32 "AutoWah". Frame, parameter names, texts and editor read this one
 * table. */
extern const std::array<FxType, fxTypeCount> fxTypes;

/** Type that a type parameter of 0 to 1 selects: its value x 32, truncated. */
int fxTypeFromParameter(float value);

/** Label of parameter j of a type, by entry = type x 10 + j; empty outside the table. */
const char* fxParameterLabel(int entry);
} // namespace quorel
