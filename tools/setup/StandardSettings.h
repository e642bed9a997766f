// SPDX-License-Identifier: GPL-3.0-or-later
// What setup writes to a user's settings, and where the instruments' banks lie then.
#pragma once

#include "platform/PlatformSeam.h"

#include <vector>

namespace quorel
{

struct StandardSetting
{
    juce::String key;
    juce::String name;
    juce::File standard;
};

/** Those of this instrument. */
std::vector<StandardSetting> ownSettings(const UserPlaces& places);

/** The list of what setup has installed. */
juce::File installedFilesIn(const UserPlaces& places);

/** Names of the table of instruments, each once. */
juce::StringArray instrumentNames();

/** The bank folder of one of these. */
StandardSetting bankFolderOf(const juce::String& instrument, const UserPlaces& places);

} // namespace quorel
