// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "presets/PresetIndex.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace quorel
{

/** What the user sees of the banks: the lists of folders and presets, the multiple selection, the index with
    its results, and the clipboard's names. It reads the disk and changes nothing on it; `PresetCommands`
    acts. Message thread. */
class PresetLibrary
{
public:
    //==========================================================================================================
    // Lists

    /** Lists the folders anew. Without a banks folder the names stay as they are and the count is 0. */
    void scanFolders(const juce::File& banksFolder, const juce::String& currentFolder);

    /** Lists the presets of a folder anew. Without the folder the names stay as they are and the count is 0.
        A list that has changed takes the selection with it, which goes by position. */
    void scanPresets(const juce::File& banksFolder, const juce::String& folder,
                     const juce::String& currentPreset);

    const juce::StringArray& getFolderNames() const noexcept { return folderNames; }

    int getFolderCount() const noexcept { return folderCount; }

    /** Position of the current folder; -1 where it isn't in the list. */
    int getCurrentFolderIndex() const noexcept { return currentFolderIndex; }

    const juce::StringArray& getPresetNames() const noexcept { return presetNames; }

    int getPresetCount() const noexcept { return presetCount; }

    /** Position of the current preset; -1 where it isn't in the list. */
    int getCurrentPresetIndex() const noexcept { return currentPresetIndex; }

    //==========================================================================================================
    // Multiple selection, by position in the list that is shown

    const juce::Array<int>& getSelectedPresets() const noexcept { return selectedPresets; }

    bool isSelected(int index) const { return selectedPresets.contains(index); }

    /** Lower end of the range that Shift has opened; -1 while none is open. */
    int getRangeStart() const noexcept { return rangeStart; }

    void clearSelection();
    /** Shift: the first call opens a range with this entry alone; later ones add all entries up to it. */
    void extendSelection(int index);
    /** Ctrl: adds or removes the entry, and closes the range. */
    void toggleSelection(int index);

    //==========================================================================================================
    // Index, search and filter

    /** Reads all preset files' categories anew, and drops the results and the folder filter. */
    void rebuildIndex(const juce::File& banksFolder);

    /** The files have changed: the index has to be rebuilt before it is shown. */
    void markIndexStale() noexcept { indexStale = true; }

    bool isIndexStale() const noexcept { return indexStale; }

    const juce::String& getSearchText() const noexcept { return query.text; }

    void setSearchText(const juce::String& text) { query.text = text; }

    /** Fills the results with the presets that fit text, categories, folder and what is shown of them. */
    void search();

    int getFilteredCount() const noexcept { return static_cast<int>(filteredPresets.size()); }

    /** Row 0 to `getFilteredCount()` - 1 of the results. */
    const PresetIndexEntry& getFilteredPreset(int row) const;

    /** The categories that a filter asks for. */
    const CategoryFlags& getCategoryFilter() const noexcept { return query.categories; }

    /** `flag` is 0 to 65. */
    void setCategoryFilter(int flag, bool wanted);

    void clearCategoryFilter() { query.categories = {}; }

    /** Folder that results are limited to; -1 for none. */
    int getSelectedResultFolder() const noexcept { return query.folderIndex; }

    void setSelectedResultFolder(int folder) noexcept { query.folderIndex = folder; }

    PresetQuery::Among getAmong() const noexcept { return query.among; }

    void setAmong(PresetQuery::Among among) noexcept { query.among = among; }

    /** Of results and of the folder's list, and so of the arrows' steps. */
    PresetOrder getOrder() const noexcept { return order; }

    void setOrder(PresetOrder newOrder) noexcept { order = newOrder; }

    /** Which of the two lists is before the user. */
    void showResults(bool results) noexcept { showingResults = results; }

    bool isShowingResults() const noexcept { return showingResults; }

    /** The selected presets, in the order of the list that is shown. */
    std::vector<PresetPlace> selectedPlaces() const;

    /** What the index has of a preset; null where it has none of these names. */
    const PresetIndexEntry* find(const PresetPlace& preset) const;

    /** Favourites, ratings and recently used presets. */
    PresetMarks marks;

    //==========================================================================================================
    // Clipboard: the preset that was copied, with the sound as it was then

    juce::String clipboardPresetName;
    juce::String clipboardFolderName;
    juce::MemoryBlock clipboardState;

private:
    juce::StringArray folderNames;
    int folderCount = 0;
    int currentFolderIndex = -1;
    juce::StringArray presetNames;
    int presetCount = 0;
    int currentPresetIndex = -1;
    juce::String scannedFolder;

    juce::Array<int> selectedPresets;
    int rangeStart = -1;
    int rangeEnd = -1;

    PresetIndex presetIndex;
    bool indexStale = true;
    /** Positions in the index. */
    std::vector<int> filteredPresets;
    PresetQuery query;
    PresetOrder order = PresetOrder::byName;
    bool showingResults = false;
};

} // namespace quorel
