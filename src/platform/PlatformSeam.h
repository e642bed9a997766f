// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that differs between the platforms, in one place. No other code asks which platform it runs on.
#pragma once

#include "platform/UserStore.h"

#include <memory>
#include <system_error>

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

/** Moves a file or folder to the current user's trash of the desktop: the recycle bin on Windows, the home
    trash of freedesktop.org's rules on Linux, with what a file manager needs to put it back. Where the trash
    lies on another disk it is copied, and goes only when the copy is whole. Fails, and nothing has happened,
    where there is no trash or it can't take it. */
juce::Result moveToTrash(const juce::File& file);

/** Has what a folder lists, new names and moves, written down to the disk, where the platform can. */
void syncFolder(const juce::File& folder);

/** Shows other processes that a file is in use, for as long as this lives; it ends with the process, a crash
    included. */
class InUseMark
{
public:
    virtual ~InUseMark() = default;
};

/** Creates an empty file, for its owner to write, at a place where nothing is, and marks it. Null, with the
    reason, where that fails. */
std::unique_ptr<InUseMark> createMarkedFile(const juce::File& file, std::error_code& error);

/** Marks a folder, or takes over the mark of a process that has ended on a file or folder. Null while it is
    in use, or where the file system can't tell. */
std::unique_ptr<InUseMark> claimAbandoned(const juce::File& file);

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

/** From now on this process isn't ended by a polite request to end, such as that of a session that closes. Where the
    platform sends those to windows, nothing changes. */
void catchTermination();

/** True once that has come. Any thread. */
bool isTerminationAsked();

/** Such as "Linux 64 Bits version". */
juce::String versionText();

/** True where the standard error stream goes to a terminal, on which a line can be drawn over. */
bool standardErrorIsTerminal();

} // namespace quorel
