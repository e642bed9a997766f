// SPDX-License-Identifier: GPL-3.0-or-later
#include "Installer.h"

#include "hosting/InstrumentTable.h"
#include "platform/UserPaths.h"
#include "presets/PresetFiles.h"

#include <iostream>

namespace quorel
{

namespace
{
/** Names of the table, each once. */
juce::StringArray instrumentNames()
{
    juce::StringArray names;
    for (const auto& row : instrumentTable)
        names.addIfNotAlreadyThere(row.name);
    return names;
}

void say(const juce::String& text)
{
    std::cout << text << std::endl;
}

juce::String summary(const juce::String& what, const std::array<int, 6>& counts)
{
    using Result = InstalledFiles::Result;
    const auto count = [&counts](Result result) { return counts[static_cast<std::size_t>(result)]; };
    const std::pair<Result, const char*> parts[] = {{Result::added, " installed"},
                                                    {Result::updated, " updated"},
                                                    {Result::unchanged, " up to date"},
                                                    {Result::keptChanged, " changed by you and kept"},
                                                    {Result::keptRemoved, " removed by you and left out"},
                                                    {Result::failed, " failed"}};
    juce::StringArray texts;
    for (const auto& [result, text] : parts)
        if (count(result) > 0)
            texts.add(juce::String(count(result)) + text);
    return what + ": " + (texts.isEmpty() ? juce::String("none") : texts.joinIntoString(", "));
}
} // namespace

Installer::Installer(UserStore& userStore, const UserPlaces& userPlaces, const juce::File& sourceFolder)
    : store(userStore)
    , places(userPlaces)
    , source(sourceFolder)
    , files(userPlaces.dataFolder.getChildFile("Installed.xml"))
{
}

bool Installer::run(bool restoreRemoved)
{
    for (const auto& setting : ownSettings())
        writeSetting(setting);
    createFolders();
    installInstruments(restoreRemoved);
    installPresets(restoreRemoved);
    installGuide(restoreRemoved);
    if (!files.save())
        fail("cannot write the list of installed files in " + places.dataFolder.getFullPathName());
    return succeeded;
}

juce::String Installer::describeSettings() const
{
    juce::StringArray lines;
    const auto add = [this, &lines](const juce::String& key, const juce::String& name)
    {
        const auto value = store.read(key, name);
        lines.add(key + "\\" + name + " = " + (value.isEmpty() ? juce::String("(not set)") : value));
    };
    for (const auto& setting : ownSettings())
        add(setting.key, setting.name);
    for (const auto& name : instrumentNames())
        if (const auto setting = bankFolderSetting(name))
            add(setting->key, setting->valueName);
    return lines.joinIntoString("\n");
}

std::vector<Installer::Setting> Installer::ownSettings() const
{
    const auto& data = places.dataFolder;
    const auto own = [](const char* name, const juce::File& file) {
        return Setting{pathSetting::key, name, file};
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

void Installer::writeSetting(const Setting& setting)
{
    if (store.read(setting.key, setting.name).isNotEmpty())
        return;
    const auto path = setting.standard.getFullPathName();
    if (store.write(setting.key, setting.name, path))
        say(setting.key + "\\" + setting.name + " = " + path);
    else
        fail("cannot write the setting " + setting.key + "\\" + setting.name);
}

void Installer::createFolders()
{
    const auto paths = readPaths(store);
    const std::pair<const char*, juce::File> folders[] = {
        {pathSetting::banks, paths.banksFolder},
        {pathSetting::layouts, paths.layoutsFolder},
        {pathSetting::help, paths.helpFolder},
        {pathSetting::ecs, paths.ecsFolder},
        {pathSetting::pluginList, paths.pluginListFile.getParentDirectory()},
        {pathSetting::pluginFolder, paths.pluginFolder}};
    for (const auto& [name, folder] : folders)
    {
        if (folder == juce::File())
            fail(juce::String("the setting ") + name + " is not an absolute path");
        else if (const auto result = folder.createDirectory(); result.failed())
            fail("cannot create the folder " + folder.getFullPathName());
    }
}

void Installer::installInstruments(bool restoreRemoved)
{
    const auto from = source.getChildFile("Ostrand");
    if (!from.isDirectory())
    {
        fail("no starter instruments in " + from.getFullPathName());
        return;
    }

    const auto to = readPaths(store).pluginFolder;
    Counts instruments{};
    Counts banks{};
    for (const auto& name : instrumentNames())
    {
        const auto place = name + "/" + name + pluginFileEnding();
        if (to != juce::File())
            installFile(from.getChildFile(place), to.getChildFile(place), restoreRemoved, instruments);
        installBanks(name, restoreRemoved, banks);
    }
    if (instruments[static_cast<std::size_t>(InstalledFiles::Result::added)] > 0)
        forgetPluginList();
    say(summary("Instruments in " + to.getFullPathName(), instruments));
    say(summary("Bank files", banks));
}

void Installer::forgetPluginList()
{
    const auto list = readPaths(store).pluginListFile;
    if (list.existsAsFile() && !list.deleteFile())
        fail("cannot delete the old list of instruments " + list.getFullPathName());
}

void Installer::installBanks(const juce::String& instrument, bool restoreRemoved, Counts& counts)
{
    const auto setting = bankFolderSetting(instrument);
    const auto to = places.dataFolder.getChildFile("Instrument Banks").getChildFile(instrument);
    // A folder that the user chose isn't ours to fill.
    const auto chosen = store.read(setting->key, setting->valueName);
    if (chosen.isNotEmpty() && fileOfSetting(chosen) != to)
        return;

    const auto from = source.getChildFile("Banks").getChildFile(instrument);
    auto found = from.findChildFiles(juce::File::findFiles, true);
    found.sort();
    if (found.isEmpty())
        fail("no banks in " + from.getFullPathName());
    for (const auto& file : found)
        installFile(file, to.getChildFile(file.getRelativePathFrom(from)), restoreRemoved, counts);
    if (to.isDirectory())
        writeSetting({setting->key, setting->valueName, to});
}

void Installer::installPresets(bool restoreRemoved)
{
    const auto from = source.getChildFile("presets");
    const auto to = readPaths(store).banksFolder;
    if (to == juce::File())
        return;

    Counts counts{};
    auto found = from.findChildFiles(juce::File::findFiles, true, juce::String("*") + presetFileEnding);
    found.sort();
    for (const auto& file : found)
        installFile(file, to.getChildFile(file.getRelativePathFrom(from)), restoreRemoved, counts);
    say(summary("Factory presets in " + to.getFullPathName(), counts));
}

void Installer::installGuide(bool restoreRemoved)
{
    const auto from = source.getChildFile("Help");
    const auto to = readPaths(store).helpFolder;
    if (to == juce::File())
        return;

    Counts counts{};
    for (const auto& file : from.findChildFiles(juce::File::findFiles, false, "*.html"))
        installFile(file, to.getChildFile(file.getFileName()), restoreRemoved, counts);
    say(summary("User guide in " + to.getFullPathName(), counts));
}

void Installer::installFile(const juce::File& from, const juce::File& to, bool restoreRemoved, Counts& counts)
{
    const auto result = files.install(from, to, restoreRemoved);
    ++counts[static_cast<std::size_t>(result)];
    if (result == InstalledFiles::Result::failed)
        fail("cannot copy " + from.getFullPathName() + " to " + to.getFullPathName());
    else if (result == InstalledFiles::Result::keptChanged)
        say("Kept as you changed it: " + to.getFullPathName());
}

void Installer::fail(const juce::String& text)
{
    std::cerr << "quorel-setup: " << text << std::endl;
    succeeded = false;
}

} // namespace quorel
