// SPDX-License-Identifier: GPL-3.0-or-later
// Makes names for presets and folders of what users type. Every name is one component of a path and has to
// work on every platform, since banks travel between them. Any thread.
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

constexpr int longestTypedName = 24;

/** The name of a new preset from what was typed: the first 24 characters, with dots and a leading digit
    turned into "_" and the characters left out that no file name may contain. Empty stays empty; "_default"
    where nothing is left. */
juce::String cleanPresetName(const juce::String& typed);

/** Every other typed name: the last 24 characters, with a leading blank turned into "_" and dots and the
    characters left out that no file name may contain; "default" where nothing is left. */
juce::String cleanTypedName(const juce::String& typed);

} // namespace quorel
