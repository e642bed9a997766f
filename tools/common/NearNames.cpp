// SPDX-License-Identifier: GPL-3.0-or-later
#include "NearNames.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace quorel
{

namespace
{
constexpr int mostNames = 5;
/** Everything is near what has fewer. */
constexpr std::size_t fewestLetters = 3;

std::u32string lettersOf(const juce::String& text)
{
    std::u32string letters;
    for (auto c = text.getCharPointer(); !c.isEmpty(); ++c)
        if (c.isLetterOrDigit())
            letters += static_cast<char32_t>(c.toLowerCase());
    return letters;
}

/** How many letters have to be changed, added or taken away to get from one to the other. */
std::size_t distance(const std::u32string& one, const std::u32string& other)
{
    // A row of the table of all beginnings of both.
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i)
    {
        auto diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j)
        {
            const auto changed = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = std::exchange(row[j + 1], std::min({changed, row[j] + 1, row[j + 1] + 1}));
        }
    }
    return row.empty() ? 0 : row.back();
}
} // namespace

juce::String didYouMean(const juce::String& wanted, const juce::StringArray& names)
{
    const auto letters = lettersOf(wanted);
    if (letters.size() < fewestLetters || wanted.containsOnly("+-.0123456789"))
        return {};
    const auto farthest = std::max<std::size_t>(1, letters.size() / 4);
    std::vector<std::pair<std::size_t, juce::String>> found;
    juce::StringArray seen;
    for (const auto& name : names)
    {
        if (!seen.addIfNotAlreadyThere(name))
            continue;
        const auto other = lettersOf(name);
        const bool holdsIt = other.find(letters) != std::u32string::npos;
        if (const auto apart = distance(letters, other); holdsIt || apart <= farthest)
            found.emplace_back(apart, name);
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    juce::StringArray nearest;
    for (const auto& [apart, name] : found)
        if (nearest.size() < mostNames)
            nearest.add(name);
    return nearest.isEmpty() ? juce::String() : ": did you mean " + nearest.joinIntoString(", ") + "?";
}

} // namespace quorel
