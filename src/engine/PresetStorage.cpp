// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PresetStorage.h"

#include "engine/PluginProcessor.h"
#include "engine/PresetQuestions.h"
#include "parameters/ParameterText.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/PresetNotes.h"
#include "presets/StoredNames.h"

namespace quorel
{

PresetStorage::PresetStorage(PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
{
}

bool PresetStorage::save(const juce::String& name, bool overwrite)
{
    return saveAs(processor.getFolderName(), name.isNotEmpty() ? name : processor.getPresetName(), overwrite);
}

bool PresetStorage::saveAs(const juce::String& folder, const juce::String& name, bool overwrite)
{
    // Until it plays, a project's sound has the names of the one before it.
    if (processor.getSoundChange().awaitedReason() == ChangeReason::project)
    {
        processor.userInteraction().alert({}, "The project is still being opened. Nothing was saved.");
        return false;
    }

    const auto file = presetFileFor(processor.getPaths().banksFolder, folder, name);

    if (file.existsAsFile() && !overwrite &&
        !PresetQuestions(processor).confirm("preset " + name + " already exists. Replace ?"))
        return false;

    juce::MemoryBlock bytes;
    processor.getStateInformation(bytes);
    const bool isNew = folder != processor.getFolderName() || name != processor.getPresetName();

    if (isNew)
    {
        storePresetName(bytes, name);
        storeFolderName(bytes, folder);
    }

    // Author and comment stand in the file alone.
    if (juce::MemoryBlock present;
        readWholeFile(presetFileFor(processor.getPaths().banksFolder, processor.getFolderName(),
                                    processor.getPresetName()),
                      present))
        storePresetNotes(bytes, readPresetNotes(present));

    if (const auto written = replaceFile(file, bytes); written.failed())
    {
        // "Presert" is what the user has always been shown.
        processor.userInteraction().alert({}, "Could not save Presert file: " + folder + "/" + name + " (" +
                                                  written.getErrorMessage() + ")");
        return false;
    }

    if (isNew)
    {
        takePresetName(name);
        takeFolderName(folder);
    }

    processor.getSession().noteFile(bytes);
    processor.getSession().markSaved();
    processor.getOriginalComparison().presetSaved(bytes);
    processor.getUndo().saved();
    processor.getPresetCommands().filesChanged();
    return true;
}

juce::Result PresetStorage::rename(const juce::String& name)
{
    auto& session = processor.getSession();
    const auto folder = session.getFolderName();
    const auto& banks = processor.getPaths().banksFolder;
    const auto file = presetFileFor(banks, folder, session.getPresetName());
    const auto renamed = presetFileFor(banks, folder, name);
    juce::MemoryBlock bytes;

    if (!readWholeFile(file, bytes))
        return juce::Result::fail("the file can't be read");

    if (const auto moved = moveFile(file, renamed); moved.failed())
        return moved;

    // Between these two steps the file has its new name with the old one inside, which is as good a preset.
    const bool isAsNoted = session.isFileAsNoted(bytes);

    if (storePresetName(bytes, name))
        if (const auto written = replaceFile(renamed, bytes); written.failed() && moveFile(renamed, file))
            return written;

    // What another program has written meanwhile still has to be asked about.
    if (isAsNoted)
        session.noteFile(bytes);

    processor.getUndo().presetRenamed(folder, session.getPresetName(), name);
    takePresetName(name);
    processor.getOriginalComparison().presetRenamed(name);
    processor.getPresetCommands().filesChanged();
    return juce::Result::ok();
}

void PresetStorage::folderRenamed(const juce::String& name)
{
    processor.getUndo().folderRenamed(processor.getFolderName(), name);
    presetMoved(name);
}

void PresetStorage::presetMoved(const juce::String& folder)
{
    takeFolderName(folder);
    processor.getOriginalComparison().folderRenamed(folder);
}

void PresetStorage::takePresetName(const juce::String& name)
{
    processor.setNames(name, processor.getFolderName());
    writeParamText(processor, slot::presetNameText, name, slot::nameTextLength);
}

void PresetStorage::takeFolderName(const juce::String& name)
{
    processor.setNames(processor.getPresetName(), name);
    writeParamText(processor, slot::folderNameText, name, slot::nameTextLength);
}

juce::Result PresetStorage::createEmpty(const juce::String& name)
{
    const auto folder = processor.getFolderName();
    juce::MemoryBlock bytes;
    processor.getStateInformation(bytes);

    // The sound that plays is given up only once there is room for a file of its size.
    if (const auto written =
            replaceFile(presetFileFor(processor.getPaths().banksFolder, folder, name), bytes);
        written.failed())
        return written;

    processor.getUndo().beforeSoundChange("new preset");
    processor.setNames(name, folder);
    processor.getSoundChange().makeEmpty();
    save({}, true);
    processor.resetNames();

    // The manager's page stays; from every other one the multi-controls come to the front.
    auto& editor = processor.getEditorRequests();

    if (editor.getPage() != Page::presetManager)
        editor.setPage(Page::multiControls);

    editor.bringPageBack();
    return juce::Result::ok();
}

void PresetStorage::createDefault()
{
    const auto& banks = processor.getPaths().banksFolder;

    if (banks == juce::File() || !createFolder(banks))
        return;

    const auto file = presetFileFor(banks, defaultFolderName, defaultPresetName);

    if (file.existsAsFile() || !createFolder(file.getParentDirectory()))
        return;

    processor.resetAllParameters();
    save({}, true);
    // Nobody has chosen it: saving another sound over it is to be asked about.
    processor.getSession().forgetFile();
}

} // namespace quorel
