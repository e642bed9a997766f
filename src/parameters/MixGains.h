// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/DerivedWords.h"
#include "parameters/ParameterAccess.h"
#include "parameters/ParameterLayout.h"

#include <array>
#include <atomic>
#include <cstddef>

namespace quorel
{

/** The linear gains of the mixer, worked out when a parameter is written, so that the block takes no powers.
    Written by any thread and read by the block: each is one relaxed word, so the next read sees a change
    whole. */
class MixGains
{
public:
    /** Fader with pan folded in, by channel (0 is left) and layer. */
    float layerGain(int channel, int layer) const noexcept
    {
        return layerGains[index(channel)][index(layer)].load(std::memory_order_relaxed);
    }

    /** Fader alone, for the parameter's text. */
    float layerFaderGain(int layer) const noexcept
    {
        return layerFaderGains[index(layer)].load(std::memory_order_relaxed);
    }

    /** Post-fader send. */
    float sendGain(int send, int layer) const noexcept
    {
        return sendGains[index(send)][index(layer)].load(std::memory_order_relaxed);
    }

    /** 0 while the master is muted. */
    float masterGain() const noexcept { return master.load(std::memory_order_relaxed); }

    // After a write to one of the parameters that they are made from. Any thread.

    /** From fader and pan: a linear balance, in which only the far side falls. */
    void refreshLayer(const ParameterAccess& parameters, int layer) noexcept;
    void refreshSend(const ParameterAccess& parameters, int send, int layer) noexcept;
    void refreshMaster(const ParameterAccess& parameters) noexcept;

private:
    static constexpr size_t index(int i) noexcept { return static_cast<size_t>(i); }

    std::array<std::array<std::atomic<float>, numLayers>, 2> layerGains{};
    std::array<std::atomic<float>, numLayers> layerFaderGains{};
    std::array<std::array<std::atomic<float>, numLayers>, numSends> sendGains{};
    std::atomic<float> master{0.0f};
    std::array<DerivedWords, numLayers> layerWords;
    DerivedWords masterWords;
};

} // namespace quorel
