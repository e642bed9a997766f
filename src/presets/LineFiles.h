// SPDX-License-Identifier: GPL-3.0-or-later
// A folder of small text files of one kind, layouts or controller tables, and the menu over it. Message
// thread.
#pragma once

#include "platform/MenuEntries.h"

#include <juce_core/juce_core.h>

namespace quorel
{

class UserInteraction;

/** Files of one kind: those in `folder` that end in `ending`, dot included. */
struct LineFiles
{
    juce::File folder;
    juce::String ending;
    /** What the menu calls one of them: "Layout". */
    juce::String kind;

    /** Sorted by name. None without a folder. */
    juce::Array<juce::File> list() const;

    /** The file in the folder of exactly this name, ending included; an empty file where there is none. */
    juce::File find(const juce::String& fileName) const;

    /** True for a file in the folder with the ending, whether it exists or not. */
    bool mayHold(const juce::File& file) const;
};

namespace lineFileMenuId
{
constexpr int reset = 1;
constexpr int save = 2;
constexpr int remove = 3;
constexpr int firstFile = 4;
} // namespace lineFileMenuId

/** Three commands, the first of them called `resetText`, then the files without their ending, the one called
    `currentName` (ending included) ticked. Each of these rows carries its file. */
MenuEntries lineFileMenu(const LineFiles& files, const juce::String& resetText,
                         const juce::String& currentName);

/** Reads the file that was chosen from the menu. False, and the user knows why, where it can't be read; false
    as well for a file of another folder or kind than is now in question. */
bool readLinesOf(const LineFiles& files, const juce::File& chosen, int maxLines, juce::StringArray& lines,
                 UserInteraction& user);

/** Lets the user name a file and writes the lines to it. The file's name, or an empty text if the user
    cancelled or was told that the file could not be written. A name without the ending gets it: the menu
    would never show the file otherwise. */
juce::String saveLinesAs(const LineFiles& files, const juce::String& title, const juce::String& suggestedName,
                         const juce::StringArray& lines, UserInteraction& user);

/** Asks, then moves the file of that name in the folder to the trash, or, where the user agrees to that,
    deletes it for good. False where it stayed: the user wanted it to, or was told why. */
bool deleteLineFile(const LineFiles& files, const juce::String& fileName, UserInteraction& user);

} // namespace quorel
