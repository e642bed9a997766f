// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetNotes.h"

#include "parameters/ParameterLayout.h"

#include <cstring>

namespace quorel
{

namespace
{
constexpr char firstTag[] = {'q', 'n', 'o', 't'};
constexpr char lastTag[] = {'t', 'o', 'n', 'q'};
constexpr size_t wordBytes = 4;
constexpr size_t headBytes = 3 * wordBytes;
constexpr size_t tailBytes = 2 * wordBytes;

size_t wordAt(const char* bytes)
{
    return juce::ByteOrder::littleEndianInt(bytes);
}

void append(juce::MemoryBlock& bytes, size_t number)
{
    const auto word = juce::ByteOrder::swapIfBigEndian(static_cast<juce::uint32>(number));
    bytes.append(&word, sizeof(word));
}

/** Text of a file may hold anything: what isn't text is none. */
juce::String noteOf(const char* bytes, size_t length, int longest)
{
    if (!juce::CharPointer_UTF8::isValidString(bytes, static_cast<int>(length)))
        return {};

    return cleanNote(juce::String::fromUTF8(bytes, static_cast<int>(length)), longest);
}

PresetNotes notesOf(const juce::MemoryBlock& bytes, size_t& length)
{
    length = 0;
    const auto end = chunkEnd(bytes.getData(), bytes.getSize());
    return end ? notesAtEnd(bytes.begin() + *end, bytes.getSize() - *end, length) : PresetNotes();
}
} // namespace

juce::String cleanNote(const juce::String& typed, int longest)
{
    const auto trimmed = typed.trim();
    juce::String clean;
    int count = 0;

    for (auto p = trimmed.getCharPointer(); !p.isEmpty() && count < longest; ++count)
    {
        const auto character = p.getAndAdvance();
        const bool isControl = character < 0x20 || (character >= 0x7f && character < 0xa0);
        clean += isControl ? static_cast<juce::juce_wchar>(' ') : character;
    }

    return clean.trim();
}

std::optional<size_t> chunkEnd(const void* bytes, size_t size)
{
    const auto* head = static_cast<const char*>(bytes);

    if (size < chunkOffset::parameter(0) ||
        wordAt(head + chunkOffset::magic) != static_cast<size_t>(StateChunk::magic) ||
        wordAt(head + chunkOffset::version) != static_cast<size_t>(StateChunk::currentVersion) ||
        wordAt(head + chunkOffset::numLayers) != static_cast<size_t>(StateChunk::maxLayers))
        return {};

    // A negative number is a large one here, and leads past the end.
    size_t end = chunkOffset::parameter(wordAt(head + chunkOffset::numParameters));

    for (size_t layer = 0; layer < StateChunk::maxLayers; ++layer)
        end += wordAt(head + chunkOffset::layerSizes + wordBytes * layer);

    return end <= size ? std::optional(end) : std::nullopt;
}

PresetNotes notesAtEnd(const void* bytes, size_t numTrailing, size_t& length)
{
    length = 0;

    if (numTrailing < headBytes + tailBytes)
        return {};

    const auto* end = static_cast<const char*>(bytes) + numTrailing;
    const size_t all = wordAt(end - tailBytes);

    if (std::memcmp(end - wordBytes, lastTag, wordBytes) != 0 || all > numTrailing ||
        all < headBytes + tailBytes)
        return {};

    const auto* start = end - all;
    const size_t author = wordAt(start + wordBytes);
    const size_t comment = wordAt(start + 2 * wordBytes);

    if (std::memcmp(start, firstTag, wordBytes) != 0 || author + comment + headBytes + tailBytes != all)
        return {};

    length = all;
    return {noteOf(start + headBytes, author, longestAuthor),
            noteOf(start + headBytes + author, comment, longestComment)};
}

PresetNotes readPresetNotes(const juce::MemoryBlock& bytes)
{
    size_t length = 0;
    return notesOf(bytes, length);
}

size_t numForeignBytes(const juce::MemoryBlock& bytes)
{
    size_t length = 0;
    notesOf(bytes, length);
    return bytes.getSize() - length - chunkEnd(bytes.getData(), bytes.getSize()).value_or(bytes.getSize());
}

bool storePresetNotes(juce::MemoryBlock& bytes, const PresetNotes& notes)
{
    if (!chunkEnd(bytes.getData(), bytes.getSize()))
        return false;

    size_t oldLength = 0;
    notesOf(bytes, oldLength);
    bytes.setSize(bytes.getSize() - oldLength);

    if (notes.isEmpty())
        return true;

    const auto author = cleanNote(notes.author, longestAuthor).toStdString();
    const auto comment = cleanNote(notes.comment, longestComment).toStdString();
    bytes.append(firstTag, wordBytes);
    append(bytes, author.size());
    append(bytes, comment.size());
    bytes.append(author.data(), author.size());
    bytes.append(comment.data(), comment.size());
    append(bytes, headBytes + author.size() + comment.size() + tailBytes);
    bytes.append(lastTag, wordBytes);
    return true;
}

} // namespace quorel
