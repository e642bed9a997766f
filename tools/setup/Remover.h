// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "InstalledFiles.h"
#include "platform/PlatformSeam.h"

#include <array>
#include <vector>

namespace quorel
{

/** Takes back what setup has done for a user: the files that it installed, as long as the user hasn't changed them,
    its list of them, the list of known instruments, the settings that have the value that setup gives them, and
    folders that are empty then. What is the user's stays. */
class Remover
{
public:
    Remover(UserStore& store, const UserPlaces& places);

    /** Does everything and says so on the standard output; errors go to the standard error stream, a line each.
        False where anything failed; the rest is done all the same. */
    bool run();

private:
    void removeFiles();
    void removeLists();
    void removeSettings();
    void removeEmptyFolders();
    void deleteFile(const juce::File& file);
    void fail(const juce::String& text);

    UserStore& store;
    UserPlaces places;
    juce::File record;
    InstalledFiles files;
    /** Folders that may be left empty; read before the settings go. */
    std::vector<juce::File> folders;
    bool succeeded = true;
};

} // namespace quorel
