// SPDX-License-Identifier: GPL-3.0-or-later
// Who made a preset, and what they say about it. Both stand behind the end of its chunk, where readers that know
// nothing of them pass them over:
//   "qnot"   A   C   A bytes author, C bytes comment, UTF-8   length of all of this   "tonq"
// with A, C and the length as 32 bits, little-endian. Other bytes may lie between the chunk and these. Any thread.
#pragma once

#include "presets/StateChunk.h"

#include <juce_core/juce_core.h>

#include <optional>

namespace quorel
{

/** In characters. */
constexpr int longestAuthor = 64;
constexpr int longestComment = 500;

struct PresetNotes
{
    juce::String author;
    juce::String comment;

    bool isEmpty() const { return author.isEmpty() && comment.isEmpty(); }

    bool operator==(const PresetNotes& other) const
    {
        return author == other.author && comment == other.comment;
    }
};

/** Text as notes keep it: one line, without control characters, of at most `longest` characters. */
juce::String cleanNote(const juce::String& typed, int longest);

/** Where the chunk ends by what it declares; nothing for bytes that hold less than that, or no chunk. `bytes` need
    hold no more than the chunk's first `chunkOffset::parameter(0)` of all `size`. */
std::optional<size_t> chunkEnd(const void* bytes, size_t size);

/** The notes at the end of a file's last bytes; `numTrailing` is how many of them lie behind the chunk. Empty
    where there are none, or they make no sense. `length` takes how many bytes they are. */
PresetNotes notesAtEnd(const void* bytes, size_t numTrailing, size_t& length);

/** The notes in a preset's bytes. */
PresetNotes readPresetNotes(const juce::MemoryBlock& bytes);

/** Bytes that lie behind the chunk and are no notes. */
size_t numForeignBytes(const juce::MemoryBlock& bytes);

/** Puts notes into a preset's bytes in place of what they have; all other bytes stay. Empty notes take no room.
    False, with nothing changed, for bytes that aren't a whole chunk. */
bool storePresetNotes(juce::MemoryBlock& bytes, const PresetNotes& notes);

/** More bytes than notes ever take. */
constexpr size_t mostNoteBytes = 4 * (longestAuthor + longestComment) + 64;

} // namespace quorel
