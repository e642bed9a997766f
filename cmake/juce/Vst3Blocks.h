// SPDX-License-Identifier: GPL-3.0-or-later
// Included by JUCE's VST3 client.
#pragma once

#include <algorithm>

namespace quorel
{

/** Fills the outputs that the host has given with silence. */
inline void silence(const Steinberg::Vst::ProcessData& block)
{
    const auto fill = [&block](auto** channels, int numChannels)
    {
        for (int i = 0; channels != nullptr && i < numChannels; ++i)
            if (channels[i] != nullptr)
                std::fill_n(channels[i], block.numSamples, 0.0f);
    };

    for (int bus = 0; block.outputs != nullptr && bus < block.numOutputs; ++bus)
    {
        const auto& output = block.outputs[bus];

        if (block.symbolicSampleSize == Steinberg::Vst::kSample64)
            fill(output.channelBuffers64, output.numChannels);
        else
            fill(output.channelBuffers32, output.numChannels);
    }
}

} // namespace quorel
