// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/PlatformSeam.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

namespace quorel::test
{

/** Copies the faulty instrument into a plug-in folder under a name of the family's table, as nothing else is
    scanned. Its source says what `faults`, words between blanks, there are. */
inline void installFaulty(const juce::File& pluginFolder, const juce::String& name,
                          const juce::String& faults = {})
{
    const auto place = pluginFolder.getChildFile(name).getChildFile(name + pluginFileEnding());
    place.getParentDirectory().createDirectory();
    place.withFileExtension("faults").replaceWithText(faults);
    EXPECT_TRUE(juce::File(QUOREL_TEST_FAULTY).copyFileTo(place));
}

/** Gives the rig a plug-in folder of its own with the faulty instrument in it, under each of these names and
    without a fault, and returns the folder. `setFaults` changes that. */
inline juce::File useFaulty(ProcessorRig& rig, const juce::StringArray& names)
{
    const auto folder = rig.user.scratch.child("faulty/Ostrand");

    for (const auto& name : names)
        installFaulty(folder, name);

    rig.processor.getInstallation().changePluginFolder(folder);
    EXPECT_EQ(rig.processor.getKnownPlugins().getNumTypes(), names.size());
    return folder;
}

/** Counts from the instrument's next call, though what it puts out is settled when it is loaded. */
inline void setFaults(const juce::File& pluginFolder, const juce::String& name, const juce::String& faults)
{
    pluginFolder.getChildFile(name).getChildFile(name + ".faults").replaceWithText(faults);
}

} // namespace quorel::test
