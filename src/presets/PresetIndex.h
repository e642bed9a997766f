// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/Categories.h"
#include "presets/PresetMarks.h"
#include "presets/PresetNotes.h"

#include <juce_core/juce_core.h>

#include <string>
#include <vector>

namespace quorel
{

/** A preset as search and filter see it. */
struct PresetIndexEntry
{
    juce::String name;
    juce::String folder;
    /** Position of the folder among the folders of the walk, from 0. */
    int folderIndex = 0;
    CategoryFlags flags{};
    PresetNotes notes;
    /** Milliseconds since 1970 of the file's last change. */
    juce::int64 modified = 0;
    /** Name, author and comment, a line each, in lower case, as UTF-8, so that a search needn't convert them
        again. */
    std::string searchText;

    PresetPlace place() const { return {folder, name}; }
};

/** What a search asks for; all of it has to be so. */
struct PresetQuery
{
    enum class Among
    {
        all,
        favourites,
        /** The newest first, whatever the order. */
        recent
    };

    /** Part of name, author or comment, in any letter case. */
    juce::String text;
    /** Those that it must have. */
    CategoryFlags categories{};
    /** -1 for all folders. */
    int folderIndex = -1;
    Among among = Among::all;
    juce::String author;
    int lowestRating = 0;
};

/** By name is the order of the lists; the others are the best, or the newest, first. */
enum class PresetOrder
{
    byName,
    byRating,
    byDate
};

/** Every preset of every folder with its categories, in the order of the lists: folders, then names, by code
    point. It shows the disk as it was when it was built. Any thread, but one at a time. */
class PresetIndex
{
public:
    /** Walks the banks folder and reads the six category values of each file from their fixed place, and the notes
        where a file has any. What a short file lacks counts as 0. Takes a tenth of a second for ten thousand files
        in the system's cache. */
    void build(const juce::File& banksFolder);

    const std::vector<PresetIndexEntry>& getEntries() const noexcept { return entries; }

    /** Positions of the entries that a query asks for. */
    std::vector<int> find(const PresetQuery& query, const PresetMarks& marks = PresetMarks(),
                          PresetOrder order = PresetOrder::byName) const;

private:
    std::vector<PresetIndexEntry> entries;
};

/** Sorts a folder's presets, which are in the order of names. */
void sortPresets(juce::StringArray& names, const juce::File& folder, PresetOrder order,
                 const PresetMarks& marks);

} // namespace quorel
