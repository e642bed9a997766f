// SPDX-License-Identifier: GPL-3.0-or-later
// The 66 category flags of a preset: three groups of 22 words, packed into parameters 10 to 15, eleven to a
// parameter. They are parameters so that each preset file carries its own. Pure functions, any thread.
#pragma once

#include "parameters/ParameterAccess.h"

#include <juce_core/juce_core.h>

#include <array>
#include <optional>

namespace quorel
{

constexpr int numCategoryGroups = 3;
constexpr int categoriesPerGroup = 22;
constexpr int numCategories = numCategoryGroups * categoriesPerGroup;
constexpr int categoriesPerParameter = 11;
constexpr int numCategoryParameters = numCategories / categoriesPerParameter;
constexpr int firstCategoryParameter = 10;

/** Flag `group * 22 + item` is 0 or 1. */
using CategoryFlags = std::array<juce::uint8, numCategories>;

/** "TYPE", "TEMPO/FEEL", "TIMBRE". `group` is 0 to 2. */
const char* categoryHeading(int group);

/** The word of a flag, 0 to 65. Flags without a word have a number, or nothing, and are never offered. */
const char* categoryName(int flag);

/** The flag of a word, in any letter case, or of a number that stands in place of one; nothing for other
    texts. Where several groups have it, the first counts. */
std::optional<int> findCategory(const juce::String& name);

/** A column of the word grid: `numItems` words of `group` from `firstItem`. */
struct CategoryColumn
{
    int group;
    int firstItem;
    int numItems;
};

constexpr std::array<CategoryColumn, 5> categoryColumns{
    {{0, 0, 10}, {0, 10, 7}, {1, 0, 10}, {1, 10, 6}, {2, 0, 5}}};

/** Bit of the flag, 0 to 65, in its parameter: 0 to 10. */
constexpr int categoryBit(int flag) noexcept
{
    return flag % categoriesPerParameter;
}

/** The parameter, 10 to 15, that holds the flag. */
constexpr int categoryParameter(int flag) noexcept
{
    return firstCategoryParameter + flag / categoriesPerParameter;
}

/** Whether the flag is set in the value of its parameter. */
bool hasCategory(float value, int flag) noexcept;

/** The value of the parameter with the flag set or cleared. */
float withCategory(float value, int flag, bool on) noexcept;

/** Flags in the values of parameters 10 to 15. */
CategoryFlags unpackCategories(const std::array<float, numCategoryParameters>& values) noexcept;

/** The words of the flags that are set. */
juce::StringArray categoryWords(const CategoryFlags& flags);

/** Flags of the present sound. */
CategoryFlags categoriesOf(const ParameterAccess& parameters) noexcept;

} // namespace quorel
