// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/WantedSound.h"

#include "engine/PluginProcessor.h"

namespace quorel
{

std::shared_ptr<WantedSound> readSound(const void* data, size_t size, ChangeReason reason,
                                       ChunkStatus& status)
{
    auto sound = std::make_shared<WantedSound>();
    status = readStateChunk(data, size, sound->chunk);

    if (status != ChunkStatus::valid)
        return nullptr;

    sound->reason = reason;
    sound->bytes = juce::MemoryBlock(data, size);
    return sound;
}

void writeSound(const WantedSound& sound, const PluginProcessor& processor, juce::MemoryBlock& destination)
{
    if (sound.reason == ChangeReason::project)
    {
        destination = sound.bytes;
        return;
    }

    auto chunk = sound.chunk;
    chunk.presetName = processor.getPresetName();
    chunk.folderName = processor.getFolderName();

    for (size_t i = 0; i < chunk.parameters.size(); ++i)
        if (const int index = static_cast<int>(i); !isRestored(index, sound.reason))
            chunk.parameters[i] = processor.readParameter(index);

    destination.reset();
    writeStateChunk(chunk, destination);
}

} // namespace quorel
