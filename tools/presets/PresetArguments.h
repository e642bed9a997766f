// SPDX-License-Identifier: GPL-3.0-or-later
// What the command line names, and what is said of it.
#pragma once

#include "presets/PresetFiles.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace quorel
{

/** The library of one user, or another banks folder. */
struct PresetCollection
{
    juce::File banksFolder;
    juce::File pluginListFile;
    juce::File marksFile; ///< none for another banks folder
};

juce::String quoted(const juce::String& text);

/** "1 preset", "2 presets". */
juce::String count(int number, const char* what);

/** Prints an error and gives `exitFailed`. */
int failWith(const juce::String& text);
int fail(const juce::Result& result);

/** Fails if there is nothing to work on. */
juce::Result checkBanks(const PresetCollection& collection);

/** Takes "FOLDER/NAME" apart. */
juce::Result splitPlace(const juce::String& text, PresetPlace& place);

/** The file of a preset that is given as "FOLDER/NAME". */
juce::Result findPreset(const PresetCollection& collection, const juce::String& text, juce::File& file);

/** The same for several, by their names, each once; fails unless all are there. */
juce::Result findPlaces(const PresetCollection& collection, const juce::StringArray& presets,
                        std::vector<PresetPlace>& places);

} // namespace quorel
