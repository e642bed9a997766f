// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/Categories.h"

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
    /** The name in lower case, as UTF-8, so that a search needn't convert it again. */
    std::string searchName;
};

/** Every preset of every folder with its categories, in the order of the lists: folders, then names, by code
    point. It shows the disk as it was when it was built. Any thread, but one at a time. */
class PresetIndex
{
public:
    /** Walks the banks folder and reads the six category values of each file from their fixed place. What
        a short file lacks counts as 0. Takes a tenth of a second for ten thousand files in the system's
        cache. */
    void build(const juce::File& banksFolder);

    const std::vector<PresetIndexEntry>& getEntries() const noexcept { return entries; }

    /** Positions of the entries whose names hold the text, in any letter case; all for an empty text. Entries
        of other folders than `folderIndex` are left out, unless that is negative. */
    std::vector<int> findText(const juce::String& text, int folderIndex = -1) const;

    /** Positions of the entries that have all the flags which are set in `wanted`; all if none is. */
    std::vector<int> findCategories(const CategoryFlags& wanted, int folderIndex = -1) const;

private:
    std::vector<PresetIndexEntry> entries;
};

} // namespace quorel
