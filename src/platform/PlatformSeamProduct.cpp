// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PlatformSeamProduct.h"

#include "platform/PlatformSeamFiles.h"

#if !JUCE_WINDOWS
#include <dlfcn.h>
#include <link.h>
#endif

namespace quorel
{

namespace
{
bool isProduct(const juce::File& folder)
{
    return folder.getChildFile("Ostrand").isDirectory() && folder.getChildFile("Banks").isDirectory();
}

/** The folder that a program or plug-in lies in; for one in a bundle the folder that the bundle lies in. */
juce::File folderAround(const juce::File& file)
{
    constexpr int deepest = 3; // Quorel.vst3/Contents/x86_64-linux/Quorel.so
    auto folder = file.getParentDirectory();

    for (int i = 0; i < deepest; ++i)
    {
        if (folder.hasFileExtension("vst3;lv2"))
            return folder.getParentDirectory();

        folder = folder.getParentDirectory();
    }

    return file.getParentDirectory();
}

#if JUCE_WINDOWS
/** The installer puts the plug-in elsewhere, and writes down where the rest is. */
std::vector<juce::File> usualPlaces(const juce::File&)
{
    const auto path = juce::WindowsRegistry::getValue(
        "HKEY_CURRENT_"
        "USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Quorel\\InstallLocation");

    if (!juce::File::isAbsolutePath(path))
        return {};

    return {juce::File(path)};
}
#else
std::vector<juce::File> usualPlaces(const juce::File& own)
{
    const auto home = juce::File::getSpecialLocation(juce::File::userHomeDirectory);
    const auto ofUser = home.getChildFile(".local/lib/quorel");
    std::vector<juce::File> places{juce::File("/usr/local/lib/quorel"), juce::File("/usr/lib/quorel")};
    // A plug-in of the user's own belongs to the user's own product, of whatever version the machine's is.
    places.insert(own.isAChildOf(home) ? places.begin() : places.end(), ofUser);
    return places;
}
#endif
} // namespace

#if JUCE_WINDOWS
juce::File ownFile()
{
    return juce::File::getSpecialLocation(juce::File::currentExecutableFile);
}
#else
juce::File ownFile()
{
    static const char here = 0;
    Dl_info info{};
    void* entry = nullptr;
    const auto* object =
        dladdr1(&here, &info, &entry, RTLD_DL_LINKMAP) != 0 ? static_cast<const link_map*>(entry) : nullptr;
    // The program itself has no name there, and its own idea of its path is what it was started as.
    const bool isProgram = object == nullptr || object->l_name == nullptr || object->l_name[0] == 0;
    const auto path = juce::String::fromUTF8(isProgram ? "/proc/self/exe" : object->l_name);
    return endOfLink(juce::File::getCurrentWorkingDirectory().getChildFile(path));
}
#endif

juce::File productFolder()
{
    const auto own = ownFile();
    std::vector<juce::File> places;

    if (own != juce::File())
    {
        const auto folder = folderAround(own);
        places = {folder, folder.getSiblingFile("lib").getChildFile("quorel"),
                  folder.getSiblingFile("quorel")};
    }

    for (const auto& place : usualPlaces(own))
        places.push_back(place);

    for (const auto& place : places)
        if (isProduct(place))
            return place;

    return {};
}

std::vector<PluginHome> pluginHomes(const juce::File& home)
{
#if JUCE_WINDOWS
    juce::ignoreUnused(home);
    return {};
#else
    return {{"Quorel.so", "vst", home.getChildFile(".vst")},
            {"Quorel.vst3", "vst3", home.getChildFile(".vst3")},
            {"Quorel.lv2", "lv2", home.getChildFile(".lv2")}};
#endif
}

} // namespace quorel
