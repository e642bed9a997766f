// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/StateChunk.h"

#include "parameters/ParameterLayout.h"

#include <cstring>

namespace quorel
{

namespace
{
/** A chunk below this size and its parameters is refused. It is smaller than the true header: a sanity
    check, which older chunks rely on. */
constexpr juce::int64 sanityHeader = 72;

/** Bytes that aren't UTF-8 come from a damaged chunk: they are read one character each. */
juce::String textOfBytes(const char* first, size_t length)
{
    if (juce::CharPointer_UTF8::isValidString(first, static_cast<int>(length)))
        return juce::String::fromUTF8(first, static_cast<int>(length));

    juce::String text;

    for (size_t i = 0; i < length; ++i)
        text +=
            juce::String::charToString(static_cast<juce::juce_wchar>(static_cast<unsigned char>(first[i])));

    return text;
}

bool continuesCharacter(char byte) noexcept
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

class ByteReader
{
public:
    ByteReader(const void* bytes, size_t numBytes)
        : data(static_cast<const char*>(bytes))
        , size(numBytes)
    {
    }

    bool holds(size_t offset, size_t count) const noexcept
    {
        return offset <= size && count <= size - offset;
    }

    int integerAt(size_t offset) const noexcept
    {
        return holds(offset, 4) ? static_cast<int>(juce::ByteOrder::littleEndianInt(data + offset)) : 0;
    }

    float floatAt(size_t offset) const noexcept
    {
        const juce::uint32 bits = juce::ByteOrder::littleEndianInt(data + offset);
        float value = 0.0f;
        std::memcpy(&value, &bits, sizeof(value));
        return value;
    }

    /** Up to the first zero: a name that fills its field runs on into what follows. */
    juce::String textAt(size_t offset) const
    {
        if (offset >= size)
            return {};

        const char* first = data + offset;
        const void* end = std::memchr(first, 0, size - offset);
        const size_t length =
            end != nullptr ? static_cast<size_t>(static_cast<const char*>(end) - first) : size - offset;

        return textOfBytes(first, length);
    }

    /** The field's own bytes; what lies past the end of the chunk is zero. */
    NameField fieldAt(size_t offset) const
    {
        NameField field{};

        if (offset < size)
            std::memcpy(field.data(), data + offset, juce::jmin(field.size(), size - offset));

        return field;
    }

    const char* at(size_t offset) const noexcept { return data + offset; }

    size_t length() const noexcept { return size; }

private:
    const char* data;
    size_t size;
};

void appendInteger(juce::MemoryBlock& destination, int value)
{
    const juce::uint32 bytes = juce::ByteOrder::swapIfBigEndian(static_cast<juce::uint32>(value));
    destination.append(&bytes, sizeof(bytes));
}

void appendFloat(juce::MemoryBlock& destination, float value)
{
    juce::uint32 bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    appendInteger(destination, static_cast<int>(bits));
}

/** Splits what follows the parameters among the layers, by their declared sizes. */
void readHostedStates(const ByteReader& reader, size_t offset, StateChunk& chunk)
{
    for (size_t layer = 0; layer < chunk.layerSizes.size(); ++layer)
    {
        const int declared = chunk.layerSizes[layer];

        if (declared == 0)
            continue;

        // A size that is negative or runs past the end leaves this layer and all behind it without a state.
        if (declared < 0 || !reader.holds(offset, static_cast<size_t>(declared)))
            return;

        chunk.hostedStates[layer] = juce::MemoryBlock(reader.at(offset), static_cast<size_t>(declared));
        offset += static_cast<size_t>(declared);
    }
}
} // namespace

NameField chunkName(const juce::String& name)
{
    NameField bytes{};
    const char* text = name.toRawUTF8();
    size_t length = std::strlen(text);

    if (length > bytes.size())
    {
        length = bytes.size();

        // Step back over the continuation bytes of a character that doesn't fit whole.
        while (length > 0 && continuesCharacter(text[length]))
            --length;
    }

    std::memcpy(bytes.data(), text, length);
    return bytes;
}

juce::String nameOf(const NameField& field)
{
    const auto* end = static_cast<const char*>(std::memchr(field.data(), 0, field.size()));

    if (end != nullptr)
        return textOfBytes(field.data(), static_cast<size_t>(end - field.data()));

    // Another writer may have cut within a character, which has four bytes at most.
    size_t length = field.size();

    for (size_t start = length; start-- > length - 4;)
    {
        if (continuesCharacter(field[start]))
            continue;

        const auto lead = static_cast<unsigned char>(field[start]);
        const size_t wanted = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : lead >= 0xc0 ? 2 : 1;
        length = start + wanted > length ? start : length;
        break;
    }

    return textOfBytes(field.data(), length);
}

void writeStateChunk(const StateChunk& chunk, juce::MemoryBlock& destination)
{
    appendInteger(destination, StateChunk::magic);
    appendInteger(destination, chunk.currentProgram);
    appendInteger(destination, chunk.numPrograms);
    appendInteger(destination, static_cast<int>(chunk.parameters.size()));
    appendInteger(destination, StateChunk::maxLayers);
    appendInteger(destination, StateChunk::currentVersion);
    destination.append(chunkName(chunk.presetName).data(), StateChunk::nameBytes);
    destination.append(chunkName(chunk.folderName).data(), StateChunk::nameBytes);

    for (const int size : chunk.layerSizes)
        appendInteger(destination, size);

    for (const float value : chunk.parameters)
        appendFloat(destination, value);

    for (size_t layer = 0; layer < chunk.hostedStates.size(); ++layer)
        if (chunk.layerSizes[layer] != 0)
            destination.append(chunk.hostedStates[layer].getData(), chunk.hostedStates[layer].getSize());
}

ChunkStatus readStateChunk(const void* data, size_t size, StateChunk& chunk)
{
    chunk = {};

    if (data == nullptr)
        return ChunkStatus::foreign;

    const ByteReader reader(data, size);

    if (!reader.holds(0, chunkOffset::presetName) ||
        reader.integerAt(chunkOffset::magic) != StateChunk::magic ||
        reader.integerAt(chunkOffset::version) != StateChunk::currentVersion)
        return ChunkStatus::foreign;

    chunk.currentProgram = reader.integerAt(chunkOffset::currentProgram);
    chunk.numPrograms = reader.integerAt(chunkOffset::numPrograms);
    chunk.presetName = reader.textAt(chunkOffset::presetName);
    chunk.folderName = reader.textAt(chunkOffset::folderName);
    chunk.presetField = reader.fieldAt(chunkOffset::presetName);
    chunk.folderField = reader.fieldAt(chunkOffset::folderName);

    const juce::int64 numParameters = reader.integerAt(chunkOffset::numParameters);
    const juce::int64 numLayersInChunk = reader.integerAt(chunkOffset::numLayers);
    const auto available = static_cast<juce::int64>(reader.length());
    const juce::int64 parametersOffset =
        static_cast<juce::int64>(chunkOffset::layerSizes) + 4 * numLayersInChunk;

    if (numParameters < 0 || numLayersInChunk < 0 || available < 4 * numParameters + sanityHeader ||
        available < parametersOffset)
        return ChunkStatus::tooShort;

    for (size_t layer = 0;
         layer < chunk.layerSizes.size() && static_cast<juce::int64>(layer) < numLayersInChunk; ++layer)
        chunk.layerSizes[layer] = reader.integerAt(chunkOffset::layerSizes + 4 * layer);

    // The sanity check admits a chunk whose last parameters are cut off: those that are there count.
    const juce::int64 present = juce::jmin(numParameters, (available - parametersOffset) / 4);
    const juce::int64 wanted = juce::jmin<juce::int64>(present, numHostParameters);
    chunk.parameters.reserve(static_cast<size_t>(wanted));

    for (juce::int64 i = 0; i < wanted; ++i)
        chunk.parameters.push_back(reader.floatAt(static_cast<size_t>(parametersOffset + 4 * i)));

    if (present == numParameters)
        readHostedStates(reader, static_cast<size_t>(parametersOffset + 4 * numParameters), chunk);

    return ChunkStatus::valid;
}

bool holdSameSound(const juce::MemoryBlock& first, const juce::MemoryBlock& second)
{
    StateChunk a;
    StateChunk b;

    if (readStateChunk(first.getData(), first.getSize(), a) != ChunkStatus::valid ||
        readStateChunk(second.getData(), second.getSize(), b) != ChunkStatus::valid ||
        a.parameters.size() != b.parameters.size() || a.hostedStates != b.hostedStates)
        return false;

    for (size_t i = 0; i < a.parameters.size(); ++i)
        if (const int index = static_cast<int>(i);
            a.parameters[i] != b.parameters[i] && index != slot::view &&
            !isWithin(index, slot::presetNameText, 2 * slot::nameTextLength) &&
            !isWithin(index, slot::controllerMap, numControllers))
            return false;

    return true;
}

} // namespace quorel
