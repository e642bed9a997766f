// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that change files, with their questions.
#include "engine/PluginProcessor.h"
#include "engine/PresetCommands.h"
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/PresetNames.h"

namespace quorel
{

namespace
{
constexpr const char* filePattern = "*.qrl";

bool isThere(const juce::File& file)
{
    return file != juce::File() && (file.exists() || file.isSymbolicLink());
}

juce::String existsText(const char* kind, const juce::String& name)
{
    return kind + name + " already exists. Please select another name";
}

/** Name of a chosen preset file: a typed name may lack the ending, and contain dots of its own. */
juce::String presetNameOf(const juce::File& file)
{
    const auto name = file.getFileName();
    const juce::String ending(presetFileEnding);
    return name.endsWith(ending) ? name.dropLastCharacters(ending.length()) : name;
}
} // namespace

juce::File PresetCommands::currentFolder() const
{
    return childNamed(banksFolder(), processor.getFolderName());
}

juce::File PresetCommands::currentFile() const
{
    return presetFileFor(banksFolder(), processor.getFolderName(), processor.getPresetName());
}

void PresetCommands::filesChanged()
{
    library.markIndexStale();
    refreshLists();
    processor.requestEditorRefresh();
}

void PresetCommands::tell(const juce::String& text)
{
    processor.userInteraction().alert({}, text);
}

std::optional<juce::String> PresetCommands::askName(const juce::String& title, const juce::String& prompt,
                                                    const juce::String& current)
{
    const juce::WeakReference<PluginProcessor> alive(&processor);
    const auto folder = processor.getFolderName();
    const auto preset = processor.getPresetName();
    const auto text = processor.userInteraction().askText(title, prompt, current);

    // The host may have closed the plug-in behind the open question, or restored a project.
    if (alive == nullptr || isBusy() || processor.getFolderName() != folder ||
        processor.getPresetName() != preset)
        return {};

    return text;
}

std::optional<bool> PresetCommands::confirm(const juce::String& question)
{
    const juce::WeakReference<PluginProcessor> alive(&processor);
    const auto folder = processor.getFolderName();
    const auto preset = processor.getPresetName();
    const bool answer = processor.userInteraction().confirm({}, question);

    if (alive == nullptr || isBusy() || processor.getFolderName() != folder ||
        processor.getPresetName() != preset)
        return {};

    return answer;
}

bool PresetCommands::discard(const juce::File& file, const juce::String& failureText)
{
    const auto [outcome, reason] =
        discardFile(file, [this](const juce::String& question) { return confirm(question).value_or(false); });

    if (outcome == Discarded::Outcome::failed)
        tell(failureText + " (" + reason + ")");

    return outcome == Discarded::Outcome::gone;
}

//==============================================================================================================
// Folders

void PresetCommands::newFolder()
{
    if (isBusy())
        return;

    const auto typed = askName("Create new Folder", "Enter new folder name:", {});

    if (!typed || typed->isEmpty())
        return;

    const auto name = cleanTypedName(*typed);
    const auto folder = childNamed(banksFolder(), name);

    if (isThere(folder))
        tell(existsText("Folder ", name));
    else if (folder == juce::File() || folder.createDirectory().failed())
        tell("Could not create folder: " + name);
    else
        processor.setNames(processor.getPresetName(), name);

    filesChanged();
}

void PresetCommands::renameFolder()
{
    if (isBusy())
        return;

    const auto oldName = processor.getFolderName();
    const auto typed = askName("Rename folder", "Enter new name for " + oldName + " folder:", {});

    if (!typed || typed->isEmpty())
        return;

    const auto name = cleanTypedName(*typed);
    const auto folder = childNamed(banksFolder(), name);
    const auto oldFolder = currentFolder();

    if (isThere(folder))
    {
        tell(existsText("Folder ", name));
    }
    else if (isThere(oldFolder))
    {
        if (moveFile(oldFolder, folder))
        {
            processor.setNames(processor.getPresetName(), name);

            if (library.clipboardFolderName == oldName)
                library.clipboardFolderName = name;
        }
        else
        {
            tell("Could not rename folder: " + oldName);
        }
    }

    filesChanged();
}

void PresetCommands::deleteFolder()
{
    if (isBusy())
        return;

    const auto name = processor.getFolderName();

    if (!confirm("Delete folder " + name + " ?").value_or(false))
        return;

    if (const auto folder = currentFolder(); isThere(folder))
    {
        if (!discard(folder, "Could not delete folder: " + name))
            return;

        if (const auto folders = listPresetFolders(banksFolder()); !folders.isEmpty())
            processor.setNames(listPresets(childNamed(banksFolder(), folders[0]))[0], folders[0]);
    }

    filesChanged();
}

//==============================================================================================================
// Presets

void PresetCommands::newPreset()
{
    if (isBusy())
        return;

    const auto typed = askName("Create new empty preset", "Enter new preset name:", {});

    if (!typed)
        return;

    if (typed->isEmpty())
    {
        filesChanged();
        return;
    }

    const auto name = cleanPresetName(*typed);
    const auto folder = processor.getFolderName();
    const auto file = presetFileFor(banksFolder(), folder, name);

    if (isThere(file))
        tell(existsText("Preset ", name));
    else if (!processor.getPresetStorage().createEmpty(name))
        tell("Could not save Presert file: " + folder + "/" + name);

    filesChanged();
}

void PresetCommands::renamePreset()
{
    if (isBusy())
        return;

    const auto oldName = processor.getPresetName();
    const auto typed = askName("Rename preset", "Enter new name for:   " + oldName, oldName);

    if (!typed || typed->isEmpty())
        return;

    const auto folder = processor.getFolderName();
    const auto name = cleanTypedName(*typed);
    const auto file = presetFileFor(banksFolder(), folder, name);
    const auto oldFile = currentFile();

    if (isThere(file))
    {
        tell(existsText("Preset ", name));
    }
    else if (isThere(oldFile))
    {
        if (moveFile(oldFile, file))
        {
            if (library.clipboardFolderName == folder && library.clipboardPresetName == oldName)
                library.clipboardPresetName = name;

            // The names inside the file have to match.
            processor.setNames(name, folder);
            processor.resetNames();
            processor.getPresetStorage().save(name, true);
        }
        else
        {
            tell("Could not rename preset: " + oldName);
        }
    }

    filesChanged();
}

void PresetCommands::deletePreset()
{
    if (isBusy())
        return;

    const auto name = processor.getPresetName();

    if (!confirm("Delete preset   " + name + " ?").value_or(false))
        return;

    if (const auto file = currentFile(); isThere(file))
    {
        if (!discard(file, "Could not delete preset: " + name))
            return;

        const auto folder = processor.getFolderName();
        const auto presets = listPresets(currentFolder());
        processor.setNames({}, folder);

        if (presets.isEmpty())
            processor.getLayers().unload();
        else
            load(folder, presets[0]);
    }

    filesChanged();
}

void PresetCommands::copyPreset()
{
    if (isBusy())
        return;

    processor.getStateInformation(library.clipboardState);
    library.clipboardPresetName = processor.getPresetName();
    library.clipboardFolderName = processor.getFolderName();
}

void PresetCommands::pastePreset()
{
    const auto& copied = library.clipboardPresetName;

    if (isBusy() || copied.isEmpty() || library.clipboardFolderName.isEmpty())
        return;

    const auto folder = processor.getFolderName();
    const auto name = copied + "_copy";
    const auto source = presetFileFor(banksFolder(), library.clipboardFolderName, copied);
    auto stopOver = presetFileFor(banksFolder(), defaultFolderName, copied);
    bool copyMade = false;

    if (source.existsAsFile() && source != stopOver)
    {
        // There may be another preset of that name.
        if (isThere(stopOver))
            stopOver = stopOver.getSiblingFile(".quorel-paste.tmp");

        juce::MemoryBlock bytes;
        copyMade = readWholeFile(source, bytes) && replaceFile(stopOver, bytes);
    }

    if (stopOver.existsAsFile() && moveFile(stopOver, presetFileFor(banksFolder(), folder, name)))
    {
        load(folder, name);
    }
    else
    {
        if (copyMade)
            stopOver.deleteFile();

        tell("Could not paste preset: " + copied);
    }

    filesChanged();
}

void PresetCommands::loadPreset()
{
    if (isBusy())
        return;

    const juce::WeakReference<PluginProcessor> alive(&processor);
    const auto chosen = processor.userInteraction().chooseFileToOpen("Please select preset to load...",
                                                                     currentFolder(), filePattern);

    if (alive != nullptr && chosen != juce::File())
        selectPresetByName(presetNameOf(chosen));
}

void PresetCommands::savePreset()
{
    if (isBusy())
        return;

    const juce::WeakReference<PluginProcessor> alive(&processor);
    const auto suggested = isThere(currentFile()) ? currentFile() : currentFolder();
    const auto chosen = processor.userInteraction().chooseFileToSave(
        "Please select preset filename to save...", suggested, filePattern);

    if (alive == nullptr || chosen == juce::File() || isBusy())
        return;

    const auto oldPreset = processor.getPresetName();
    const auto oldFolder = processor.getFolderName();
    const auto name = presetNameOf(chosen);
    const auto folder = chosen.getParentDirectory().getFileName();
    // The user has agreed to replace the chosen file, and no other.
    const bool agreed = presetFileFor(banksFolder(), folder, name) == chosen;
    processor.setNames(oldPreset, folder);
    const bool saved = processor.getPresetStorage().save(name, agreed);

    if (alive == nullptr)
        return;

    if (!saved)
        processor.setNames(oldPreset, oldFolder);

    filesChanged();
}

} // namespace quorel
