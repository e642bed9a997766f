// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's own typeface, the same on every machine.
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel
{

/** Roboto in its regular or bold weight, made on first use and kept. Message thread. */
juce::Typeface::Ptr editorTypeface(bool bold);

/** The same at a height in pixels. */
juce::Font editorFont(float height, bool bold = false);

} // namespace quorel
