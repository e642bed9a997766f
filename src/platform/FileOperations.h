// SPDX-License-Identifier: GPL-3.0-or-later
// Reading, replacing, moving and discarding files so that nothing is ever half done. Any thread but the audio
// thread.
#pragma once

#include <juce_core/juce_core.h>

#include <functional>

namespace quorel
{

/** No file of ours comes near this size; a larger one is refused before it is read into memory. */
constexpr juce::int64 largestWholeFile = 256 * 1024 * 1024;

/** Fails, saying why, for what isn't there or isn't a regular file: opening a pipe would wait for somebody to
    write to it. */
juce::Result checkReadable(const juce::File& file);

/** Reads a whole file, as it is when it is opened: one that takes its place meanwhile isn't read. False if it
    can't be opened, isn't a regular file, or is larger than `largestWholeFile`. Waits up to half a second where
    another program is in the way. */
bool readWholeFile(const juce::File& file, juce::MemoryBlock& bytes);

/** Gives a file new contents, whole or not at all, as `FileReplacement` says. What went wrong is told in the
    system's words, such as "No space left on device". */
juce::Result replaceFile(const juce::File& file, const juce::MemoryBlock& bytes);

enum class ModeOfCopy
{
    /** That of the file that is replaced, or of any new one. */
    asReplaced,
    asOriginal
};

/** The same with the contents of another file, of any size. */
juce::Result copyFile(const juce::File& from, const juce::File& to, ModeOfCopy mode = ModeOfCopy::asReplaced);

/** Makes a folder, and those above it that aren't there, whoever else makes one of them at the same moment. */
juce::Result createFolder(const juce::File& folder);

/** Renames a file or folder. A file at the new place is replaced, in one step. */
juce::Result moveFile(const juce::File& from, const juce::File& to);

/** Deletes a file or a folder with all its contents, past recall. A link is removed itself, not what it leads
    to. */
juce::Result deleteForGood(const juce::File& file);

/** What became of a file that the user wanted to be rid of. */
struct Discarded
{
    enum class Outcome
    {
        gone,
        /** The trash didn't take it, and the user doesn't want to lose it for good. */
        kept,
        failed
    };

    Outcome outcome;
    /** Why it failed. */
    juce::String reason;
};

/** Moves a file or folder to the desktop's trash. Where there is none, or it won't take it, deletes it for
    good if `agrees` answers yes to the question that it is given. */
Discarded discardFile(const juce::File& file,
                      const std::function<bool(const juce::String& question)>& agrees);

} // namespace quorel
