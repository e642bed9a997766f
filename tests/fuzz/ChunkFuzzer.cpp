// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer target for the chunk reader: cmake --preset fuzz, then build/fuzz/tests/presets/chunk_fuzzer.
#include "presets/StateChunk.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    quorel::StateChunk chunk;

    if (quorel::readStateChunk(data, size, chunk) != quorel::ChunkStatus::valid)
        return 0;

    // What was read once is read again in the same form.
    juce::MemoryBlock bytes;
    quorel::writeStateChunk(chunk, bytes);
    quorel::StateChunk again;
    const auto status = quorel::readStateChunk(bytes.getData(), bytes.getSize(), again);

    if (status != quorel::ChunkStatus::valid || again.parameters.size() != chunk.parameters.size())
        std::abort();

    return 0;
}
