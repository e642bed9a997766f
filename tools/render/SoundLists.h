// SPDX-License-Identifier: GPL-3.0-or-later
// What there is to choose from. Message thread.
#pragma once

#include "engine/PluginProcessor.h"

namespace quorel
{

// A line for each on the standard output.

/** "FOLDER/NAME" of each preset. Fails where there are none, or one of the folders can't be read. */
juce::Result listPresetNames(const juce::File& banksFolder);

/** Numbers and names of the programs of each layer's instrument. Fails where no layer has one. */
juce::Result listPrograms(PluginProcessor& processor);

/** The parameters that have names, as this sound has them: number, name, value, its text, and the texts at 0 and at 1
    where they say more. */
void listParameters(PluginProcessor& processor);

} // namespace quorel
