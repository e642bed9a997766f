// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that change files, with their questions.
#include "engine/PluginProcessor.h"
#include "engine/PresetCommands.h"
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/PresetNames.h"
#include "presets/StoredNames.h"

#include <algorithm>

namespace quorel
{

namespace
{
bool isThere(const juce::File& file)
{
    return file != juce::File() && (file.exists() || file.isSymbolicLink());
}

/** True where something else than `own` lies at a place. Where the case of letters doesn't count, it can be
    changed. */
bool isTaken(const juce::File& place, const juce::File& own)
{
    return isThere(place) && (place != own || place.getFileName() == own.getFileName());
}

juce::String existsText(const char* kind, const juce::String& name)
{
    return kind + name + " already exists. Please select another name";
}

juce::String failureText(const juce::String& what, const juce::Result& result)
{
    // Windows ends its words with a new line.
    return what + " (" + result.getErrorMessage().trim() + ")";
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

/** False, and the user is told, where the current folder is gone. */
bool PresetCommands::hasFolder(const char* whatWasNotDone)
{
    if (currentFolder().isDirectory())
        return true;

    questions.tell("Folder " + processor.getFolderName() + " isn't there. Nothing was " + whatWasNotDone +
                   ".");
    filesChanged();
    return false;
}

/** False, and the user is told, where the current preset has no file. */
bool PresetCommands::hasFile(const char* whatWasNotDone)
{
    if (isThere(currentFile()))
        return true;

    const auto name = processor.getPresetName();
    questions.tell((name.isEmpty()
                        ? juce::String("No preset is chosen.")
                        : "There is no file of preset " + processor.getFolderName() + "/" + name + ".") +
                   " Nothing was " + whatWasNotDone + ".");
    filesChanged();
    return false;
}

/** A preset that is on its way comes under the names that it was asked for by: after a change of names it is
    asked for anew. */
void PresetCommands::askAgainForAwaited()
{
    if (processor.getSoundChange().awaitedReason() == ChangeReason::preset)
        load(processor.getFolderName(), processor.getPresetName());
}

juce::String PresetCommands::outsideText(const char* whatWasNotDone) const
{
    return "Presets lie in the folders of " + banksFolder().getFullPathName() + ". Nothing was " +
           whatWasNotDone + ".";
}

bool PresetCommands::discard(const juce::File& file, const juce::String& whatFailed)
{
    const auto [outcome, reason] =
        discardFile(file, [this](const juce::String& question) { return questions.confirm(question); });

    if (outcome == Discarded::Outcome::failed)
        questions.tell(failureText(whatFailed, juce::Result::fail(reason)));

    return outcome == Discarded::Outcome::gone;
}

//==============================================================================================================
// Folders

void PresetCommands::newFolder()
{
    const auto typed = questions.askName("Create new Folder", "Enter new folder name:", {});

    if (!typed)
        return;

    const auto name = cleanTypedName(*typed);
    const auto folder = childNamed(banksFolder(), name);

    if (isThere(folder))
        questions.tell(existsText("Folder ", name));
    else if (const auto made = createFolder(folder); made.failed())
        questions.tell(failureText("Could not create folder: " + name, made));
    else
        processor.setNames(processor.getPresetName(), name);

    filesChanged();
}

void PresetCommands::renameFolder()
{
    if (!hasFolder("renamed"))
        return;

    const auto oldName = processor.getFolderName();
    const auto typed = questions.askName("Rename folder", "Enter new name for " + oldName + " folder:", {});

    if (!typed)
        return;

    const auto name = cleanTypedName(*typed);
    const auto folder = childNamed(banksFolder(), name);

    if (isTaken(folder, currentFolder()))
    {
        questions.tell(existsText("Folder ", name));
    }
    else if (const auto moved = moveFile(currentFolder(), folder); moved.failed())
    {
        questions.tell(failureText("Could not rename folder: " + oldName, moved));
    }
    else
    {
        processor.getPresetStorage().folderRenamed(name);
        questions.tellFailure("Could not keep the ratings of folder " + name,
                              library.marks.folderMoved(oldName, name));

        if (library.clipboardFolderName == oldName)
            library.clipboardFolderName = name;

        askAgainForAwaited();
    }

    filesChanged();
}

void PresetCommands::deleteFolder()
{
    if (!hasFolder("deleted"))
        return;

    const auto name = processor.getFolderName();

    if (!questions.confirm("Delete folder " + name + " ?"))
        return;

    if (!discard(currentFolder(), "Could not delete folder: " + name))
        return;

    questions.tellFailure("Could not forget the ratings of folder " + name, library.marks.folderGone(name));

    if (const auto folders = listPresetFolders(banksFolder()); !folders.isEmpty())
    {
        processor.setNames(listPresets(childNamed(banksFolder(), folders[0]))[0], folders[0]);
        // What plays is still the deleted preset: saving it over the one that is named now is to be asked.
        processor.getSession().forgetFile();
    }

    filesChanged();
}

//==============================================================================================================
// Presets

void PresetCommands::newPreset()
{
    const auto typed = questions.askName("Create new empty preset", "Enter new preset name:", {});

    if (!typed)
        return;

    const auto name = cleanPresetName(*typed);
    const auto folder = processor.getFolderName();
    const auto file = presetFileFor(banksFolder(), folder, name);

    if (isThere(file))
        questions.tell(existsText("Preset ", name));
    else if (const auto made = processor.getPresetStorage().createEmpty(name); made.failed())
        questions.tell(failureText("Could not save Presert file: " + folder + "/" + name, made));

    filesChanged();
}

void PresetCommands::renamePreset()
{
    if (!hasFile("renamed"))
        return;

    const auto oldName = processor.getPresetName();
    const auto typed = questions.askName("Rename preset", "Enter new name for:   " + oldName, oldName);

    if (!typed)
        return;

    const auto folder = processor.getFolderName();
    const auto name = cleanTypedName(*typed);

    if (isTaken(presetFileFor(banksFolder(), folder, name), currentFile()))
    {
        questions.tell(existsText("Preset ", name));
    }
    else if (const auto renamed = processor.getPresetStorage().rename(name); renamed.failed())
    {
        questions.tell(failureText("Could not rename preset: " + oldName, renamed));
    }
    else
    {
        questions.tellFailure("Could not keep the rating of " + name,
                              library.marks.presetMoved({folder, oldName}, {folder, name}));

        if (library.clipboardFolderName == folder && library.clipboardPresetName == oldName)
            library.clipboardPresetName = name;

        askAgainForAwaited();
    }

    filesChanged();
}

void PresetCommands::deletePreset()
{
    if (!hasFile("deleted"))
        return;

    refreshLists();
    const auto folder = processor.getFolderName();
    const auto name = processor.getPresetName();

    if (!questions.confirm("Delete preset   " + name + " ?"))
        return;

    const auto shown = library.getPresetNames();

    if (!discard(currentFile(), "Could not delete preset: " + name))
        return;

    questions.tellFailure("Could not forget the rating of " + name, library.marks.presetGone({folder, name}));
    presetsDeleted({{folder, name}}, shown);
}

void PresetCommands::presetsDeleted(const std::vector<PresetPlace>& gone, const juce::StringArray& shown)
{
    const auto folder = processor.getFolderName();
    const int index = shown.indexOf(processor.getPresetName());
    const auto isGone = [&](const juce::String& name) {
        return std::find(gone.begin(), gone.end(), PresetPlace{folder, name}) != gone.end();
    };

    if (isGone(processor.getPresetName()))
    {
        // Behind the last comes the one before.
        int next = index + 1;

        while (next < shown.size() && isGone(shown[next]))
            ++next;

        if (next >= shown.size())
            for (next = index - 1; next >= 0 && isGone(shown[next]);)
                --next;

        goOnWith(folder, shown[next]);
    }

    library.clearSelection();
    filesChanged();
}

void PresetCommands::goOnWith(const juce::String& folder, const juce::String& neighbour)
{
    if (neighbour.isNotEmpty())
    {
        load(folder, neighbour);
        return;
    }

    processor.getUndo().beforeSoundChange("delete preset");
    processor.setNames({}, folder);
    processor.getSession().forgetFile();

    // The deleted preset may still be on its way.
    if (processor.getSoundChange().awaitedReason())
        processor.getSoundChange().makeEmpty();
    else
        processor.getLayers().unload();
}

void PresetCommands::copyPreset()
{
    if (processor.getPresetName().isEmpty())
        return questions.tell("No preset is chosen. Nothing was copied.");

    processor.getStateInformation(library.clipboardState);
    library.clipboardPresetName = processor.getPresetName();
    library.clipboardFolderName = processor.getFolderName();
}

juce::String PresetCommands::freeCopyName(const juce::String& copied) const
{
    const auto first = copied + "_copy";
    auto name = first;

    for (int n = 2; isThere(presetFileFor(banksFolder(), processor.getFolderName(), name)); ++n)
        name = first + " " + juce::String(n);

    return name;
}

void PresetCommands::pastePreset()
{
    const auto copied = library.clipboardPresetName;

    if (copied.isEmpty())
        return questions.tell("Nothing has been copied yet. Nothing was pasted.");

    if (!hasFolder("pasted"))
        return;

    const auto folder = processor.getFolderName();
    const auto name = freeCopyName(copied);
    const auto source = presetFileFor(banksFolder(), library.clipboardFolderName, copied);
    juce::MemoryBlock bytes = library.clipboardState;

    // Where the file has gone since, the sound is still what was copied.
    const bool isRead = !isThere(source) || readWholeFile(source, bytes);
    storePresetName(bytes, name);
    storeFolderName(bytes, folder);
    const auto pasted = isRead ? replaceFile(presetFileFor(banksFolder(), folder, name), bytes)
                               : juce::Result::fail("the file can't be read");

    if (pasted.wasOk())
        load(folder, name);
    else
        questions.tell(failureText("Could not paste preset: " + copied, pasted));

    filesChanged();
}

void PresetCommands::loadPreset()
{
    const auto chosen =
        questions.chooseToLoad(currentFolder().isDirectory() ? currentFolder() : banksFolder());

    if (!chosen)
        return;

    if (const auto folder = folderHolding(banksFolder(), *chosen); folder.isNotEmpty())
        load(folder, presetNameOf(*chosen));
    else
        questions.tell(outsideText("loaded"));
}

/** Asks before a file is replaced that holds another sound than was read or written here. */
bool PresetCommands::mayReplaceCurrentFile()
{
    const auto& session = processor.getSession();
    juce::MemoryBlock onDisk;

    if (!isThere(currentFile()) || (readWholeFile(currentFile(), onDisk) && session.isFileAsNoted(onDisk)))
        return true;

    juce::MemoryBlock playing;
    processor.getStateInformation(playing);
    const auto name = processor.getPresetName();
    return holdSameSound(onDisk, playing) ||
           questions.confirm(session.knowsFile()
                                 ? "Preset " + name + " has been changed elsewhere meanwhile. Replace it ?"
                                 : "Preset " + name + " holds another sound. Replace it ?");
}

void PresetCommands::savePreset()
{
    if (!isThere(currentFile()))
        return savePresetAs();

    if (!mayReplaceCurrentFile())
        return;

    processor.getPresetStorage().save({}, true);
}

void PresetCommands::savePresetAs()
{
    const auto start = currentFolder().isDirectory() ? currentFolder() : banksFolder();
    const auto chosen = questions.chooseToSave(isThere(currentFile()) ? currentFile() : start);

    if (!chosen)
        return;

    const auto folder = folderHolding(banksFolder(), *chosen);
    const auto name = presetNameOf(*chosen);

    if (folder.isEmpty())
        return questions.tell(outsideText("saved"));

    if (name.startsWithChar('.'))
        return questions.tell("A preset's name can't begin with a dot. Nothing was saved.");

    const bool isCurrent = folder == processor.getFolderName() && name == processor.getPresetName();

    if (isCurrent && !mayReplaceCurrentFile())
        return;

    // The user has agreed to replace the chosen file, and no other.
    const bool isAgreed = isCurrent || chosen->getFileName() == name + presetFileEnding;

    processor.getPresetStorage().saveAs(folder, name, isAgreed);
}

} // namespace quorel
