// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace juce
{
class MemoryBlock;
}

namespace quorel
{

class PluginProcessor;

/** Appends the processor's whole sound to `destination`, emptied first. Message thread. */
void saveState(PluginProcessor& processor, juce::MemoryBlock& destination);

/** Who asks for a restore. */
enum class RestoreReason
{
    /** A preset file: the names stay as the load set them, and so does the preset manager's page. */
    preset,
    /** Any other state: it brings its names. */
    state
};

/** Brings the processor to the sound of a chunk: loads the instruments it names, gives each its state, and
    applies all parameters. Instruments that are loaded stay if their name is the same, so a caller that wants
    a fresh start unloads first. False, with at most the names changed, for bytes of another format or too few
    of them. Message thread. */
bool restoreState(PluginProcessor& processor, const void* data, size_t size, RestoreReason reason);

} // namespace quorel
