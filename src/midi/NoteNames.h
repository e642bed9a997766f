// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <optional>

namespace quorel
{

/** Name of a MIDI note, limited to 0 to 127: 60 is "C3", 0 is "C-2". */
juce::String noteName(int note);

/** The note, which may lie outside 0 to 127, of a name such as "C3", "f#-1" or "Bb2"; nothing for other text. */
std::optional<int> noteOfName(const juce::String& name);

} // namespace quorel
