// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Installation.h"

#include "platform/UserInteraction.h"

#include <utility>

namespace quorel
{

Installation::Installation(std::unique_ptr<UserStore> userStore, UserInteraction& interaction)
    : user(interaction)
    , store(std::move(userStore))
    , paths(readPaths(*store))
{
}

void Installation::loadOrScan()
{
    scanner.loadOrScan(paths.pluginFolder, paths.pluginListFile, user);
}

void Installation::scan(bool showProgress)
{
    scanner.scanPlugins(paths.pluginFolder, paths.pluginListFile, showProgress, user);
}

void Installation::changePluginFolder(const juce::File& folder)
{
    const auto path = juce::File::addTrailingSeparator(cutAtOstrand(folder.getFullPathName()));

    if (!writePluginFolder(*store, path))
        user.alert("Error", "The plug-in folder could not be stored: " + path);

    paths.pluginFolder =
        fileOfSetting(cutAtOstrand(store->read(pathSetting::key, pathSetting::pluginFolder)));
    scan(true);
}

} // namespace quorel
