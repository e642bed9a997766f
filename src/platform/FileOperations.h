// SPDX-License-Identifier: GPL-3.0-or-later
// Reading, replacing, moving and discarding files so that nothing is ever half done. Any thread but the audio
// thread.
#pragma once

#include <juce_core/juce_core.h>

#include <filesystem>

namespace quorel
{

/** No file of ours comes near this size; a larger one is refused before it is read into memory. */
constexpr juce::int64 largestWholeFile = 256 * 1024 * 1024;

/** The path as the standard library has it, and back. A name that isn't valid Unicode gives an empty text:
    JUCE's strings can't hold it. */
std::filesystem::path pathOf(const juce::File& file);
juce::String textOf(const std::filesystem::path& path);

/** Reads a whole file. False if it can't be opened, isn't a regular file, is larger than `largestWholeFile`,
    or gives fewer bytes than its size. */
bool readWholeFile(const juce::File& file, juce::MemoryBlock& bytes);

/** Writes `bytes` beside the file, down to the disk, and moves them into place, with any missing folders:
    whatever goes wrong, a crash included, the file holds its old content or the new one whole. */
bool replaceFile(const juce::File& file, const juce::MemoryBlock& bytes);

/** Renames a file or folder. A file at the new place is replaced, in one step. */
bool moveFile(const juce::File& from, const juce::File& to);

/** Moves a file or folder to the desktop's trash; where there is none, or it won't take it, deletes it with
    all its contents. True if it is gone. A link is removed itself, not what it leads to. */
bool discardFile(const juce::File& file);

} // namespace quorel
