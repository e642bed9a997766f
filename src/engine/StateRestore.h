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

/** Brings the processor to the sound of a chunk: loads the instruments it names, gives each its state, and
   applies all parameters. Instruments that are loaded stay if their name is the same, so a caller that wants
   a fresh start unloads first. Bytes of another format change nothing. Message thread. */
void restoreState(PluginProcessor& processor, const void* data, size_t size);

} // namespace quorel
