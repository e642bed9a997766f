// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <fstream>
#include <gtest/gtest.h>
#include <juce_core/juce_core.h>
#include <optional>

#if !JUCE_WINDOWS
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace quorel::test
{

/** Puts into a folder of banks what looks like presets and is none: links that lead nowhere, or round in a
    circle, a pipe, a name that isn't valid text; and beside it the link "Self" to all banks, which is a folder. False
    where the platform has no such things, or only for some users. */
inline bool addOddFiles(const juce::File& folder)
{
#if JUCE_WINDOWS
    juce::ignoreUnused(folder);
    return false;
#else
    const auto link = [](const char* target, const juce::File& place)
    { EXPECT_EQ(symlink(target, place.getFullPathName().toRawUTF8()), 0) << target; };
    link("loop.qrl", folder.getChildFile("loop.qrl"));
    link("nowhere", folder.getChildFile("lost.qrl"));
    link("..", folder.getChildFile("up"));
    link(".", folder.getSiblingFile("Self"));
    link("Ring", folder.getSiblingFile("Ring"));
    EXPECT_EQ(mkfifo(folder.getChildFile("pipe.qrl").getFullPathName().toRawUTF8(), 0600), 0);
    std::ofstream((folder.getFullPathName() + "/bad\xff.qrl").toStdString()) << "x";
    return true;
#endif
}

/** The folder by another path than its own: a link at `place`, or where only some users may make links, by letters of
    the other case. */
inline juce::File byAnotherPath(const juce::File& folder, const juce::File& place)
{
#if JUCE_WINDOWS
    juce::ignoreUnused(place);
    return folder.getSiblingFile(folder.getFileName().toUpperCase());
#else
    EXPECT_TRUE(folder.createSymbolicLink(place, true));
    return place;
#endif
}

/** The folder for what the user deletes, which a test may make and take away; nothing where it is the system's. */
inline std::optional<juce::File> ownTrash()
{
#if JUCE_WINDOWS
    return {};
#else
    return juce::File(juce::SystemStats::getEnvironmentVariable("XDG_DATA_HOME", {})).getChildFile("Trash");
#endif
}

} // namespace quorel::test
