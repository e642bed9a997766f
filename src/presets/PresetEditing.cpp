// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetEditing.h"

#include "parameters/Categories.h"
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/FolderUpdate.h"
#include "presets/PresetFiles.h"
#include "presets/PresetNames.h"

#include <map>

namespace quorel
{

namespace
{
juce::Result cannotWrite(const juce::File& file, const juce::Result& why)
{
    return juce::Result::fail("cannot write " + file.getFullPathName() + " (" + why.getErrorMessage() + ")");
}

juce::Result write(const juce::File& file, const juce::MemoryBlock& bytes)
{
    const auto result = replaceFile(file, bytes);
    return result.wasOk() ? result : cannotWrite(file, result);
}

juce::Result write(const juce::File& file, const PresetDocument& document)
{
    return write(file, document.bytes());
}

/** Files of one folder with their new contents. */
using NewContents = std::map<juce::String, juce::MemoryBlock>;

/** All or none. */
juce::Result writeTogether(const juce::File& folder, const NewContents& files)
{
    if (files.size() == 1)
        return write(childNamed(folder, files.begin()->first), files.begin()->second);

    FolderUpdate update(folder);

    for (const auto& [name, bytes] : files)
        if (const auto added = update.add(name, bytes); added.failed())
            return cannotWrite(childNamed(folder, name), added);

    const auto finished = files.empty() ? juce::Result::ok() : update.finish();
    return finished.wasOk() ? finished : cannotWrite(folder, finished);
}

void apply(CategoryChange change, PresetDocument& document, const std::vector<int>& flags)
{
    if (change == CategoryChange::set)
        for (int i = 0; i < numCategoryParameters; ++i)
            document.writeParameter(firstCategoryParameter + i, 0.0f);

    for (const int flag : flags)
    {
        const int index = categoryParameter(flag);
        const bool on = change != CategoryChange::remove;

        // What stays keeps its bytes, too.
        if (hasCategory(document.readParameter(index), flag) != on)
            document.writeParameter(index, withCategory(document.readParameter(index), flag, on));
    }
}
} // namespace

juce::Result checkTypedName(const juce::String& name, const char* what)
{
    const auto clean = cleanTypedName(name);
    if (clean == name && isPlainName(name))
        return juce::Result::ok();
    return juce::Result::fail(juce::String(what) + " can't be called \"" + name + "\"; \"" + clean +
                              "\" would do");
}

juce::Result findTarget(const juce::File& banksFolder, const PresetPlace& to, const juce::File& source,
                        bool replace, juce::File& target)
{
    const bool folderExists = listPresetFolders(banksFolder).contains(to.folder);
    if (!folderExists)
        if (const auto result = checkTypedName(to.folder, "a folder"); result.failed())
            return result;
    // A name that stays has proved itself.
    if (to.name != source.getFileNameWithoutExtension())
        if (const auto result = checkTypedName(to.name, "a preset"); result.failed())
            return result;

    target = presetFileFor(banksFolder, to.folder, to.name);
    if (target == juce::File())
        return juce::Result::fail("there can be no preset \"" + to.text() + "\"");
    if (target.isDirectory())
        return juce::Result::fail(target.getFullPathName() + " is a folder");
    if (target.exists() && target != source && !replace)
        return juce::Result::fail("there is a preset \"" + to.text() +
                                  "\" already: give --replace to put this one in "
                                  "its place");
    return juce::Result::ok();
}

juce::Result copyPreset(const juce::File& source, const juce::File& target, const PresetPlace& to)
{
    PresetDocument document;
    if (const auto result = PresetDocument::open(source, document); result.failed())
        return result;
    document.setPresetName(to.name);
    document.setFolderName(to.folder);
    return write(target, document);
}

juce::Result renamePreset(const juce::File& source, const juce::File& target, const PresetPlace& to)
{
    PresetDocument document;
    if (const auto result = PresetDocument::open(source, document); result.failed())
        return result;
    document.setPresetName(to.name);
    if (target.getParentDirectory() != source.getParentDirectory())
        document.setFolderName(to.folder);
    // Where letter case doesn't count, the two may be one file.
    const bool isSameFile = target == source || target.getFileIdentifier() == source.getFileIdentifier();
    if (const auto result = write(isSameFile ? source : target, document); result.failed())
        return result;
    const auto result = isSameFile ? moveFile(source, target) : deleteForGood(source);
    return result.wasOk() ? result
                          : juce::Result::fail("cannot remove the old file " + source.getFullPathName() +
                                               " (" + result.getErrorMessage() + ")");
}

juce::Result changeCategories(const juce::File& banksFolder, const std::vector<PresetPlace>& presets,
                              CategoryChange change, const std::vector<int>& flags)
{
    std::map<juce::String, NewContents> byFolder;

    for (const auto& preset : presets)
    {
        const auto file = presetFileFor(banksFolder, preset.folder, preset.name);
        PresetDocument document;

        if (const auto result = PresetDocument::open(file, document); result.failed())
            return result;

        const auto before = document.bytes();
        apply(change, document, flags);

        if (document.bytes() != before)
            byFolder[preset.folder][file.getFileName()] = document.bytes();
    }

    for (const auto& [folder, files] : byFolder)
        if (const auto result = writeTogether(childNamed(banksFolder, folder), files); result.failed())
            return result;

    return juce::Result::ok();
}

juce::Result changeNotes(const juce::File& file, const PresetNotes& notes)
{
    juce::MemoryBlock bytes;

    if (const auto result = readPresetBytes(file, bytes); result.failed())
        return result;

    const auto before = bytes;

    if (!storePresetNotes(bytes, notes))
        return juce::Result::fail(file.getFullPathName() + " is no whole preset");

    return bytes == before ? juce::Result::ok() : write(file, bytes);
}

juce::Result checkMove(const juce::File& banksFolder, const std::vector<PresetPlace>& presets,
                       const juce::String& folder)
{
    juce::StringArray names;

    for (const auto& preset : presets)
        if (preset.folder != folder && (presetFileFor(banksFolder, folder, preset.name).exists() ||
                                        !names.addIfNotAlreadyThere(preset.name)))
            return juce::Result::fail("there is a preset " + preset.name + " in " + folder + " already");

    return juce::Result::ok();
}

juce::Result importPresets(const juce::Array<juce::File>& files, const juce::File& banksFolder,
                           const juce::String& folder, std::vector<PresetPlace>& imported)
{
    NewContents contents;
    std::vector<PresetPlace> places;
    const auto target = childNamed(banksFolder, folder);
    const juce::String ending(presetFileEnding);

    for (const auto& file : files)
    {
        PresetDocument document;

        if (const auto result = PresetDocument::open(file, document); result.failed())
            return result;

        if (const auto problem = document.whatStatesLack(); problem.isNotEmpty())
            return juce::Result::fail(file.getFullPathName() + ": " + problem);

        const auto isTaken = [&](const juce::String& name)
        { return childNamed(target, name + ending).exists() || contents.count(name + ending) > 0; };
        const auto own = file.getFileNameWithoutExtension();
        // What couldn't be listed under its own name gets one that can.
        const auto name =
            freeName(isPlainName(own) && !own.startsWithChar('.') ? own : cleanTypedName(own), isTaken);
        document.setPresetName(name);
        document.setFolderName(folder);
        contents[name + ending] = document.bytes();
        places.push_back({folder, name});
    }

    const auto result = writeTogether(target, contents);

    if (result.wasOk())
        imported = std::move(places);

    return result;
}

juce::String freeName(const juce::String& wanted,
                      const std::function<bool(const juce::String& name)>& isTaken)
{
    auto name = wanted;

    for (int n = 2; isTaken(name); ++n)
        name = wanted + " " + juce::String(n);

    return name;
}

} // namespace quorel
