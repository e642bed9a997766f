// SPDX-License-Identifier: GPL-3.0-or-later
// Brings a processor to the sound that the command line asks for. Message thread; the message loop runs
// meanwhile.
#pragma once

#include "OfflineRender.h"
#include "RenderOptions.h"

#include "engine/PluginProcessor.h"

namespace quorel
{

/** Preset, then layers, effects, sends and parameters, each as given. A preset that is given by its name
    takes the same road as one that a player chooses, for which `offline` plays empty blocks. The error names
    what is unknown or can't be loaded. */
juce::Result setUpSound(PluginProcessor& processor, OfflineRender& offline, const RenderOptions& options);

/** Writes the processor's sound to a file, as a whole or not at all. */
juce::Result saveSound(PluginProcessor& processor, const juce::File& file);

/** Index of a parameter by its name, or by its number in digits: letter case counts only where two names
    differ by nothing else. -1 if there is none. */
int findParameter(PluginProcessor& processor, const juce::String& nameOrIndex);

} // namespace quorel
