// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/HostedState.h"

#include <cstring>

namespace quorel
{

namespace
{
// All numbers in these files are big-endian, of 32 bits.
constexpr juce::int64 magicOffset = 8;
constexpr juce::int64 versionOffset = 12;
constexpr juce::int64 countOffset = 24;
constexpr juce::int64 shortestState = 28;
constexpr juce::int64 nameOffset = 28;
constexpr juce::int64 nameLength = 28;
constexpr juce::int64 programValues = 56;
constexpr juce::int64 bankHeader = 156;
constexpr int newestVersion = 1;

class BankBytes
{
public:
    explicit BankBytes(const juce::MemoryBlock& block)
        : bytes(static_cast<const char*>(block.getData()))
        , size(static_cast<juce::int64>(block.getSize()))
    {
    }

    bool holds(juce::int64 offset, juce::int64 length) const
    {
        return offset >= 0 && length >= 0 && offset <= size && length <= size - offset;
    }

    /** The caller has asked `holds`. */
    int number(juce::int64 offset) const
    {
        return static_cast<int>(juce::ByteOrder::bigEndianInt(bytes + offset));
    }

    /** In either byte order, as the reader takes it. */
    bool says(juce::int64 offset, const char* magic) const
    {
        return std::memcmp(bytes + offset, magic, 4) == 0 ||
               juce::ByteOrder::bigEndianInt(bytes + offset) == juce::ByteOrder::littleEndianInt(magic);
    }

    /** A program's name is read up to its first 0. */
    bool nameEnds(juce::int64 offset) const
    {
        return std::memchr(bytes + offset, 0, static_cast<size_t>(size - offset)) != nullptr;
    }

    bool holdsChunk(juce::int64 sizeOffset) const
    {
        return holds(sizeOffset, 4) && number(sizeOffset) >= 0 && holds(sizeOffset + 4, number(sizeOffset));
    }

    bool holdsProgram(juce::int64 offset) const
    {
        if (!holds(offset, programValues))
            return false;

        const juce::int64 numValues = number(offset + countOffset);
        return numValues >= 0 && holds(offset + programValues, 4 * numValues) &&
               nameEnds(offset + nameOffset);
    }

    bool holdsBank(int currentProgram) const
    {
        if (!holdsProgram(bankHeader))
            return false;

        const juce::int64 numPrograms = juce::jmax(1, number(countOffset));
        const juce::int64 programLength = programValues + 4 * juce::int64{number(bankHeader + countOffset)};

        // The reader also takes the program in use, be it in the bank or not.
        if (currentProgram < 0 || number(countOffset) < 0 || numPrograms > size / programValues ||
            currentProgram * programLength > std::numeric_limits<int>::max())
            return false;

        for (juce::int64 i = 0; i < numPrograms; ++i)
            if (!holdsProgram(bankHeader + i * programLength))
                return false;

        return currentProgram < numPrograms || bankHeader + currentProgram * programLength >= size;
    }

    const char* bytes;
    const juce::int64 size;
};
} // namespace

bool isWholeHostedState(const juce::MemoryBlock& state, int currentProgram)
{
    const BankBytes bank(state);

    if (!bank.holds(0, shortestState) || !bank.says(0, "CcnK") || bank.number(versionOffset) > newestVersion)
        return false;

    if (bank.says(magicOffset, "FBCh"))
        return bank.holdsChunk(bankHeader);

    if (bank.says(magicOffset, "FPCh"))
        return bank.holdsChunk(nameOffset + nameLength) && bank.nameEnds(nameOffset);

    if (bank.says(magicOffset, "FxBk"))
        return bank.holdsBank(currentProgram);

    return bank.says(magicOffset, "FxCk") && bank.holdsProgram(0);
}

juce::MemoryBlock readHostedState(juce::AudioPluginInstance& plugin)
{
    juce::MemoryBlock state;

    try
    {
        plugin.getStateInformation(state);
    }
    catch (...)
    {
        return {};
    }

    const BankBytes bank(state);
    const bool isEmptyChunk =
        bank.holds(bankHeader, 4) && bank.says(magicOffset, "FBCh") && bank.number(bankHeader) == 0;
    return isEmptyChunk ? juce::MemoryBlock() : state;
}

bool giveHostedState(juce::AudioPluginInstance& plugin, const juce::MemoryBlock& state)
{
    try
    {
        if (!isWholeHostedState(state, plugin.getCurrentProgram()))
            return false;

        plugin.setStateInformation(state.getData(), static_cast<int>(state.getSize()));
        return true;
    }
    catch (...)
    {
        return false;
    }
}

} // namespace quorel
