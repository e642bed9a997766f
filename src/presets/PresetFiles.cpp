// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetFiles.h"

#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/Leftovers.h"

#include <filesystem>
#include <functional>

namespace quorel
{

namespace
{
namespace fs = std::filesystem;

/** Calls `take` with the name of each entry that `wanted` accepts. Links count as what they lead to; those
    that lead nowhere, or round in a circle, don't count. */
void forEachEntry(const juce::File& folder, bool (*wanted)(const fs::directory_entry&),
                  const std::function<void(const juce::String&)>& take)
{
    if (folder == juce::File())
        return;

    removeLeftovers(folder);
    std::error_code error;

    for (fs::directory_iterator entry(pathOf(folder), error), end; !error && entry != end;
         entry.increment(error))
    {
        const auto name = textOf(entry->path().filename());

        if (name.isNotEmpty() && !name.startsWithChar('.') && wanted(*entry))
            take(name);
    }
}

bool isFolder(const fs::directory_entry& entry)
{
    std::error_code error;
    return entry.is_directory(error);
}

bool isRegularFile(const fs::directory_entry& entry)
{
    std::error_code error;
    return entry.is_regular_file(error);
}
} // namespace

juce::StringArray listPresetFolders(const juce::File& banksFolder)
{
    juce::StringArray names;
    forEachEntry(banksFolder, isFolder, [&names](const juce::String& name) { names.add(name); });
    names.sort(false);
    return names;
}

juce::StringArray listPresets(const juce::File& folder)
{
    juce::StringArray names;
    const juce::String ending(presetFileEnding);
    forEachEntry(folder, isRegularFile,
                 [&](const juce::String& name)
                 {
                     if (name.endsWith(ending))
                         names.add(name.dropLastCharacters(ending.length()));
                 });
    names.sort(false);
    return names;
}

juce::File findPresetFile(const juce::File& banksFolder, const juce::String& folderName,
                          const juce::String& presetName)
{
    const bool listed = listPresetFolders(banksFolder).contains(folderName) &&
                        listPresets(childNamed(banksFolder, folderName)).contains(presetName);
    return listed ? presetFileFor(banksFolder, folderName, presetName) : juce::File();
}

juce::String folderHolding(const juce::File& banksFolder, const juce::File& file)
{
    const auto place = file.getParentDirectory();

    // Choosers may give the path behind a link.
    for (const auto& name : listPresetFolders(banksFolder))
    {
        const auto folder = childNamed(banksFolder, name);
        std::error_code error;

        if (folder == place || fs::equivalent(pathOf(folder), pathOf(place), error))
            return name;
    }

    return {};
}

juce::File presetFileFor(const juce::File& banksFolder, const juce::String& folderName,
                         const juce::String& presetName)
{
    if (presetName.isEmpty())
        return {};

    return childNamed(childNamed(banksFolder, folderName), presetName + presetFileEnding);
}

} // namespace quorel
