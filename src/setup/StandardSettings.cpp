// SPDX-License-Identifier: GPL-3.0-or-later
#include "setup/StandardSettings.h"

#include "hosting/InstrumentTable.h"
#include "platform/UserPaths.h"

namespace quorel
{

std::vector<StandardSetting> ownSettings(const UserPlaces& places)
{
    const auto& data = places.dataFolder;
    const auto own = [](const char* name, const juce::File& file) {
        return StandardSetting{pathSetting::key, name, file};
    };
    return {own(pathSetting::banks, data.getChildFile("Banks")),
            own(pathSetting::layouts, data.getChildFile("Layouts")),
            own(pathSetting::help, data.getChildFile("Help")),
            own(pathSetting::ecs, data.getChildFile("ECS")),
            own(pathSetting::pluginList, places.settingsFolder.getChildFile("PluginList.xml")),
            // The plug-in folder's path is cut behind the maker's name when it is read, so it has to contain
            // it.
            own(pathSetting::pluginFolder, data.getChildFile("Plugins").getChildFile("Ostrand"))};
}

juce::File installedFilesIn(const UserPlaces& places)
{
    return places.dataFolder.getChildFile("Installed.xml");
}

juce::File setupLogIn(const UserPlaces& places)
{
    return places.dataFolder.getChildFile("Setup.log");
}

bool isSetUpBefore(const UserStore& store, const juce::String& version)
{
    const auto numbersOf = [](const juce::String& text)
    {
        std::vector<int> numbers;

        for (const auto& number : juce::StringArray::fromTokens(text, ".", {}))
            numbers.push_back(number.getIntValue());

        return numbers;
    };
    return numbersOf(store.read(pathSetting::key, setupVersion)) < numbersOf(version);
}

juce::StringArray instrumentNames()
{
    juce::StringArray names;
    for (const auto& row : instrumentTable)
        names.addIfNotAlreadyThere(row.name);
    return names;
}

StandardSetting bankFolderOf(const juce::String& instrument, const UserPlaces& places)
{
    const auto setting = bankFolderSetting(instrument);
    return {setting->key, setting->valueName,
            places.dataFolder.getChildFile("Instrument Banks").getChildFile(instrument)};
}

} // namespace quorel
