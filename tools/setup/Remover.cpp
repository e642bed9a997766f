// SPDX-License-Identifier: GPL-3.0-or-later
#include "Remover.h"

#include "platform/FileOperations.h"
#include "platform/SharedFile.h"
#include "platform/UserPaths.h"
#include "setup/StandardSettings.h"

#include <set>

namespace quorel
{

Remover::Remover(UserStore& userStore, const UserPlaces& userPlaces, const SetupWords& wordsOfSetup)
    : store(userStore)
    , places(userPlaces)
    , words(wordsOfSetup)
    , record(installedFilesIn(userPlaces))
    , files(record)
{
    const auto paths = readPaths(store);
    const auto add = [this](const juce::File& folder, const juce::File& root)
    {
        for (auto f = folder; f.isAChildOf(root); f = f.getParentDirectory())
            folders.push_back(f);
    };
    const auto dataRoot = places.dataFolder.getParentDirectory().getParentDirectory();

    for (const auto& file : files.list())
        for (const auto& root : {dataRoot, paths.banksFolder, paths.helpFolder, paths.pluginFolder})
            if (root != juce::File())
                add(file.getParentDirectory(), root);
    for (const auto& folder : {paths.banksFolder, paths.layoutsFolder, paths.helpFolder, paths.ecsFolder,
                               paths.pluginFolder, places.dataFolder})
        add(folder, dataRoot);
    add(places.settingsFolder, places.settingsFolder.getParentDirectory());
}

bool Remover::run()
{
    const bool hadList = record.existsAsFile();
    removeFiles();
    removeLists();
    removeSettings();
    removeEmptyFolders();
    if (!hadList)
        words.say(
            "There is no list of installed files: nothing was installed here, or it has been removed before");
    return succeeded;
}

void Remover::removeFiles()
{
    using Removal = InstalledFiles::Removal;
    int removed = 0, kept = 0;
    for (const auto& file : files.list())
    {
        juce::String reason;
        switch (files.remove(file, reason))
        {
        case Removal::removed:
            ++removed;
            break;
        case Removal::wasGone:
            break;
        case Removal::keptChanged:
            ++kept;
            words.say("Kept as you changed it: " + file.getFullPathName());
            break;
        case Removal::failed:
            fail("cannot delete " + file.getFullPathName() + " (" + reason + ")");
        }
    }
    words.say("Installed files: " + juce::String(removed) + " removed, " + juce::String(kept) +
              " changed by you and kept");
}

void Remover::removeLists()
{
    // What couldn't be deleted is known the next time.
    if (succeeded)
        deleteFile(record);
    deleteFile(setupLogIn(places));

    // A list at a place of the user's choice isn't ours.
    const auto list = readPaths(store).pluginListFile;
    if (list.isAChildOf(places.settingsFolder))
        deleteFile(list);
}

void Remover::removeSettings()
{
    auto settings = ownSettings(places);
    for (const auto& name : instrumentNames())
        settings.push_back(bankFolderOf(name, places));

    for (const auto& setting : settings)
    {
        const auto value = store.read(setting.key, setting.name);
        if (value.isNotEmpty() && fileOfSetting(value) == setting.standard &&
            !store.write(setting.key, setting.name, {}))
            fail("cannot remove the setting " + setting.key + "\\" + setting.name);
    }

    if (store.read(pathSetting::key, setupVersion).isNotEmpty() &&
        !store.write(pathSetting::key, setupVersion, {}))
        fail(juce::String("cannot remove the setting ") + pathSetting::key + "\\" + setupVersion);
}

void Remover::removeEmptyFolders()
{
    // A folder's path is longer than those of the folders above it.
    const auto isLonger = [](const juce::File& a, const juce::File& b)
    {
        const auto& first = a.getFullPathName();
        const auto& second = b.getFullPathName();
        return first.length() != second.length() ? first.length() > second.length() : first < second;
    };
    const std::set<juce::File, decltype(isLonger)> sorted(folders.begin(), folders.end(), isLonger);

    removeLocksAlone(places.settingsFolder);

    // The system refuses to remove a folder that holds anything.
    for (const auto& folder : sorted)
        if (folder.isDirectory() && !folder.isSymbolicLink())
            folder.deleteFile();
}

void Remover::deleteFile(const juce::File& file)
{
    if (!file.existsAsFile())
        return;
    if (const auto result = deleteForGood(file); result.failed())
        fail("cannot delete " + file.getFullPathName() + " (" + result.getErrorMessage() + ")");
}

void Remover::fail(const juce::String& text)
{
    words.complain(text);
    succeeded = false;
}

} // namespace quorel
