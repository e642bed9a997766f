// SPDX-License-Identifier: GPL-3.0-or-later
// What is written down while a plug-in file is opened. Foreign code runs then, and may take the process down;
// without a note the next start would run into the same file. Message thread.
#pragma once

#include "platform/PlatformSeamProgram.h"

#include <juce_core/juce_core.h>

#include <optional>
#include <vector>

namespace quorel
{

/** On disk, beside the list of plug-ins, for as long as this lives. Without a list file, or where nothing can
    be written, there is no note. */
class LoadNote
{
public:
    LoadNote(const juce::File& pluginListFile, const juce::String& pluginPath);
    ~LoadNote();

    LoadNote(const LoadNote&) = delete;
    LoadNote& operator=(const LoadNote&) = delete;

private:
    juce::File file;
    /** Whoever ends a program while it opens a plug-in doesn't say that the plug-in is bad. */
    std::optional<FileUntilSignal> ended;
};

/** A note that was never struck out: its process is gone. */
struct LeftNote
{
    juce::File file;
    juce::String pluginPath;
};

/** Those beside this list file. Notes of processes that are running aren't among them. */
std::vector<LeftNote> findLeftNotes(const juce::File& pluginListFile);

} // namespace quorel
