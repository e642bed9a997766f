// SPDX-License-Identifier: GPL-3.0-or-later
// Where this product is installed, and where a user's hosts look for plug-ins. Any thread but the audio thread.
#pragma once

#include <juce_core/juce_core.h>

#include <vector>

namespace quorel
{

/** The file of the program or plug-in that this code is in, behind all links. No file where it has been moved or
    deleted since it was started. */
juce::File ownFile();

/** The folder with the starter instruments in "Ostrand", their banks in "Banks", the factory presets in "presets"
    and the user guide in "Help": the one that `ownFile`, or the bundle around it, lies in or belongs to by the usual
    places, else one at a usual place. No file where there is none. */
juce::File productFolder();

/** A plug-in of this product, and where a user's hosts look for such. */
struct PluginHome
{
    /** Of its file or bundle. */
    juce::String name;
    /** Of the folder beside `productFolder` that has the installed one: "vst". */
    juce::String installedIn;
    juce::File folderOfUser;
};

/** One for each format that may be installed, for a user with this home folder. None where users have no such
    folders. */
std::vector<PluginHome> pluginHomes(const juce::File& home);

} // namespace quorel
