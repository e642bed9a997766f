// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetDocument.h"

#include "effects/EffectMath.h"
#include "parameters/ParameterLayout.h"
#include "platform/FileOperations.h"
#include "presets/StoredNames.h"

#include <cstring>

namespace quorel
{

namespace
{
int integerAt(const juce::MemoryBlock& bytes, std::size_t offset)
{
    return static_cast<int>(
        juce::ByteOrder::littleEndianInt(static_cast<const char*>(bytes.getData()) + offset));
}

juce::String count(juce::int64 number, const char* what)
{
    return juce::String(number) + " " + what + (number == 1 ? "" : "s");
}
} // namespace

juce::String whyNotAPreset(const juce::MemoryBlock& bytes, StateChunk& chunk)
{
    const auto status = readStateChunk(bytes.getData(), bytes.getSize(), chunk);
    const auto size = static_cast<juce::int64>(bytes.getSize());
    if (size == 0)
        return "the file is empty";
    if (size < static_cast<juce::int64>(chunkOffset::presetName))
        return "too short to be a preset: " + count(size, "byte");
    if (integerAt(bytes, chunkOffset::magic) != StateChunk::magic)
        return "not a preset: the file is of another format";
    if (status == ChunkStatus::foreign)
        return "of format version " + juce::String(integerAt(bytes, chunkOffset::version)) + ", not " +
               juce::String(StateChunk::currentVersion);

    const int layers = integerAt(bytes, chunkOffset::numLayers);
    const int parameters = integerAt(bytes, chunkOffset::numParameters);
    if (layers != numLayers)
        return "has " + count(layers, "layer") + ", not " + juce::String(numLayers);
    if (parameters != numHostParameters)
        return "has " + count(parameters, "parameter") + ", not " + juce::String(numHostParameters);
    if (status == ChunkStatus::tooShort || chunk.parameters.size() < numHostParameters)
        return "the preset is cut off after " + count(size, "byte") + " of at least " +
               juce::String(static_cast<juce::int64>(chunkOffset::parameter(numHostParameters)));
    return {};
}

juce::Result PresetDocument::parse(const juce::MemoryBlock& bytes, PresetDocument& document)
{
    const auto problem = whyNotAPreset(bytes, document.content);
    if (problem.isNotEmpty())
        return juce::Result::fail(problem);
    document.data = bytes;
    return juce::Result::ok();
}

juce::Result PresetDocument::open(const juce::File& file, PresetDocument& document)
{
    juce::MemoryBlock bytes;
    if (const auto result = readPresetBytes(file, bytes); result.failed())
        return result;
    const auto result = parse(bytes, document);
    return result.wasOk() ? result
                          : juce::Result::fail(file.getFullPathName() + ": " + result.getErrorMessage());
}

juce::Result readPresetBytes(const juce::File& file, juce::MemoryBlock& bytes)
{
    const auto fail = [&](const char* what)
    { return juce::Result::fail(file.getFullPathName() + ": " + what); };
    if (file.isDirectory())
        return fail("is a folder");
    if (!file.exists())
        return fail("does not exist");
    if (file.getSize() > largestWholeFile)
        return fail("too large to be a preset");
    if (!readWholeFile(file, bytes))
        return fail("cannot be read");
    return juce::Result::ok();
}

juce::String whatStatesLack(const StateChunk& chunk, std::size_t numBytes, std::size_t& end)
{
    end = chunkOffset::parameter(chunk.parameters.size());
    for (int layer = 0; layer < numLayers; ++layer)
    {
        const int size = chunk.layerSizes[static_cast<std::size_t>(layer)];
        const auto title = "layer " + juce::String(layer + 1);
        if (size < 0)
            return title + " declares a state of " + juce::String(size) + " bytes";
        const auto left = numBytes - end;
        if (static_cast<std::size_t>(size) > left)
            return title + "'s state is cut off: " + juce::String(size) + " bytes declared, " +
                   juce::String(static_cast<juce::int64>(left)) + " there";
        end += static_cast<std::size_t>(size);
    }
    return {};
}

juce::String PresetDocument::whatStatesLack() const
{
    std::size_t end = 0;
    return quorel::whatStatesLack(content, data.getSize(), end);
}

void PresetDocument::setPresetName(const juce::String& preset)
{
    storePresetName(data, preset);
    readStateChunk(data.getData(), data.getSize(), content);
    content.presetName = preset;
}

void PresetDocument::setFolderName(const juce::String& folder)
{
    storeFolderName(data, folder);
    readStateChunk(data.getData(), data.getSize(), content);
    content.folderName = folder;
}

float PresetDocument::readParameter(int index) const noexcept
{
    const auto i = static_cast<std::size_t>(index);
    return i < content.parameters.size() ? clampUnit(content.parameters[i]) : 0.0f;
}

void PresetDocument::writeParameter(int index, float newValue)
{
    const auto i = static_cast<std::size_t>(index);
    if (i >= content.parameters.size())
        return;
    const float value = clampUnit(newValue);
    content.parameters[i] = value;
    juce::uint32 bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    bits = juce::ByteOrder::swapIfBigEndian(bits);
    std::memcpy(static_cast<char*>(data.getData()) + chunkOffset::parameter(i), &bits, sizeof(bits));
}

} // namespace quorel
