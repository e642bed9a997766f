// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PlatformSeam.h"

#if JUCE_WINDOWS
#include <io.h>
#else
#include <cstdlib>
#include <unistd.h>
#endif

namespace quorel
{

namespace
{
constexpr const char* makerFolder = "Ostrand";
constexpr const char* productFolder = "Quorel";
constexpr const char* storeFileName = "Registry.xml";

UserPlaces placesUnder(const juce::File& settingsHome, const juce::File& dataHome)
{
    return {settingsHome.getChildFile(makerFolder),
            dataHome.getChildFile(makerFolder).getChildFile(productFolder)};
}

#if JUCE_WINDOWS

class RegistryUserStore : public UserStore
{
public:
    juce::String read(const juce::String& key, const juce::String& name) const override
    {
        return juce::WindowsRegistry::getValue(path(key, name));
    }

    bool write(const juce::String& key, const juce::String& name, const juce::String& value) override
    {
        return juce::WindowsRegistry::setValue(path(key, name), value);
    }

private:
    static juce::String path(const juce::String& key, const juce::String& name)
    {
        return "HKEY_CURRENT_USER\\" + key + "\\" + name;
    }
};

#else

/** A base directory as freedesktop.org's rules have it: a variable that isn't an absolute path doesn't
    count. */
juce::File baseDirectory(const char* variable, const char* defaultBelowHome)
{
    const auto path = juce::SystemStats::getEnvironmentVariable(variable, {});
    if (path.startsWithChar('/'))
        return juce::File(path);
    return juce::File::getSpecialLocation(juce::File::userHomeDirectory).getChildFile(defaultBelowHome);
}

#endif
} // namespace

UserPlaces userPlaces()
{
#if JUCE_WINDOWS
    const auto home = juce::File::getSpecialLocation(juce::File::userApplicationDataDirectory);
    return placesUnder(home, home);
#else
    return placesUnder(baseDirectory("XDG_CONFIG_HOME", ".config"),
                       baseDirectory("XDG_DATA_HOME", ".local/share"));
#endif
}

UserPlaces userPlaces(const juce::File& prefix)
{
    return placesUnder(prefix.getChildFile("config"), prefix.getChildFile("data"));
}

void adoptUserPlaces(const juce::File& prefix)
{
#if JUCE_WINDOWS
    juce::ignoreUnused(prefix);
#else
    setenv("XDG_CONFIG_HOME", prefix.getChildFile("config").getFullPathName().toRawUTF8(), 1);
    setenv("XDG_DATA_HOME", prefix.getChildFile("data").getFullPathName().toRawUTF8(), 1);
#endif
}

std::unique_ptr<UserStore> makeUserStore()
{
#if JUCE_WINDOWS
    return std::make_unique<RegistryUserStore>();
#else
    return makeUserStore(userPlaces());
#endif
}

std::unique_ptr<UserStore> makeUserStore(const UserPlaces& places)
{
    return std::make_unique<FileUserStore>(places.settingsFolder.getChildFile(storeFileName));
}

juce::String pluginFileEnding()
{
#if JUCE_WINDOWS
    return ".dll";
#else
    return ".so";
#endif
}

juce::String versionText()
{
#if JUCE_WINDOWS
    return "Windows 64 Bits version";
#else
    return "Linux 64 Bits version";
#endif
}

bool standardErrorIsTerminal()
{
    constexpr int standardError = 2;
#if JUCE_WINDOWS
    return _isatty(standardError) != 0;
#else
    return isatty(standardError) != 0;
#endif
}

} // namespace quorel
