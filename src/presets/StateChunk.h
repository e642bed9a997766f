// SPDX-License-Identifier: GPL-3.0-or-later
// The one binary format of a sound: a host's project, a preset file and the copies that the editor compares.
// Bytes to a plain structure and back; no processor in here.
//
// All integers are 32 bits, little-endian:
//   0   magic "dmtk" (0x6B746D64)          4   current program      8   number of programs
//   12  number of parameters P             16  number of layers L   20  version, 1
//   24  preset name, 32 bytes UTF-8        56  folder name, 32 bytes
//   88  L sizes of the hosted states       then P floats of 0 to 1, then the hosted states in layer order
#pragma once

#include <juce_core/juce_core.h>

#include <array>
#include <tuple>
#include <vector>

namespace quorel
{

/** Where in a chunk of `StateChunk::maxLayers` layers things lie, in bytes. */
namespace chunkOffset
{
constexpr size_t magic = 0;
constexpr size_t currentProgram = 4;
constexpr size_t numPrograms = 8;
constexpr size_t numParameters = 12;
constexpr size_t numLayers = 16;
constexpr size_t version = 20;
constexpr size_t presetName = 24;
constexpr size_t folderName = 56;
constexpr size_t layerSizes = 88;

/** Parameters begin behind the layers' sizes; `numParameters` of them end where the hosted states begin. */
constexpr size_t parameter(size_t index) noexcept
{
    constexpr size_t layersInChunk = 4;
    return layerSizes + 4 * layersInChunk + 4 * index;
}
} // namespace chunkOffset

/** A name as a chunk holds it. */
using NameField = std::array<char, 32>;

struct StateChunk
{
    static constexpr int magic = 0x6B746D64;
    static constexpr int currentVersion = 1;
    static constexpr int nameBytes = static_cast<int>(std::tuple_size_v<NameField>);
    static constexpr int maxLayers = 4;

    int currentProgram = 0;
    int numPrograms = 1;
    /** As they are read, names that fill their fields run on into what follows: `resolveNames` finds what is
        meant. */
    juce::String presetName;
    juce::String folderName;
    /** The fields' own bytes, filled in by reading alone. */
    NameField presetField{};
    NameField folderField{};
    /** Declared sizes, by layer; 0 for a layer that stores nothing. */
    std::array<int, maxLayers> layerSizes{};
    std::vector<float> parameters;
    /** The hosted states' bytes, by layer; empty for a layer that stores nothing or whose bytes are cut off. */
    std::array<juce::MemoryBlock, maxLayers> hostedStates;
};

/** The 32 bytes of a name in the chunk: cut at the boundary of a character, zero-filled, without a
    terminator where the name takes all of them. */
NameField chunkName(const juce::String& name);

/** The text in a field, and no byte beyond it: up to the first zero, without a character that was cut. */
juce::String nameOf(const NameField& field);

/** Appends the chunk to `destination`. Hosted states go in at their real size, whatever size is declared. */
void writeStateChunk(const StateChunk& chunk, juce::MemoryBlock& destination);

enum class ChunkStatus
{
    /** Everything but hosted states was read. */
    valid,
    /** Another format or version: nothing was read. */
    foreign,
    /** The names were read; the rest doesn't fit into the bytes. */
    tooShort
};

/** Reads any bytes whatever, and never past their end. A number of layers other than four is taken as it
    comes as long as it fits: layers past the fourth are passed over. */
ChunkStatus readStateChunk(const void* data, size_t size, StateChunk& chunk);

/** Both hold the same sound. What isn't part of it doesn't count: names, the editor's view and the MIDI
    bindings. */
bool holdSameSound(const juce::MemoryBlock& first, const juce::MemoryBlock& second);

} // namespace quorel
