// SPDX-License-Identifier: GPL-3.0-or-later
#include "PresetEditing.h"

#include "ParameterReport.h"

#include "parameters/Categories.h"
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/PresetNames.h"

namespace quorel
{

namespace
{
juce::Result write(const juce::File& file, const PresetDocument& document)
{
    const auto result = replaceFile(file, document.bytes());
    return result.wasOk() ? result
                          : juce::Result::fail("cannot write " + file.getFullPathName() + " (" +
                                               result.getErrorMessage() + ")");
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

juce::Result changeCategories(const juce::File& file, CategoryChange change, const std::vector<int>& flags,
                              juce::StringArray& words)
{
    PresetDocument document;
    if (const auto result = PresetDocument::open(file, document); result.failed())
        return result;
    const auto before = document.bytes();
    if (change == CategoryChange::set)
        for (int i = 0; i < numCategoryParameters; ++i)
            document.writeParameter(firstCategoryParameter + i, 0.0f);
    for (const int flag : flags)
    {
        const int index = categoryParameter(flag);
        document.writeParameter(
            index, withCategory(document.readParameter(index), flag, change != CategoryChange::remove));
    }
    words = categoryWords(document.chunk());
    return document.bytes() == before ? juce::Result::ok() : write(file, document);
}

} // namespace quorel
