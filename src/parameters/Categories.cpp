// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/Categories.h"

#include "effects/EffectMath.h"

namespace quorel
{

namespace
{
using GroupNames = std::array<const char*, categoriesPerGroup>;

constexpr std::array<GroupNames, numCategoryGroups> names{{
    {"Lead",
     "Bass",
     "Sub Bass",
     "Synth",
     "Key",
     "Arp-Seq",
     "Arp",
     "Seq",
     "SFX",
     "Drum",
     "Perc",
     "Chord",
     "Pad",
     "Acoustic Instr.",
     "Velocity Layer",
     "Split Layer",
     "Misc",
     "19",
     "20",
     "21",
     "22",
     ""},
    {"Synced",   "XY Live",   "XY Synced", "Slow", "Fast",   "Percussive", "Spacey",    "Drone", "Short Att",
     "Long Att", "Short Rel", "Long Rel",  "Mono", "Legato", "Poly",       "Kappel FX", "Riser", "DownRiser",
     "20",       "21",        "22",        ""},
    {"Dark",
     "Bright",
     "Distorted",
     "Clean",
     "FX",
     "Mod Wheel Timbre Change",
     "Pitch Wheel Timbre Change",
     "08",
     "09",
     "10",
     "11",
     "12",
     "13",
     "14",
     "15",
     "16",
     "17",
     "18",
     "19",
     "20",
     "21",
     "22"},
}};

/** Steps of a parameter: twelve bits, of which eleven are used. */
constexpr float steps = 4096.0f;

int bitsOf(float value) noexcept
{
    return static_cast<int>(clampUnit(value) * steps);
}
} // namespace

const char* categoryHeading(int group)
{
    constexpr std::array<const char*, numCategoryGroups> headings{"TYPE", "TEMPO/FEEL", "TIMBRE"};
    return headings[static_cast<size_t>(group)];
}

const char* categoryName(int flag)
{
    return names[static_cast<size_t>(flag / categoriesPerGroup)]
                [static_cast<size_t>(flag % categoriesPerGroup)];
}

std::optional<int> findCategory(const juce::String& name)
{
    if (name.isNotEmpty())
        for (int flag = 0; flag < numCategories; ++flag)
            if (name.equalsIgnoreCase(categoryName(flag)))
                return flag;

    return {};
}

bool hasCategory(float value, int flag) noexcept
{
    return ((bitsOf(value) >> categoryBit(flag)) & 1) != 0;
}

float withCategory(float value, int flag, bool on) noexcept
{
    const int bit = 1 << categoryBit(flag);
    const int bits = on ? bitsOf(value) | bit : bitsOf(value) & ~bit;
    // The half keeps rounding from taking the number one lower on the way back.
    return (static_cast<float>(bits) + 0.5f) / steps;
}

CategoryFlags unpackCategories(const std::array<float, numCategoryParameters>& values) noexcept
{
    CategoryFlags flags{};

    for (int flag = 0; flag < numCategories; ++flag)
        flags[static_cast<size_t>(flag)] =
            hasCategory(values[static_cast<size_t>(flag / categoriesPerParameter)], flag) ? 1 : 0;

    return flags;
}

juce::StringArray categoryWords(const CategoryFlags& flags)
{
    juce::StringArray words;

    for (int flag = 0; flag < numCategories; ++flag)
        if (flags[static_cast<size_t>(flag)] != 0)
            words.add(categoryName(flag));

    return words;
}

CategoryFlags categoriesOf(const ParameterAccess& parameters) noexcept
{
    std::array<float, numCategoryParameters> values{};

    for (int i = 0; i < numCategoryParameters; ++i)
        values[static_cast<size_t>(i)] = parameters.readParameter(firstCategoryParameter + i);

    return unpackCategories(values);
}

} // namespace quorel
