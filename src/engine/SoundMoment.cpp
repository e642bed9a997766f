// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SoundMoment.h"

#include "engine/PluginProcessor.h"

namespace quorel
{

namespace
{
/** The quickest: a step is taken while the user waits. */
constexpr int compressionLevel = 1;

std::shared_ptr<const juce::MemoryBlock> pack(const juce::MemoryBlock& bytes)
{
    auto packed = std::make_shared<juce::MemoryBlock>();
    juce::MemoryOutputStream memory(*packed, false);
    juce::GZIPCompressorOutputStream compressor(memory, compressionLevel);
    compressor.write(bytes.getData(), bytes.getSize());
    compressor.flush();
    memory.flush();
    return packed;
}
} // namespace

SoundMoment SoundMoment::capture(PluginProcessor& processor)
{
    // The sides follow the edits on the timer, which may not have come yet.
    processor.getOriginalComparison().update();
    juce::MemoryBlock bytes;
    processor.getStateInformation(bytes);
    SoundMoment moment{pack(bytes), processor.getPresetName(), processor.getFolderName(),
                       processor.getOriginalComparison().getSides(), processor.getSession().getFileMark()};
    processor.getSoundChange().describeAwaited(moment);
    return moment;
}

juce::MemoryBlock SoundMoment::sound() const
{
    juce::MemoryInputStream memory(*packed, false);
    juce::GZIPDecompressorInputStream decompressor(memory);
    juce::MemoryBlock bytes;
    decompressor.readIntoMemoryBlock(bytes);
    return bytes;
}

std::array<const juce::MemoryBlock*, 3> SoundMoment::blocks() const
{
    return {packed.get(), comparison.original.get(), comparison.edited.get()};
}

} // namespace quorel
