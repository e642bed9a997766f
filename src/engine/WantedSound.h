// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/OriginalComparison.h"
#include "engine/Session.h"
#include "engine/StateRestore.h"
#include "presets/StateChunk.h"

#include <memory>

namespace quorel
{

/** A sound that has been asked for, read and checked. */
struct WantedSound
{
    ChangeReason reason = ChangeReason::project;
    juce::MemoryBlock bytes;
    StateChunk chunk;
    /** For `undo` alone: the comparison and the mark that come back with the sound. */
    OriginalComparison::Sides sides{};
    Session::FileMark mark{};
};

/** Null for bytes that can't be restored. Any thread. */
std::shared_ptr<WantedSound> readSound(const void* data, size_t size, ChangeReason reason,
                                       ChunkStatus& status);

/** What a save gets before the sound plays: the bytes that were read, but for what a load wouldn't take from
    them. Any thread but the audio thread. */
void writeSound(const WantedSound& sound, const PluginProcessor& processor, juce::MemoryBlock& destination);

} // namespace quorel
