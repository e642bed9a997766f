// SPDX-License-Identifier: GPL-3.0-or-later
// For the changed copy of JUCE's VST2 host, which includes this in its own namespace: how far an instrument may go. Any
// thread.
#pragma once

/** Channels that its buffers have room for at least, so that it can add outputs while it plays. */
constexpr int spareChannels = 64;
/** Of inputs, and of outputs. */
constexpr int mostChannels = 256;
/** Of a window, in pixels. */
constexpr int largestWindow = 8192;
/** Of events that nobody has taken. */
constexpr int mostMidiBytes = 65536;

/** Once it is open. */
inline bool isUsable(const Vst2::AEffect* effect) noexcept
{
    const bool processes = (effect->flags & Vst2::effFlagsCanReplacing) != 0
                               ? effect->processReplacing != nullptr
                               : effect->process != nullptr;
    return processes && effect->numInputs <= mostChannels && effect->numOutputs <= mostChannels;
}

/** The size that an instrument has asked for on another thread than that of messages; the newest counts. */
class WindowSize
{
public:
    void ask(int width, int height) noexcept
    {
        size.store(static_cast<uint64>(static_cast<uint32>(width)) << 32 | static_cast<uint32>(height));
    }

    /** False where none was asked for. */
    bool take(int& width, int& height) noexcept
    {
        const auto asked = size.exchange(0);
        width = static_cast<int>(asked >> 32);
        height = static_cast<int>(asked & 0xffffffffu);
        return asked != 0;
    }

private:
    std::atomic<uint64> size{0};
};
