// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PresetCommands.h"

#include "engine/PluginProcessor.h"
#include "platform/FileNames.h"
#include "presets/PresetFiles.h"

#include <utility>

namespace quorel
{

PresetCommands::PresetCommands(PluginProcessor& pluginProcessor, PresetLibrary& presetLibrary)
    : processor(pluginProcessor)
    , library(presetLibrary)
{
}

juce::File PresetCommands::banksFolder() const
{
    return processor.getPaths().banksFolder;
}

void PresetCommands::refreshLists()
{
    library.scanFolders(banksFolder(), processor.getFolderName());
    library.scanPresets(banksFolder(), processor.getFolderName(), processor.getPresetName());
}

void PresetCommands::refreshIndex()
{
    refreshLists();
    library.rebuildIndex(banksFolder());
}

//==============================================================================================================
// Choosing

bool PresetCommands::load(const juce::String& folder, const juce::String& preset)
{
    const bool onItsWay = processor.getSoundChange().requestPreset(folder, preset);

    if (onItsWay)
    {
        library.clearSelection();
        awaitedUse = {folder, preset};
    }
    else
    {
        library.markIndexStale();
    }

    refreshLists();
    processor.requestEditorRefresh();
    return onItsWay;
}

void PresetCommands::presetLoaded()
{
    const PresetPlace loaded{processor.getFolderName(), processor.getPresetName()};

    if (std::exchange(awaitedUse, {}) == loaded)
        questions.tellFailure("Could not keep the recently used presets",
                              library.marks.noteUse(loaded, juce::Time::getCurrentTime()));
}

void PresetCommands::setOrder(PresetOrder order)
{
    library.setOrder(order);
    refreshLists();
    processor.requestEditorRefresh();
}

void PresetCommands::setAmong(PresetQuery::Among among)
{
    library.setAmong(among);
    library.search();
    processor.requestEditorRefresh();
}

bool PresetCommands::selectFolder(int index)
{
    return index >= 0 && index < library.getFolderCount() &&
           selectFolderByName(library.getFolderNames()[index]);
}

bool PresetCommands::selectFolderByName(const juce::String& name)
{
    const auto folder = childNamed(banksFolder(), name);

    if (!folder.isDirectory())
    {
        questions.tell("Folder " + name + " isn't there any more.");
        filesChanged();
        return false;
    }

    if (const auto presets = listPresets(folder); !presets.isEmpty())
        return load(name, presets[0]);

    processor.setNames(processor.getPresetName(), name);
    refreshLists();
    library.clearSelection();
    processor.requestEditorRefresh();
    return true;
}

void PresetCommands::selectPreset(int index)
{
    if (index >= 0 && index < library.getPresetCount() && index != library.getCurrentPresetIndex())
        selectPresetByName(library.getPresetNames()[index]);
}

bool PresetCommands::selectPresetByName(const juce::String& name)
{
    return load(processor.getFolderName(), name);
}

bool PresetCommands::stepPreset(int step)
{
    const int count = library.getPresetCount();

    if (count == 0)
        return false;

    const int index = juce::jlimit(0, count - 1, library.getCurrentPresetIndex() + step);
    return selectPresetByName(library.getPresetNames()[index]);
}

bool PresetCommands::nextPreset()
{
    return library.getPresetCount() > 1 && stepPreset(1);
}

bool PresetCommands::previousPreset()
{
    return library.getPresetCount() > 1 && stepPreset(-1);
}

bool PresetCommands::stepFolder(int step)
{
    const int current = library.getCurrentFolderIndex();
    const int index = juce::jlimit(0, juce::jmax(0, library.getFolderCount() - 1), current + step);
    return library.getFolderCount() > 1 && index != current && selectFolder(index);
}

bool PresetCommands::nextFolder()
{
    return stepFolder(1);
}

bool PresetCommands::previousFolder()
{
    return stepFolder(-1);
}

//==============================================================================================================
// Clicks in the lists

void PresetCommands::clickFolder(int index, bool inSearch)
{
    if (index < 0 || index >= library.getFolderCount())
        return;

    if (inSearch)
        library.setSelectedResultFolder(index == library.getSelectedResultFolder() ? -1 : index);
    else
        selectFolder(index);
}

void PresetCommands::clickPreset(int index, Modifier modifier)
{
    if (index < 0 || index >= library.getPresetCount())
        return;

    if (modifier == Modifier::shift)
    {
        library.extendSelection(index);
        return;
    }

    if (modifier == Modifier::control)
    {
        library.toggleSelection(index);
        return;
    }

    library.clearSelection();
    selectPreset(index);
    processor.setParameterFromUi(slot::view, processor.readParameter(slot::view));
}

void PresetCommands::clickResult(int row, Modifier modifier)
{
    if (row < 0 || row >= library.getFilteredCount())
        return;

    if (modifier == Modifier::shift)
    {
        library.extendSelection(row);
        return;
    }

    if (modifier == Modifier::control)
    {
        library.toggleSelection(row);
        return;
    }

    const auto& entry = library.getFilteredPreset(row);
    load(entry.folder, entry.name);
    processor.setParameterFromUi(slot::view, processor.readParameter(slot::view));
}

//==============================================================================================================
// Menus

bool PresetCommands::run(const juce::String& command)
{
    struct Command
    {
        const char* text;
        void (PresetCommands::*perform)();
    };

    constexpr Command commands[] = {
        {presetCommand::newFolder, &PresetCommands::newFolder},
        {presetCommand::renameFolder, &PresetCommands::renameFolder},
        {presetCommand::deleteFolder, &PresetCommands::deleteFolder},
        {presetCommand::newPreset, &PresetCommands::newPreset},
        {presetCommand::renamePreset, &PresetCommands::renamePreset},
        {presetCommand::deletePreset, &PresetCommands::deletePreset},
        {presetCommand::loadPreset, &PresetCommands::loadPreset},
        {presetCommand::savePreset, &PresetCommands::savePreset},
        {presetCommand::savePresetAs, &PresetCommands::savePresetAs},
        {presetCommand::copyPreset, &PresetCommands::copyPreset},
        {presetCommand::pastePreset, &PresetCommands::pastePreset},
    };

    for (const auto& entry : commands)
    {
        if (command == entry.text)
        {
            (this->*entry.perform)();
            return true;
        }
    }

    return false;
}

MenuEntries PresetCommands::folderMenu()
{
    refreshLists();
    foldersInMenu = library.getFolderNames();
    foldersInMenu.removeRange(library.getFolderCount(), foldersInMenu.size());
    return makeFolderMenu(library);
}

MenuEntries PresetCommands::presetMenu()
{
    refreshLists();
    presetsInMenu =
        makePresetMenu(library, banksFolder(), {processor.getFolderName(), processor.getPresetName()});
    return presetsInMenu.entries;
}

void PresetCommands::folderMenuChosen(int id)
{
    const int index = id - presetMenuId::firstFolder;

    if (index < 0)
        run(folderCommandOf(id));
    else if (index < foldersInMenu.size())
        selectFolderByName(foldersInMenu[index]);
}

void PresetCommands::presetMenuChosen(int id)
{
    if (const auto place = presetOfMenu(presetsInMenu, id); place.name.isNotEmpty())
        load(place.folder, place.name);
    else
        run(presetCommandOf(id));
}

//==============================================================================================================
// Categories

void PresetCommands::toggleCategory(int flag)
{
    if (flag < 0 || flag >= numCategories)
        return;

    if (!library.getSelectedPresets().isEmpty())
        return selection.toggleCategory(library.selectedPlaces(), flag);

    const int parameter = categoryParameter(flag);
    const float value = processor.readParameter(parameter);
    processor.setParameterFromUi(parameter, withCategory(value, flag, !hasCategory(value, flag)));
}

void PresetCommands::clearCategories()
{
    const UndoHistory::Recording recording(processor);

    for (int i = 0; i < numCategoryParameters; ++i)
        processor.setParameter(firstCategoryParameter + i, 0.0f);
}

void PresetCommands::toggleFilterCategory(int flag)
{
    if (flag < 0 || flag >= numCategories)
        return;

    library.setCategoryFilter(flag, library.getCategoryFilter()[static_cast<size_t>(flag)] == 0);
    library.search();
}

void PresetCommands::clearCategoryFilter()
{
    library.clearCategoryFilter();
    library.search();
}

} // namespace quorel
