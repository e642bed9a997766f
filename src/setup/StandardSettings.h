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

/** Name of the setting, under the same key as `ownSettings`, that holds the version which set the user up last. */
constexpr const char* setupVersion = "Setup Version";

/** True for a user who has been set up by an older version than this one, such as "1.4.0", or not at all. */
bool isSetUpBefore(const UserStore& store, const juce::String& version);

/** The list of what setup has installed. */
juce::File installedFilesIn(const UserPlaces& places);

/** What a setup without a user to talk to couldn't do. */
juce::File setupLogIn(const UserPlaces& places);

/** Names of the table of instruments, each once. */
juce::StringArray instrumentNames();

/** The bank folder of one of these. */
StandardSetting bankFolderOf(const juce::String& instrument, const UserPlaces& places);

} // namespace quorel
