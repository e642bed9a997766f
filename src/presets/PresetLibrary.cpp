// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetLibrary.h"

#include "platform/FileNames.h"
#include "presets/PresetFiles.h"

#include <utility>

namespace quorel
{

void PresetLibrary::scanFolders(const juce::File& banksFolder, const juce::String& currentFolder)
{
    folderCount = 0;

    if (!banksFolder.isDirectory())
        return;

    auto names = listPresetFolders(banksFolder);

    // The index goes by the positions of the folders, and other programs may change those.
    if (names != folderNames)
        indexStale = true;

    folderNames = std::move(names);
    folderCount = folderNames.size();
    currentFolderIndex = folderNames.indexOf(currentFolder);
}

void PresetLibrary::scanPresets(const juce::File& banksFolder, const juce::String& folder,
                                const juce::String& currentPreset)
{
    presetCount = 0;
    const auto directory = childNamed(banksFolder, folder);

    if (!directory.isDirectory())
        return;

    auto names = listPresets(directory);
    sortPresets(names, directory, order, marks);

    if (folder != scannedFolder || names != presetNames)
        clearSelection();

    scannedFolder = folder;
    presetNames = std::move(names);
    presetCount = presetNames.size();
    currentPresetIndex = presetNames.indexOf(currentPreset);
}

void PresetLibrary::clearSelection()
{
    selectedPresets.clear();
    rangeStart = -1;
    rangeEnd = -1;
}

void PresetLibrary::extendSelection(int index)
{
    if (rangeStart < 0)
    {
        selectedPresets.clear();
        rangeStart = index;
        rangeEnd = index;
        selectedPresets.add(index);
        return;
    }

    rangeEnd = index;

    if (rangeStart > rangeEnd)
        std::swap(rangeStart, rangeEnd);

    for (int i = rangeStart; i <= rangeEnd; ++i)
        selectedPresets.addIfNotAlreadyThere(i);
}

void PresetLibrary::toggleSelection(int index)
{
    rangeStart = -1;
    rangeEnd = -1;

    if (selectedPresets.contains(index))
        selectedPresets.removeFirstMatchingValue(index);
    else
        selectedPresets.add(index);
}

void PresetLibrary::rebuildIndex(const juce::File& banksFolder)
{
    filteredPresets.clear();
    query.folderIndex = -1;
    marks.read();
    presetIndex.build(banksFolder);
    indexStale = false;
}

void PresetLibrary::search()
{
    auto results = presetIndex.find(query, marks, order);

    // The selection goes by position.
    if (results != filteredPresets)
        clearSelection();

    filteredPresets = std::move(results);
}

const PresetIndexEntry* PresetLibrary::find(const PresetPlace& preset) const
{
    for (const auto& entry : presetIndex.getEntries())
        if (entry.name == preset.name && entry.folder == preset.folder)
            return &entry;

    return nullptr;
}

std::vector<PresetPlace> PresetLibrary::selectedPlaces() const
{
    auto positions = selectedPresets;
    positions.sort();
    std::vector<PresetPlace> places;

    for (const int i : positions)
    {
        if (showingResults && i < getFilteredCount())
            places.push_back(getFilteredPreset(i).place());
        else if (!showingResults && i < presetCount)
            places.push_back({scannedFolder, presetNames[i]});
    }

    return places;
}

const PresetIndexEntry& PresetLibrary::getFilteredPreset(int row) const
{
    return presetIndex.getEntries()[static_cast<size_t>(filteredPresets[static_cast<size_t>(row)])];
}

void PresetLibrary::setCategoryFilter(int flag, bool wanted)
{
    query.categories[static_cast<size_t>(flag)] = wanted ? 1 : 0;
}

} // namespace quorel
