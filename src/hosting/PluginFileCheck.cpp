// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/PluginFileCheck.h"

#include <algorithm>
#include <iterator>

namespace quorel
{

namespace
{
// Offsets of the ELF-64 layout, little-endian.
constexpr int headerSize = 64;
constexpr int programHeaderOffset = 32;
constexpr int programHeaderSize = 54;
constexpr int programHeaderCount = 56;
constexpr int smallestProgramHeader = 56;
constexpr int segmentFileOffset = 8;
constexpr int segmentFileSize = 32;
constexpr juce::uint32 loadableSegment = 1;

bool isElf64(const juce::uint8* header)
{
    constexpr juce::uint8 start[] = {0x7f, 'E', 'L', 'F', 2, 1};
    return std::equal(std::begin(start), std::end(start), header);
}
} // namespace

bool isWholePluginFile(const juce::File& file)
{
    juce::FileInputStream in(file);
    juce::uint8 header[headerSize] = {};
    if (!in.openedOk() || in.read(header, headerSize) < headerSize || !isElf64(header))
        return true;

    const auto length = static_cast<juce::uint64>(in.getTotalLength());
    const auto fits = [length](juce::uint64 offset, juce::uint64 size)
    { return offset <= length && size <= length - offset; };

    const auto table = juce::ByteOrder::littleEndianInt64(header + programHeaderOffset);
    const auto entrySize = juce::ByteOrder::littleEndianShort(header + programHeaderSize);
    const auto numEntries = juce::ByteOrder::littleEndianShort(header + programHeaderCount);
    if (entrySize < smallestProgramHeader || !fits(table, juce::uint64{entrySize} * numEntries))
        return false;

    for (juce::uint64 i = 0; i < numEntries; ++i)
    {
        juce::uint8 entry[smallestProgramHeader] = {};
        if (!in.setPosition(static_cast<juce::int64>(table + i * entrySize)) ||
            in.read(entry, smallestProgramHeader) < smallestProgramHeader)
            return false;
        if (juce::ByteOrder::littleEndianInt(entry) == loadableSegment &&
            !fits(juce::ByteOrder::littleEndianInt64(entry + segmentFileOffset),
                  juce::ByteOrder::littleEndianInt64(entry + segmentFileSize)))
            return false;
    }
    return true;
}

} // namespace quorel
