// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PresetGrid.h"

namespace quorel
{

PresetGrid::PresetGrid(PluginProcessor& pluginProcessor, RowGridLayout gridLayout)
    : RowGrid(gridLayout)
    , processor(pluginProcessor)
    , library(pluginProcessor.getPresetLibrary())
{
    setTitle("Presets");
}

void PresetGrid::showResults(bool results)
{
    showingResults = results;
    entriesChanged();
}

int PresetGrid::numEntries() const
{
    return showingResults ? library.getFilteredCount() : library.getPresetCount();
}

juce::String PresetGrid::entryText(int index) const
{
    return showingResults ? library.getFilteredPreset(index).name : library.getPresetNames()[index];
}

int PresetGrid::currentEntry() const
{
    if (!showingResults)
        return library.getCurrentPresetIndex();

    for (int row = 0; row < library.getFilteredCount(); ++row)
        if (isCurrent(row))
            return row;

    return -1;
}

bool PresetGrid::isCurrent(int index) const
{
    if (!showingResults)
        return index == library.getCurrentPresetIndex();

    const auto& entry = library.getFilteredPreset(index);
    return entry.name == processor.getPresetName() && entry.folder == processor.getFolderName();
}

bool PresetGrid::isSelected(int index) const
{
    return library.isSelected(index);
}

void PresetGrid::entryClicked(int index, const juce::ModifierKeys& modifiers)
{
    using Modifier = PresetCommands::Modifier;
    const auto modifier = modifiers.isShiftDown()  ? Modifier::shift
                          : modifiers.isCtrlDown() ? Modifier::control
                                                   : Modifier::none;
    auto& commands = processor.getPresetCommands();

    if (showingResults)
        commands.clickResult(index, modifier);
    else
        commands.clickPreset(index, modifier);

    if (onClick)
        onClick();
}

juce::String PresetGrid::emptyText() const
{
    if (!showingResults)
        return {};

    const int folder = library.getSelectedResultFolder();
    const bool isLimited = folder >= 0 && folder < library.getFolderCount();
    return "No preset found" + (isLimited ? " in " + library.getFolderNames()[folder] : juce::String());
}

} // namespace quorel
