// SPDX-License-Identifier: GPL-3.0-or-later
#include "setup/Installer.h"

#include "platform/FileOperations.h"
#include "platform/Leftovers.h"
#include "platform/PlatformSeamFiles.h"
#include "platform/UserPaths.h"
#include "platform/Version.h"
#include "presets/PresetFiles.h"

#include <utility>

namespace quorel
{

namespace
{
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

Installer::Installer(UserStore& userStore, const UserPlaces& userPlaces, const juce::File& sourceFolder,
                     SetupWords wordsOfSetup)
    : store(userStore)
    , places(userPlaces)
    , source(sourceFolder)
    , words(std::move(wordsOfSetup))
    , files(installedFilesIn(userPlaces))
{
}

bool Installer::run(bool restoreRemoved)
{
    for (const auto& setting : ownSettings(places))
        writeSetting(setting);
    createFolders();

    const auto instruments = planInstruments();
    std::vector<Copies> banks;
    for (const auto& name : instrumentNames())
        banks.push_back(planBanks(name));
    const auto presets = planPresets();
    const auto guide = planGuide();

    bool addsInstruments = false;
    for (const auto& [from, to] : instruments)
        addsInstruments = files.announce(from, to, restoreRemoved) || addsInstruments;
    for (const auto& copies : banks)
        announce(copies, restoreRemoved);
    announce(presets, restoreRemoved);
    announce(guide, restoreRemoved);
    saveList();

    // Also when this run doesn't get to its end.
    if (addsInstruments)
        forgetPluginList();
    const auto paths = readPaths(store);
    words.say(summary("Instruments in " + paths.pluginFolder.getFullPathName(),
                      install(instruments, restoreRemoved)));
    if (addsInstruments)
        forgetPluginList();
    installBanks(banks, restoreRemoved);
    if (paths.banksFolder != juce::File())
        words.say(summary("Factory presets in " + paths.banksFolder.getFullPathName(),
                          install(presets, restoreRemoved)));
    if (paths.helpFolder != juce::File())
        words.say(
            summary("User guide in " + paths.helpFolder.getFullPathName(), install(guide, restoreRemoved)));
    saveList();
    if (succeeded)
        writeVersion();
    return succeeded;
}

void Installer::announce(const Copies& copies, bool restoreRemoved)
{
    for (const auto& [from, to] : copies)
        files.announce(from, to, restoreRemoved);
}

void Installer::saveList()
{
    if (const auto result = files.save(); result.failed() && !listFailed)
    {
        fail("cannot write the list of installed files in " + places.dataFolder.getFullPathName() + " (" +
             result.getErrorMessage() + ")");
        listFailed = true;
    }
}

juce::String Installer::describeSettings() const
{
    juce::StringArray lines;
    const auto add = [this, &lines](const juce::String& key, const juce::String& name)
    {
        const auto value = store.read(key, name);
        lines.add(key + "\\" + name + " = " + (value.isEmpty() ? juce::String("(not set)") : value));
    };
    for (const auto& setting : ownSettings(places))
        add(setting.key, setting.name);
    for (const auto& name : instrumentNames())
    {
        const auto setting = bankFolderOf(name, places);
        add(setting.key, setting.name);
    }
    return lines.joinIntoString("\n");
}

void Installer::writeSetting(const StandardSetting& setting)
{
    if (store.read(setting.key, setting.name).isNotEmpty())
        return;
    const auto path = setting.standard.getFullPathName();
    if (store.write(setting.key, setting.name, path))
        words.say(setting.key + "\\" + setting.name + " = " + path);
    else
        fail("cannot write the setting " + setting.key + "\\" + setting.name);
}

void Installer::writeVersion()
{
    if (store.read(pathSetting::key, setupVersion) != productVersion &&
        !store.write(pathSetting::key, setupVersion, productVersion))
        fail(juce::String("cannot write the setting ") + pathSetting::key + "\\" + setupVersion);
}

void Installer::createFolders()
{
    removeLeftovers(places.settingsFolder);
    removeLeftovers(places.dataFolder);
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
        else if (const auto result = createFolder(folder); result.failed())
            fail("cannot create the folder " + folder.getFullPathName());
    }
}

Installer::Copies Installer::planInstruments()
{
    const auto from = source.getChildFile("Ostrand");
    const auto to = readPaths(store).pluginFolder;
    Copies copies;
    if (!from.isDirectory())
        fail("no starter instruments in " + from.getFullPathName());
    // Instruments that are used where they lie aren't the user's own.
    else if (to != juce::File() && !isSamePlace(from, to))
        for (const auto& name : instrumentNames())
        {
            const auto place = name + "/" + name + pluginFileEnding();
            copies.emplace_back(from.getChildFile(place), to.getChildFile(place));
        }
    return copies;
}

Installer::Copies Installer::planBanks(const juce::String& instrument)
{
    const auto setting = bankFolderOf(instrument, places);
    const auto& to = setting.standard;
    // A folder that the user chose isn't ours to fill.
    const auto chosen = store.read(setting.key, setting.name);
    if (!source.getChildFile("Ostrand").isDirectory() || (chosen.isNotEmpty() && fileOfSetting(chosen) != to))
        return {};

    const auto from = source.getChildFile("Banks").getChildFile(instrument);
    auto copies = copiesOf(from, to, true, "*");
    if (copies.empty())
        fail("no banks in " + from.getFullPathName());
    return copies;
}

Installer::Copies Installer::planPresets() const
{
    const auto to = readPaths(store).banksFolder;
    return to == juce::File()
               ? Copies()
               : copiesOf(source.getChildFile("presets"), to, true, juce::String("*") + presetFileEnding);
}

Installer::Copies Installer::planGuide() const
{
    const auto to = readPaths(store).helpFolder;
    return to == juce::File() ? Copies() : copiesOf(source.getChildFile("Help"), to, false, "*.html");
}

Installer::Copies Installer::copiesOf(const juce::File& from, const juce::File& to, bool withFolders,
                                      const juce::String& pattern)
{
    auto found = from.findChildFiles(juce::File::findFiles, withFolders, pattern);
    found.sort();
    Copies copies;
    for (const auto& file : found)
        copies.emplace_back(file, to.getChildFile(file.getRelativePathFrom(from)));
    return copies;
}

void Installer::forgetPluginList()
{
    const auto list = readPaths(store).pluginListFile;
    if (list.existsAsFile() && !list.deleteFile())
        fail("cannot delete the old list of instruments " + list.getFullPathName());
}

void Installer::installBanks(const std::vector<Copies>& banks, bool restoreRemoved)
{
    Counts counts{};
    const auto names = instrumentNames();
    for (int i = 0; i < names.size(); ++i)
    {
        const auto& copies = banks[static_cast<std::size_t>(i)];
        const auto made = install(copies, restoreRemoved);
        for (std::size_t result = 0; result < counts.size(); ++result)
            counts[result] += made[result];
        if (const auto setting = bankFolderOf(names[i], places);
            !copies.empty() && setting.standard.isDirectory())
            writeSetting(setting);
    }
    words.say(summary("Bank files", counts));
}

Installer::Counts Installer::install(const Copies& copies, bool restoreRemoved)
{
    using Result = InstalledFiles::Result;
    Counts counts{};
    for (const auto& [from, to] : copies)
    {
        juce::String reason;
        const auto result = files.install(from, to, restoreRemoved, reason);
        ++counts[static_cast<std::size_t>(result)];
        if (result == Result::failed)
            fail("cannot copy " + from.getFullPathName() + " to " + to.getFullPathName() + " (" + reason +
                 ")");
        else if (result == Result::keptChanged)
            words.say("Kept as you changed it: " + to.getFullPathName());
    }
    return counts;
}

void Installer::fail(const juce::String& text)
{
    words.complain(text);
    succeeded = false;
}

} // namespace quorel
