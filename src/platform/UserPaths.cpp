// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UserPaths.h"

#include "platform/FileNames.h"
#include "platform/PlatformSeamFiles.h"

namespace quorel
{

juce::String cutAtOstrand(const juce::String& path)
{
    const juce::String maker("Ostrand");
    const int start = path.lastIndexOfIgnoreCase(maker);
    return start < 0 ? path : path.substring(0, start + maker.length());
}

juce::File fileOfSetting(const juce::String& path)
{
    return isWholePath(path) ? reachable(juce::File(path)) : juce::File();
}

UserPaths readPaths(const UserStore& store)
{
    const auto read = [&store](const char* name) { return store.read(pathSetting::key, name); };

    UserPaths paths;
    paths.banksFolder = fileOfSetting(read(pathSetting::banks));
    paths.layoutsFolder = fileOfSetting(read(pathSetting::layouts));
    paths.helpFolder = fileOfSetting(read(pathSetting::help));
    paths.ecsFolder = fileOfSetting(read(pathSetting::ecs));
    paths.pluginListFile = fileOfSetting(read(pathSetting::pluginList));
    paths.pluginFolder = fileOfSetting(cutAtOstrand(read(pathSetting::pluginFolder)));

    paths.applicationFolder = juce::File::getSpecialLocation(juce::File::userApplicationDataDirectory)
                                  .getChildFile("Application Support")
                                  .getChildFile("Ostrand");
    paths.samplesFolder = paths.applicationFolder.getChildFile("Samples");
    paths.downloadsFolder = paths.applicationFolder.getChildFile("Downloads");
    paths.settingsFolder = paths.applicationFolder.getChildFile("Settings");
    return paths;
}

bool writePluginFolder(UserStore& store, const juce::String& path)
{
    return store.write(pathSetting::key, pathSetting::pluginFolder, path);
}

} // namespace quorel
