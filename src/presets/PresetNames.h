// SPDX-License-Identifier: GPL-3.0-or-later
// Names of presets and folders as users type them, and what may stand as a name in the banks folder. Every
// name is one component of a path and has to work on every platform, since banks travel between them. Any
// thread.
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

constexpr int longestTypedName = 24;

/** The name of a new preset from what was typed: the first 24 characters, points and a leading digit turned
   into
    "_", characters that no file name takes left out. Empty stays empty; "_default" where nothing is left. */
juce::String cleanPresetName(const juce::String& typed);

/** Every other typed name: the last 24 characters, a leading blank turned into "_", points and the characters
    that no file name takes left out; "default" where nothing is left. */
juce::String cleanTypedName(const juce::String& typed);

} // namespace quorel
