// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/StoredNames.h"

#include "effects/EffectMath.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterLayout.h"
#include "parameters/ParameterText.h"
#include "platform/FileNames.h"
#include "presets/PresetFiles.h"

#include <cstring>

namespace quorel
{

namespace
{
/** A cut at the boundary of a character may leave three bytes of the field free. */
bool mayBeCut(const NameField& field)
{
    constexpr size_t longestGap = 3;
    return std::memchr(field.data(), 0, field.size() - longestGap) == nullptr;
}

/** The name is stored as these bytes, be it cut between characters or within one. */
bool isStoredAs(const juce::String& name, const NameField& field)
{
    const char* bytes = name.toRawUTF8();
    return chunkName(name) == field ||
           (std::strlen(bytes) > field.size() && std::memcmp(bytes, field.data(), field.size()) == 0);
}

juce::StringArray namesStoredAs(const NameField& field, juce::StringArray names)
{
    for (int i = names.size(); --i >= 0;)
        if (!isStoredAs(names[i], field))
            names.remove(i);

    return names;
}

/** The parameters in a chunk's bytes, to write texts to. */
class ParametersOfBytes final : public ParameterAccess
{
public:
    explicit ParametersOfBytes(juce::MemoryBlock& chunkBytes)
        : bytes(chunkBytes)
    {
    }

    float readParameter(int index) const noexcept override
    {
        const auto bits = juce::ByteOrder::littleEndianInt(bytes.begin() + offsetOf(index));
        float value = 0.0f;
        std::memcpy(&value, &bits, sizeof(value));
        return value;
    }

    void writeParameter(int index, float newValue) override
    {
        const float value = clampUnit(newValue);
        juce::uint32 bits = 0;
        std::memcpy(&bits, &value, sizeof(bits));
        bits = juce::ByteOrder::swapIfBigEndian(bits);
        std::memcpy(bytes.begin() + offsetOf(index), &bits, sizeof(bits));
    }

    void writeParameterNotifyingHost(int index, float value) override { writeParameter(index, value); }

private:
    static size_t offsetOf(int index) noexcept { return chunkOffset::parameter(static_cast<size_t>(index)); }

    juce::MemoryBlock& bytes;
};

bool storeName(juce::MemoryBlock& bytes, const juce::String& name, size_t headerOffset, int firstParameter)
{
    StateChunk chunk;

    if (readStateChunk(bytes.getData(), bytes.getSize(), chunk) != ChunkStatus::valid)
        return false;

    const auto field = chunkName(name);
    std::memcpy(bytes.begin() + headerOffset, field.data(), field.size());
    // With another number of layers, the parameters lie elsewhere.
    const auto layers = juce::ByteOrder::littleEndianInt(bytes.begin() + chunkOffset::numLayers);

    if (layers == StateChunk::maxLayers &&
        static_cast<int>(chunk.parameters.size()) >= firstParameter + slot::nameTextLength)
    {
        ParametersOfBytes parameters(bytes);
        writeParamText(parameters, firstParameter, name, slot::nameTextLength);
    }

    return true;
}
} // namespace

StoredNames resolveNames(const juce::File& banksFolder, const StateChunk& chunk)
{
    StoredNames names{nameOf(chunk.presetField), nameOf(chunk.folderField)};

    if (!mayBeCut(chunk.presetField) && !mayBeCut(chunk.folderField))
        return names;

    const auto folders = namesStoredAs(chunk.folderField, listPresetFolders(banksFolder));
    StoredNames found = names;
    int count = 0;

    for (const auto& folder : folders)
    {
        for (const auto& preset :
             namesStoredAs(chunk.presetField, listPresets(childNamed(banksFolder, folder))))
        {
            found = {preset, folder};
            ++count;
        }
    }

    if (count == 1)
        return found;

    // The preset may be gone, or never have been saved; its folder can still be the only one.
    if (folders.size() == 1)
        names.folder = folders[0];

    return names;
}

juce::String storedInstrument(const StateChunk& chunk, int layer)
{
    const auto first = static_cast<size_t>(layerParameter(layer, layerSlot::pluginNameText));
    juce::String name;

    for (size_t i = first; i < first + slot::nameTextLength && i < chunk.parameters.size(); ++i)
    {
        const char character = decodeParamChar(chunk.parameters[i]);

        if (character == 0)
            break;

        name += juce::String::charToString(static_cast<unsigned char>(character));
    }

    return name;
}

bool storePresetName(juce::MemoryBlock& bytes, const juce::String& name)
{
    return storeName(bytes, name, chunkOffset::presetName, slot::presetNameText);
}

bool storeFolderName(juce::MemoryBlock& bytes, const juce::String& name)
{
    return storeName(bytes, name, chunkOffset::folderName, slot::folderNameText);
}

} // namespace quorel
