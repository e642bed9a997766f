// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PresetStorage.h"

#include "engine/PluginProcessor.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"

namespace quorel
{

PresetStorage::PresetStorage(PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
{
}

bool PresetStorage::save(const juce::String& name, bool overwrite)
{
    auto& session = processor.getSession();
    const auto preset = name.isNotEmpty() ? name : session.getPresetName();
    const auto folder = session.getFolderName();
    const auto file = presetFileFor(processor.getPaths().banksFolder, folder, preset);

    if (file.existsAsFile() && !overwrite)
    {
        const juce::WeakReference<PluginProcessor> alive(&processor);

        if (!processor.userInteraction().confirm({}, "preset " + preset + " already exists. Replace ?") ||
            alive == nullptr)
            return false;
    }

    const auto oldName = session.getPresetName();
    session.setNames(preset, folder);
    juce::MemoryBlock bytes;
    processor.getStateInformation(bytes);

    if (!replaceFile(file, bytes))
    {
        session.setNames(oldName, folder);
        // "Presert" is what the user has always been shown.
        processor.userInteraction().alert({}, "Could not save Presert file: " + folder + "/" + preset);
        return false;
    }

    session.markSaved();
    processor.getOriginalComparison().presetSaved(bytes);
    processor.getPresetLibrary().markIndexStale();
    processor.getPresetCommands().refreshLists();
    processor.requestEditorRefresh();
    return true;
}

bool PresetStorage::createEmpty(const juce::String& name)
{
    const auto folder = processor.getFolderName();
    juce::MemoryBlock bytes;
    processor.getStateInformation(bytes);

    // The sound that plays is given up only once there is room for a file of its size.
    if (!replaceFile(presetFileFor(processor.getPaths().banksFolder, folder, name), bytes))
        return false;

    processor.setNames(name, folder);
    processor.getSoundChange().makeEmpty();
    save({}, true);
    processor.resetNames();

    // The manager's page stays; from every other one the multi-controls come to the front.
    auto& editor = processor.getEditorRequests();

    if (editor.getPage() != Page::presetManager)
        editor.setPage(Page::multiControls);

    editor.bringPageBack();
    return true;
}

void PresetStorage::createDefault()
{
    const auto& banks = processor.getPaths().banksFolder;

    if (banks == juce::File() || !banks.createDirectory())
        return;

    const auto file = presetFileFor(banks, defaultFolderName, defaultPresetName);

    if (file.existsAsFile() || !file.getParentDirectory().createDirectory())
        return;

    processor.resetAllParameters();
    save({}, true);
}

} // namespace quorel
