// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PresetImport.h"
#include "engine/SelectionCommands.h"

#include <juce_core/juce_core.h>

namespace quorel
{

class PluginProcessor;

/** Everything that a user can do with presets, folders and categories. The editor, the tools and the tests
    call the same operations.

    All of it can be done while a preset is on its way: the sound asked for last is the one that counts. If
    the plug-in is gone, or has another sound, when a question is answered, nothing is done
    (`PresetQuestions`). A command that can't be carried out says why. Each command leaves the lists as the
    disk has them and asks the editor to refresh. Message thread. */
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
    /** Preset files have been written, moved or deleted: reads the lists, and has the index rebuilt before it
        is shown. */
    void filesChanged();

    //==========================================================================================================
    // Choosing

    /** Makes a folder the current one and starts to load its first preset. An empty folder is chosen with
        nothing loaded. False for a folder that isn't there, or where that preset can't be loaded: sound and
        names stay. */
    bool selectFolder(int index);
    /** Starts to load a preset of the current folder, unless it is the current one. */
    void selectPreset(int index);
    /** Starts to load a preset of the current folder, even if it is the current one. */
    bool selectPresetByName(const juce::String& name);

    /** The same for a preset of any folder. */
    bool loadPlace(const PresetPlace& preset) { return load(preset.folder, preset.name); }

    /** A preset has been loaded: one that was chosen here is among the recently used ones from now on. */
    void presetLoaded();

    /** What shows in lists and results, and how. Asks the editor to refresh. */
    void setOrder(PresetOrder order);
    void setAmong(PresetQuery::Among among);

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
    /** Saves the current preset, without a question unless its file has changed since it was read or saved
        here. Where there is no such file, as `savePresetAs`. */
    void savePreset();
    void savePresetAs();

    SelectionCommands& onSelection() noexcept { return selection; }

    PresetImport& importing() noexcept { return import; }

    /** These files are gone: where the current one is among them, the next preset of the list that was shown comes
        in its place. */
    void presetsDeleted(const std::vector<PresetPlace>& gone, const juce::StringArray& shown);

    /** Runs one of the commands above by its text, such as "new folder". False for another text. */
    bool run(const juce::String& command);

    MenuEntries folderMenu();
    MenuEntries presetMenu();
    /** What was chosen from the menus made last, by id; 0 for nothing. */
    void folderMenuChosen(int id);
    void presetMenuChosen(int id);

    //==========================================================================================================
    // Categories. `flag` is 0 to 65.

    /** Turns a category of the current preset on or off; where presets are selected, of all of these, after a
        question. */
    void toggleCategory(int flag);
    void clearCategories();
    /** Turns a category of the filter on or off, and filters. */
    void toggleFilterCategory(int flag);
    void clearCategoryFilter();

private:
    bool selectFolderByName(const juce::String& name);
    bool load(const juce::String& folder, const juce::String& preset);
    bool stepFolder(int step);
    juce::File banksFolder() const;
    juce::File currentFolder() const;
    juce::File currentFile() const;
    bool hasFolder(const char* whatWasNotDone);
    bool hasFile(const char* whatWasNotDone);
    bool mayReplaceCurrentFile();
    /** Moves a file or folder to the trash, or deletes it for good if the user agrees to that. False where it
        stayed, and the user knows why, or where the plug-in is gone or has moved on. */
    bool discard(const juce::File& file, const juce::String& whatFailed);
    void askAgainForAwaited();
    /** The current preset has been deleted; an empty name for a folder that holds nothing else. */
    void goOnWith(const juce::String& folder, const juce::String& neighbour);
    juce::String outsideText(const char* whatWasNotDone) const;
    juce::String freeCopyName(const juce::String& copied) const;

    PluginProcessor& processor;
    PresetLibrary& library;
    PresetQuestions questions{processor};
    SelectionCommands selection{processor, library};
    PresetImport import{processor};
    /** The preset that was chosen last, until it is loaded. */
    PresetPlace awaitedUse;
    /** What the menus show, whatever happens on the disk while they are open. */
    juce::StringArray foldersInMenu;
    PresetMenu presetsInMenu;
};

} // namespace quorel
