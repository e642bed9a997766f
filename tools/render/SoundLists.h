// SPDX-License-Identifier: GPL-3.0-or-later
// What there is to choose from. Message thread.
#pragma once

#include "engine/PluginProcessor.h"

namespace quorel
{

/** "FOLDER/NAME" of each preset. */
juce::StringArray presetNames(const juce::File& banksFolder);

// A line for each on the standard output.

/** Fails where there are none. */
juce::Result listPresetNames(const juce::File& banksFolder);

/** Numbers and names of the programs of each layer's instrument. Fails where no layer has one. */
juce::Result listPrograms(PluginProcessor& processor);

/** The parameters that have names, as this sound has them: number, name, value, its text, and the texts at 0 and at 1
    where they say more. */
void listParameters(PluginProcessor& processor);

} // namespace quorel
