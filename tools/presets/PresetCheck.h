// SPDX-License-Identifier: GPL-3.0-or-later
// What is wrong with a preset file.
#pragma once

#include "presets/StateChunk.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace quorel
{

struct Finding
{
    enum class Weight
    {
        /** The preset doesn't load, or doesn't sound as it was saved. */
        error,
        /** It loads, but not everywhere or not as the file says. */
        note
    };

    Weight weight = Weight::error;
    juce::String text;
};

/** The instruments of a user, as the last scan found them. */
struct InstalledInstruments
{
    juce::StringArray names;
    /** There was a list to read. */
    bool isKnown = false;
};

/** Reads the list file of the known instruments; writes nothing and loads no instrument. */
InstalledInstruments readInstalledInstruments(const juce::File& pluginListFile);

/** Instrument that a layer's parameters name; empty if none. `layer` is 0 to 3. */
juce::String instrumentOfLayer(const StateChunk& chunk, int layer);

/** Text out of a file as it may stand on a terminal: control characters become "?". */
juce::String printable(const juce::String& text);

/** Everything that is wrong with a preset file, the worst first. With `isInBanks` the file is looked at as
    the preset that its path makes it, else for itself. Reads only. */
std::vector<Finding> checkPreset(const juce::File& file, bool isInBanks,
                                 const InstalledInstruments& installed);

} // namespace quorel
