// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/PlatformSeam.h"
#include "setup/InstalledFiles.h"
#include "setup/SetupWords.h"

#include <vector>

namespace quorel
{

/** Takes back what setup has done for a user: the files that it installed, as long as the user hasn't changed them,
    its list of them, the list of known instruments, the settings that have the value that setup gives them, and
    folders that are empty then. What is the user's stays. */
class Remover
{
public:
    Remover(UserStore& store, const UserPlaces& places, const SetupWords& words);

    /** Does everything and says so. False where anything failed; the rest is done all the same. */
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
    const SetupWords& words;
    juce::File record;
    InstalledFiles files;
    /** Folders that may be left empty; read before the settings go. */
    std::vector<juce::File> folders;
    bool succeeded = true;
};

} // namespace quorel
