// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PresetQuestions.h"
#include "presets/PresetMenus.h"

#include <vector>

namespace quorel
{

class PluginProcessor;

/** What can be done with several presets at once, and with the marks and notes of one or of many. Files change
    whole or not at all, and what a change doesn't name stays as it is. What concerns the current preset is done to
    the sound that plays as well. Message thread. */
class SelectionCommands
{
public:
    using Presets = std::vector<PresetPlace>;

    SelectionCommands(PluginProcessor& pluginProcessor, PresetLibrary& presetLibrary);

    /** The selected presets; without any the current one, if it is there. */
    Presets chosen() const;

    /** The commands for these presets, with sub-menus of ratings and of folders. */
    MenuEntries menu(const Presets& presets);
    /** What was chosen from the menu made last; 0 for nothing. */
    void menuChosen(int id);

    void rate(const Presets& presets, int rating);
    void setFavourite(const Presets& presets, bool favourite);

    /** Who made a preset, and what they say about it; into its file at once. */
    PresetNotes notesOf(const PresetPlace& preset) const;
    void setNotes(const PresetPlace& preset, const PresetNotes& notes);

    /** The categories that all of the presets have. */
    CategoryFlags commonCategories(const Presets& presets) const;
    /** Asks, then gives a category, 0 to 65, to all of the presets, or takes it off where all have it. */
    void toggleCategory(const Presets& presets, int flag);

    /** One question for all; to the trash. */
    void remove(const Presets& presets);
    /** Nothing is moved where the folder has one of the names already. */
    void moveTo(const Presets& presets, const juce::String& folder);
    void exportToArchive(const Presets& presets);
    void exportToFolder(const Presets& presets);

private:
    juce::File fileOf(const PresetPlace& preset) const;
    juce::Array<juce::File> filesOf(const Presets& presets) const;
    bool isCurrent(const PresetPlace& preset) const;
    /** The current preset's file, if it is among these and holds what was read or written here. */
    std::optional<juce::MemoryBlock> notedFile(const Presets& presets) const;
    /** Takes over what the program has itself written into that file. */
    void takeOver(const Presets& presets, const std::optional<juce::MemoryBlock>& noted);
    void move(const PresetPlace& preset, const juce::String& folder);

    PluginProcessor& processor;
    PresetLibrary& library;
    PresetQuestions questions{processor};
    Presets presetsOfMenu;
    juce::StringArray foldersInMenu;
};

} // namespace quorel
