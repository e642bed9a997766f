// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SelectionCommands.h"

#include "engine/PluginProcessor.h"
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "presets/FolderArchive.h"
#include "presets/PresetEditing.h"

#include <algorithm>
#include <set>

namespace quorel
{

namespace
{
constexpr const char* archiveEnding = ".zip";

enum MenuId
{
    favouriteId = 1,
    /** No rating, one star, and so on. */
    firstRatingId = 2,
    removeId = firstRatingId + highestRating + 1,
    exportArchiveId,
    exportFolderId,
    importId,
    firstFolderId
};

constexpr const char* importText = "import a file";

/** The way in for files that can't be dropped, as some hosts keep drops from what they embed. */
void chooseImport(PluginProcessor& processor)
{
    const juce::WeakReference<PluginProcessor> alive(&processor);
    const auto chosen = processor.userInteraction().chooseFileToOpen(
        "Please select presets, archive or MIDI file...",
        juce::File::getSpecialLocation(juce::File::userDocumentsDirectory), "*.qrl;*.zip;*.mid;*.midi");

    if (alive != nullptr && chosen != juce::File())
        processor.getPresetCommands().importing().take({chosen.getFullPathName()});
}

/** "preset Night Bus", or "3 presets". */
juce::String titleOf(const std::vector<PresetPlace>& presets)
{
    return presets.size() == 1 ? "preset " + presets[0].name
                               : juce::String(static_cast<int>(presets.size())) + " presets";
}
} // namespace

SelectionCommands::SelectionCommands(PluginProcessor& pluginProcessor, PresetLibrary& presetLibrary)
    : processor(pluginProcessor)
    , library(presetLibrary)
{
}

juce::File SelectionCommands::fileOf(const PresetPlace& preset) const
{
    return presetFileFor(processor.getPaths().banksFolder, preset.folder, preset.name);
}

juce::Array<juce::File> SelectionCommands::filesOf(const Presets& presets) const
{
    juce::Array<juce::File> files;

    for (const auto& preset : presets)
        files.add(fileOf(preset));

    return files;
}

bool SelectionCommands::isCurrent(const PresetPlace& preset) const
{
    return preset == PresetPlace{processor.getFolderName(), processor.getPresetName()};
}

SelectionCommands::Presets SelectionCommands::chosen() const
{
    if (auto selected = library.selectedPlaces(); !selected.empty())
        return selected;

    const PresetPlace current{processor.getFolderName(), processor.getPresetName()};
    return fileOf(current).existsAsFile() ? Presets{current} : Presets();
}

//==============================================================================================================
// The menu

MenuEntries SelectionCommands::menu(const Presets& presets)
{
    presetsOfMenu = presets;
    foldersInMenu = library.getFolderNames();

    if (presets.empty())
        return {{favouriteId, "no preset is chosen", false, false, {}, {}},
                MenuEntry::separator(),
                MenuEntry::command(importId, importText)};

    const auto mark = library.marks.get(presets[0]);
    MenuEntries ratings;

    for (int stars = 0; stars <= highestRating; ++stars)
        ratings.push_back(MenuEntry::command(
            firstRatingId + stars,
            stars == 0 ? juce::String("no rating") : juce::String(stars) + (stars == 1 ? " star" : " stars"),
            stars == mark.rating));

    MenuEntries folders;

    for (int i = 0; i < foldersInMenu.size(); ++i)
        folders.push_back(MenuEntry::command(firstFolderId + i, foldersInMenu[i]));

    return {MenuEntry::command(favouriteId, "favourite", mark.favourite),
            MenuEntry::rows("rate", std::move(ratings)),
            MenuEntry::separator(),
            MenuEntry::rows("move " + titleOf(presets) + " to", std::move(folders)),
            MenuEntry::command(exportArchiveId, "export " + titleOf(presets) + " to an archive"),
            MenuEntry::command(exportFolderId, "export " + titleOf(presets) + " to a folder"),
            MenuEntry::command(importId, importText),
            MenuEntry::separator(),
            MenuEntry::command(removeId, "delete " + titleOf(presets))};
}

void SelectionCommands::menuChosen(int id)
{
    // The commands outlive what they change, which may be this.
    const auto presets = presetsOfMenu;

    if (id == importId)
        return chooseImport(processor);

    if (presets.empty() || id < favouriteId)
        return;

    if (id == favouriteId)
        setFavourite(presets, !library.marks.get(presets[0]).favourite);
    else if (id < removeId)
        rate(presets, id - firstRatingId);
    else if (id == removeId)
        remove(presets);
    else if (id == exportArchiveId)
        exportToArchive(presets);
    else if (id == exportFolderId)
        exportToFolder(presets);
    else if (id - firstFolderId < foldersInMenu.size())
        moveTo(presets, foldersInMenu[id - firstFolderId]);
}

//==============================================================================================================
// Marks and notes

void SelectionCommands::rate(const Presets& presets, int rating)
{
    questions.tellFailure("Could not keep the rating", library.marks.setRating(presets, rating));
    processor.getPresetCommands().refreshLists();
    processor.requestEditorRefresh();
}

void SelectionCommands::setFavourite(const Presets& presets, bool favourite)
{
    questions.tellFailure("Could not keep the favourite", library.marks.setFavourite(presets, favourite));
    processor.requestEditorRefresh();
}

PresetNotes SelectionCommands::notesOf(const PresetPlace& preset) const
{
    juce::MemoryBlock bytes;
    return readWholeFile(fileOf(preset), bytes) ? readPresetNotes(bytes) : PresetNotes();
}

std::optional<juce::MemoryBlock> SelectionCommands::notedFile(const Presets& presets) const
{
    for (const auto& preset : presets)
        if (juce::MemoryBlock bytes; isCurrent(preset) && readWholeFile(fileOf(preset), bytes) &&
                                     processor.getSession().isFileAsNoted(bytes))
            return bytes;

    return {};
}

void SelectionCommands::takeOver(const Presets& presets, const std::optional<juce::MemoryBlock>& noted)
{
    for (const auto& preset : presets)
    {
        juce::MemoryBlock bytes;

        if (!noted || !isCurrent(preset) || !readWholeFile(fileOf(preset), bytes) || bytes == *noted)
            continue;

        // One that is on its way comes as its file is now.
        if (processor.getSoundChange().awaitedReason() == ChangeReason::preset)
        {
            processor.getSoundChange().requestPreset(preset.folder, preset.name);
            continue;
        }

        processor.getSession().noteFile(bytes);
        processor.getOriginalComparison().presetSaved(bytes);
    }

    processor.getPresetCommands().filesChanged();
}

void SelectionCommands::setNotes(const PresetPlace& preset, const PresetNotes& notes)
{
    if (notesOf(preset) == notes)
        return;

    const auto noted = notedFile({preset});
    questions.tellFailure("Could not keep author and comment of preset: " + preset.text(),
                          changeNotes(fileOf(preset), notes));
    takeOver({preset}, noted);
}

//==============================================================================================================
// Categories

CategoryFlags SelectionCommands::commonCategories(const Presets& presets) const
{
    CategoryFlags common{};
    common.fill(presets.empty() ? 0 : 1);

    for (const auto& preset : presets)
    {
        const auto* entry = library.find(preset);

        for (size_t flag = 0; flag < common.size(); ++flag)
            if (entry == nullptr || entry->flags[flag] == 0)
                common[flag] = 0;
    }

    return common;
}

void SelectionCommands::toggleCategory(const Presets& presets, int flag)
{
    if (library.isIndexStale())
        library.rebuildIndex(processor.getPaths().banksFolder);

    const bool allHaveIt = commonCategories(presets)[static_cast<size_t>(flag)] != 0;
    const juce::String word(categoryName(flag));

    if (!questions.confirm(allHaveIt ? "Take " + word + " off " + titleOf(presets) + " ?"
                                     : "Give " + word + " to " + titleOf(presets) + " ?"))
        return;

    const auto noted = notedFile(presets);
    const auto changed = changeCategories(processor.getPaths().banksFolder, presets,
                                          allHaveIt ? CategoryChange::remove : CategoryChange::add, {flag});

    if (questions.tellFailure("Could not change categories", changed) &&
        std::any_of(presets.begin(), presets.end(), [this](const auto& preset) { return isCurrent(preset); }))
    {
        // Not an edit: the file has it, too.
        const int parameter = categoryParameter(flag);
        processor.setParameter(parameter, withCategory(processor.readParameter(parameter), flag, !allHaveIt));
    }

    takeOver(presets, noted);
}

//==============================================================================================================
// Files

void SelectionCommands::remove(const Presets& presets)
{
    if (!questions.confirm("Delete " + titleOf(presets) + " ?"))
        return;

    const juce::WeakReference<PluginProcessor> alive(&processor);
    std::optional<bool> forGood;
    const auto agrees = [&](const juce::String&)
    {
        if (!forGood)
            forGood = questions.confirm("The trash doesn't take " + titleOf(presets) + ". Delete for good ?");

        return *forGood;
    };
    const auto shown = library.getPresetNames();
    Presets gone;

    for (const auto& preset : presets)
    {
        const auto [outcome, reason] = discardFile(fileOf(preset), agrees);

        if (alive == nullptr)
            return;

        if (outcome == Discarded::Outcome::failed)
            questions.tell("Could not delete preset: " + preset.text() + " (" + reason + ")");
        else if (outcome == Discarded::Outcome::gone)
            gone.push_back(preset);
    }

    for (const auto& preset : gone)
        questions.tellFailure("Could not forget the rating of " + preset.text(),
                              library.marks.presetGone(preset));

    processor.getPresetCommands().presetsDeleted(gone, shown);
}

void SelectionCommands::move(const PresetPlace& preset, const juce::String& folder)
{
    const PresetPlace to{folder, preset.name};
    const bool wasCurrent = isCurrent(preset);
    const auto noted = notedFile({preset});
    const auto moved = renamePreset(fileOf(preset), fileOf(to), to);

    if (!questions.tellFailure("Could not move preset: " + preset.text(), moved))
        return;

    questions.tellFailure("Could not keep the rating of " + preset.text(),
                          library.marks.presetMoved(preset, to));

    if (library.clipboardFolderName == preset.folder && library.clipboardPresetName == preset.name)
        library.clipboardFolderName = folder;

    processor.getUndo().presetMoved(preset, folder);

    if (wasCurrent)
    {
        processor.getPresetStorage().presetMoved(folder);
        takeOver({to}, noted);
    }
}

void SelectionCommands::moveTo(const Presets& presets, const juce::String& folder)
{
    if (questions.tellFailure("Nothing was moved",
                              checkMove(processor.getPaths().banksFolder, presets, folder)))
        for (const auto& preset : presets)
            if (preset.folder != folder)
                move(preset, folder);

    library.clearSelection();
    processor.getPresetCommands().filesChanged();
}

void SelectionCommands::exportToArchive(const Presets& presets)
{
    const auto documents = juce::File::getSpecialLocation(juce::File::userDocumentsDirectory);
    const auto name = presets.size() == 1 ? presets[0].name : presets[0].folder;
    auto chosenFile = questions.chooseToWrite("Please select archive to write...",
                                              childNamed(documents, name + archiveEnding), "*.zip");

    if (!chosenFile)
        return;

    if (!chosenFile->hasFileExtension(archiveEnding))
    {
        *chosenFile = chosenFile->getSiblingFile(chosenFile->getFileName() + archiveEnding);

        // The user has not been asked about the file of that name.
        if (chosenFile->exists() &&
            !questions.confirm(chosenFile->getFileName() + " already exists. Replace ?"))
            return;
    }

    // Presets of several folders lie in one that is called like the archive.
    const bool isOneFolder =
        std::all_of(presets.begin(), presets.end(),
                    [&](const auto& preset) { return preset.folder == presets[0].folder; });
    const auto folder = isOneFolder ? presets[0].folder : chosenFile->getFileNameWithoutExtension();
    questions.tellFailure("Could not export " + titleOf(presets),
                          exportPresets(filesOf(presets), folder, *chosenFile));
}

void SelectionCommands::exportToFolder(const Presets& presets)
{
    const auto folder =
        questions.chooseFolder("Please select folder to export to...",
                               juce::File::getSpecialLocation(juce::File::userDocumentsDirectory));

    if (!folder)
        return;

    std::set<juce::String> names;

    for (const auto& file : filesOf(presets))
    {
        if (childNamed(*folder, file.getFileName()).exists())
            return questions.tell(file.getFileName() + " already exists in " + folder->getFullPathName() +
                                  ". Nothing was exported.");

        if (!names.insert(file.getFileName().toLowerCase()).second)
            return questions.tell("Two of the presets are called " + file.getFileNameWithoutExtension() +
                                  ". Nothing was exported.");
    }

    for (const auto& file : filesOf(presets))
        if (!questions.tellFailure("Could not export " + file.getFileName(),
                                   copyFile(file, childNamed(*folder, file.getFileName()))))
            break;

    processor.getPresetCommands().filesChanged();
}

} // namespace quorel
