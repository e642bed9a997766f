// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "presets/StateChunk.h"

#include <juce_core/juce_core.h>

namespace quorel
{

struct StoredNames
{
    juce::String preset;
    juce::String folder;
};

/** The preset that a chunk came from, by the names in it. A chunk holds 32 bytes of each name, so longer ones
    are looked for on the disk: the one preset whose names begin this way. Where there is none, or more than
    one, the names are what the chunk holds of them. The disk is read only for names that may have been cut.
    Any thread but the audio thread. */
StoredNames resolveNames(const juce::File& banksFolder, const StateChunk& chunk);

/** Name of the instrument in a chunk's layer, 0 to 3; empty for none. Any thread. */
juce::String storedInstrument(const StateChunk& chunk, int layer);

/** Writes a name into a chunk's bytes, into its header and its text parameters; all other bytes stay. False,
    with nothing changed, for bytes that aren't a chunk. */
bool storePresetName(juce::MemoryBlock& bytes, const juce::String& name);
bool storeFolderName(juce::MemoryBlock& bytes, const juce::String& name);

} // namespace quorel
