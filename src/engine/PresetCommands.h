// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "presets/PresetMenus.h"

#include <juce_core/juce_core.h>

#include <optional>

namespace quorel
{

class PluginProcessor;

/** Everything that a user can do with presets, folders and categories. The editor, the tools and the tests
    call the same operations.

    All commands are refused, without a word, while a preset is on its way. Questions go through the
    processor's `UserInteraction` and may take as long as they like: if the plug-in is gone, or plays
    something else, when the answer comes, nothing is done. Each command leaves the lists as the disk has them
    and asks the editor to refresh. Message thread. */
class PresetCommands
{
public:
    enum class Modifier
    {
        none,
        shift,
        control
    };

    PresetCommands(PluginProcessor& processor, PresetLibrary& library);

    /** Reads folders and presets from the disk. */
    void refreshLists();
    /** The same, and the index of all presets; for opening the preset manager. */
    void refreshIndex();

    //==========================================================================================================
    // Choosing

    /** Makes a folder the current one and starts to load its first preset. An empty folder is chosen with
        nothing loaded. False for a folder that isn't there. */
    bool selectFolder(int index);
    /** Starts to load a preset of the current folder, unless it is the current one. */
    void selectPreset(int index);
    /** Starts to load a preset of the current folder, even if it is the current one. */
    bool selectPresetByName(const juce::String& name);

    /** Moves by `step` presets, held within the list, and loads; at an end that preset is loaded again. */
    bool stepPreset(int step);
    /** The arrows of the header: as `stepPreset`, but only with two presets or more. */
    bool nextPreset();
    bool previousPreset();
    /** The neighbouring folder; nothing at the ends. */
    bool nextFolder();
    bool previousFolder();

    //==========================================================================================================
    // Clicks in the lists

    /** A click on folder `index`: chooses it, or, in a search, limits the results to it. There, a second
        click lifts the limit. */
    void clickFolder(int index, bool inSearch);
    /** A click on preset `index` of the current folder. */
    void clickPreset(int index, Modifier modifier);
    /** A click on row `row` of the results. */
    void clickResult(int row, Modifier modifier);

    //==========================================================================================================
    // Files

    void newFolder();
    void renameFolder();
    void deleteFolder();
    void newPreset();
    void renamePreset();
    void deletePreset();
    void copyPreset();
    void pastePreset();
    void loadPreset();
    void savePreset();

    /** Runs one of the commands above by its text, such as "new folder". False for another text. */
    bool run(const juce::String& command);

    MenuEntries folderMenu();
    MenuEntries presetMenu();
    /** What was chosen from these menus, by id; 0 for nothing. */
    void folderMenuChosen(int id);
    void presetMenuChosen(int id);

    //==========================================================================================================
    // Categories. `flag` is 0 to 65.

    /** Turns a category of the current preset on or off; not while several presets are selected. */
    void toggleCategory(int flag);
    void clearCategories();
    /** Turns a category of the filter on or off, and filters. */
    void toggleFilterCategory(int flag);
    void clearCategoryFilter();

private:
    bool isBusy() const;
    /** Asks for a name. Nothing if the user cancels, or if the plug-in is gone or has moved on to another
        preset by then. */
    std::optional<juce::String> askName(const juce::String& title, const juce::String& prompt,
                                        const juce::String& current);
    std::optional<bool> confirm(const juce::String& question);
    /** Moves a file or folder to the trash, or deletes it for good if the user agrees to that. False where it
        stayed, and the user knows why, or where the plug-in is gone or has moved on. */
    bool discard(const juce::File& file, const juce::String& failureText);
    void tell(const juce::String& text);
    bool load(const juce::String& folder, const juce::String& preset);
    bool stepFolder(int step);
    void filesChanged();
    juce::File banksFolder() const;
    juce::File currentFolder() const;
    juce::File currentFile() const;

    PluginProcessor& processor;
    PresetLibrary& library;
};

} // namespace quorel
