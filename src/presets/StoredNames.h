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

} // namespace quorel
