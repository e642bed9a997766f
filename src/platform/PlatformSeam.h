// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that differs between the platforms, in one place; files have PlatformSeamFiles. No other code asks
// which platform it runs on.
#pragma once

#include "platform/UserStore.h"

#include <memory>
#include <string>
#include <vector>

namespace quorel
{

/** Where the files of one user lie. */
struct UserPlaces
{
    /** Settings of all siblings, ".../Ostrand": the store's file, the list of known plug-ins. */
    juce::File settingsFolder;
    /** Data of this instrument, ".../Ostrand/Quorel". */
    juce::File dataFolder;
};

/** The current user's places: under `XDG_CONFIG_HOME` and `XDG_DATA_HOME` on Linux (by default
    `~/.config` and `~/.local/share`); on Windows under the application data folder, or under "config" and
    "data" of `OSTRAND_HOME` where that is set. Relative paths in these variables don't count. */
UserPlaces userPlaces();

/** The same places under "config" and "data" of a folder of the caller's choice, so that a process
    started with `XDG_CONFIG_HOME` and `XDG_DATA_HOME` set to these two, or with `OSTRAND_HOME` set to the folder
    on Windows, sees them as its own. */
UserPlaces userPlaces(const juce::File& prefix);

/** What to set for a program that is to take the places under a prefix DIR for its own, in words. */
juce::String prefixVariables();

/** Lets this process, the instruments that it hosts, and the programs that it starts take the places under
    `prefix` for the user's own. Call it before the first thread starts. */
void adoptUserPlaces(const juce::File& prefix);

/** The current user's settings: the registry under HKEY_CURRENT_USER on Windows, unless `OSTRAND_HOME` is set;
    "Registry.xml" in the settings folder elsewhere. */
std::unique_ptr<UserStore> makeUserStore();

/** Settings kept in "Registry.xml" of the settings folder of `places`, on every platform. */
std::unique_ptr<UserStore> makeUserStore(const UserPlaces& places);

/** Ending of a plug-in file with its dot: ".dll" or ".so". */
juce::String pluginFileEnding();

/** Takes memory straight from the system: all zero, and none of it resident before it is used. What malloc has at
    hand may be in use again, so that calloc would have to write it. Throws std::bad_alloc. Not on the audio
    thread. */
void* takeEmptyPages(std::size_t bytes);

/** Gives back what `takeEmptyPages` has returned for as many bytes. */
void returnEmptyPages(void* pages, std::size_t bytes) noexcept;

/** A name for this process that no other one ever has, even where the system gives its number again. Any
    thread. */
juce::String processIdentity();

/** True while the process of this `processIdentity` runs. Any thread. */
bool isProcessRunning(const juce::String& identity);

/** Such as "Linux 64 Bits version". */
juce::String versionText();

/** The arguments of this process after its name, in UTF-8. `main` gets them in a code page on Windows, which lacks
    most of the characters that a path may have. */
std::vector<std::string> programArguments(int argc, const char* const* argv);

/** Has the console show what is written in UTF-8, as long as this lives. */
class Utf8Console
{
public:
    Utf8Console();
    ~Utf8Console();

private:
    JUCE_DECLARE_NON_COPYABLE(Utf8Console)

    const unsigned pageBefore;
};

/** Has the standard output take bytes as they are, for sound: line ends are changed in text alone. */
void keepBytesOfStandardOutput();

/** True where the standard error stream goes to a terminal, on which a line can be drawn over. */
bool standardErrorIsTerminal();

} // namespace quorel
