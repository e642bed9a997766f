// SPDX-License-Identifier: GPL-3.0-or-later
// What a test that hosts plug-ins does differently on each platform. No JUCE: it stands outside the plug-in.
#pragma once

#include <filesystem>
#include <string>

namespace quorel::test
{

/** Loads a plug-in's file. Null if that fails. */
void* openLibrary(const std::filesystem::path& file);
void* findInLibrary(void* library, const char* name);
void closeLibrary(void* library);

/** The file that a function or a constant comes from. */
std::filesystem::path libraryOf(const void* address);

/** Waits, while the plug-in's timers and messages go on: where it has no thread of its own for them, as on Windows,
    the calling one takes them, which has to be the one that opened it. */
void letPluginsRun(int millis);

/** Makes a folder below the system's for temporary files, with a name of its own. */
std::filesystem::path makeScratchFolder();

/** Has all plug-ins that this process opens from now on take the folders below `prefix`, "config" and "data", for the
    user's. */
void adoptUser(const std::filesystem::path& prefix);

/** A command line with its program and arguments in quotes, as std::system takes it. */
std::string inShell(const std::string& commandLine);

/** Keeps the plug-ins of this process away from the user's screen. Tests with windows get theirs in
    QUOREL_TEST_DISPLAY; on Windows there is no other than that of the session. */
void leaveUsersScreen();

/** What this process holds at the moment. */
struct Holdings
{
    Holdings();

    long long files = 0; ///< on Windows handles of any kind
    long long threads = 0;
    long long kilobytes = 0;
};

} // namespace quorel::test
