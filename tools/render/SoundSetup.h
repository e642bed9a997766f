// SPDX-License-Identifier: GPL-3.0-or-later
// Brings a processor to the sound that the command line asks for. Message thread; the message loop runs
// meanwhile.
#pragma once

#include "RenderOptions.h"

#include "engine/PluginProcessor.h"

namespace quorel
{

/** Preset, then layers, effects, sends and parameters, each as given. The error names what is unknown or
 * can't be loaded.
 */
juce::Result setUpSound(PluginProcessor& processor, const RenderOptions& options);

/** Writes the processor's sound to a file, as a whole or not at all. */
juce::Result saveSound(PluginProcessor& processor, const juce::File& file);

/** Index of a parameter by its name, or by its number in digits: letter case counts only where two names
   differ by nothing else. -1 if there is none. */
int findParameter(PluginProcessor& processor, const juce::String& nameOrIndex);

} // namespace quorel
