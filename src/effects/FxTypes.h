// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

namespace quorel
{
inline constexpr int fxTypeCount = 33;
inline constexpr int fxParameterCount = 10;

/** What one effect type is called. */
struct FxType
{
    const char* name;

    /** Labels of the ten parameters; empty for a slot without a parameter and for the Kappel's two patterns.
     */
    std::array<const char*, fxParameterCount> labels;
};

/** The types in order, 0 "None" to 32 "AutoWah". Frame, parameter names, texts and editor read this one
 * table. */
extern const std::array<FxType, fxTypeCount> fxTypes;

/** Type that a type parameter of 0 to 1 selects: its value x 32, truncated. */
int fxTypeFromParameter(float value);

/** Label of parameter j of a type, by entry = type x 10 + j; empty outside the table. */
const char* fxParameterLabel(int entry);
} // namespace quorel
