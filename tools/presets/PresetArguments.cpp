// SPDX-License-Identifier: GPL-3.0-or-later
#include "PresetArguments.h"

#include "common/NearNames.h"
#include "common/Tool.h"
#include "platform/FileNames.h"

#include <iostream>

namespace quorel
{

juce::String quoted(const juce::String& text)
{
    return "\"" + text + "\"";
}

juce::String count(int number, const char* what)
{
    return juce::String(number) + " " + what + (number == 1 ? "" : "s");
}

int failWith(const juce::String& text)
{
    std::cerr << "quorel-presets: " << text << std::endl;
    return exitFailed;
}

int fail(const juce::Result& result)
{
    return failWith(result.getErrorMessage());
}

juce::Result checkBanks(const PresetCollection& collection)
{
    if (collection.banksFolder == juce::File())
        return juce::Result::fail("no banks folder is set: run quorel-setup, or give --banks");
    if (!collection.banksFolder.isDirectory())
        return juce::Result::fail("there is no banks folder " + collection.banksFolder.getFullPathName());
    return checkListable(collection.banksFolder);
}

juce::Result splitPlace(const juce::String& text, PresetPlace& place)
{
    place.folder = text.upToFirstOccurrenceOf("/", false, false);
    place.name = text.fromFirstOccurrenceOf("/", false, false);
    return place.folder.isNotEmpty() && place.name.isNotEmpty() && !place.name.containsChar('/')
               ? juce::Result::ok()
               : juce::Result::fail("a preset is given as FOLDER/NAME, not as " + quoted(text));
}

juce::Result findPreset(const PresetCollection& collection, const juce::String& text, juce::File& file)
{
    if (const auto result = checkBanks(collection); result.failed())
        return result;
    PresetPlace place;
    if (const auto result = splitPlace(text, place); result.failed())
        return result;
    const auto& banks = collection.banksFolder;
    file = findPresetFile(banks, place.folder, place.name);
    if (file != juce::File())
        return juce::Result::ok();
    if (listPresetFolders(banks).contains(place.folder))
        if (const auto result = checkListable(childNamed(banks, place.folder)); result.failed())
            return result;
    return juce::Result::fail("there is no preset " + quoted(text) + " in " + banks.getFullPathName() +
                              didYouMean(text, listAllPresets(banks)));
}

juce::Result findPlaces(const PresetCollection& collection, const juce::StringArray& presets,
                        std::vector<PresetPlace>& places)
{
    for (const auto& preset : presets)
    {
        juce::File file;
        PresetPlace place;
        if (const auto result = findPreset(collection, preset, file); result.failed())
            return result;
        if (const auto result = splitPlace(preset, place); result.failed())
            return result;
        if (std::find(places.begin(), places.end(), place) == places.end())
            places.push_back(place);
    }
    return juce::Result::ok();
}

} // namespace quorel
