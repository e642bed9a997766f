// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetFiles.h"

#include "platform/FileNames.h"
#include "platform/Leftovers.h"
#include "platform/PlatformSeamFiles.h"

#include <functional>

namespace quorel
{

namespace
{
/** Calls `take` with the name of each entry of a kind. Links count as what they lead to; those
    that lead nowhere, or round in a circle, don't count. */
void forEachEntry(const juce::File& folder, PathKind wanted,
                  const std::function<void(const juce::String&)>& take)
{
    if (folder == juce::File())
        return;

    removeLeftovers(folder);
    std::error_code error;

    for (const auto& [name, kind] : entriesOf(folder, error))
        if (name.isNotEmpty() && !name.startsWithChar('.') && kind == wanted)
            take(name);
}
} // namespace

juce::StringArray listPresetFolders(const juce::File& banksFolder)
{
    juce::StringArray names;
    forEachEntry(banksFolder, PathKind::folder, [&names](const juce::String& name) { names.add(name); });
    names.sort(false);
    return names;
}

juce::StringArray listPresets(const juce::File& folder)
{
    juce::StringArray names;
    const juce::String ending(presetFileEnding);
    forEachEntry(folder, PathKind::file,
                 [&](const juce::String& name)
                 {
                     if (name.endsWith(ending))
                         names.add(name.dropLastCharacters(ending.length()));
                 });
    names.sort(false);
    return names;
}

juce::StringArray listAllPresets(const juce::File& banksFolder)
{
    juce::StringArray places;

    for (const auto& folder : listPresetFolders(banksFolder))
        for (const auto& name : listPresets(childNamed(banksFolder, folder)))
            places.add(PresetPlace{folder, name}.text());

    return places;
}

juce::Result checkListable(const juce::File& folder)
{
    std::error_code error;
    entriesOf(folder, error);
    return error ? juce::Result::fail("cannot read the folder " + folder.getFullPathName() + " (" +
                                      messageOf(error) + ")")
                 : juce::Result::ok();
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
        if (isSamePlace(childNamed(banksFolder, name), place))
            return name;

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
