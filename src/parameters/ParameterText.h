// SPDX-License-Identifier: GPL-3.0-or-later
// Text in the parameter table: one character a slot, c / 256.
#pragma once

#include "parameters/ParameterAccess.h"

#include <juce_core/juce_core.h>

namespace quorel
{

/** The filler of an unused text slot: the space character. */
constexpr float textFiller = 0.125f;

/** Zeroes `count` slots from `first`, then writes at most `count` - 1 bytes of the text's UTF-8 form. Bytes
   above 127 cannot be stored in a slot of 0 to 1 and end the text when it is read. */
void writeParamText(ParameterAccess& parameters, int first, const juce::String& text, int count);

/** Reads `count` + 1 slots from `first`, up to the first zero. */
juce::String readParamText(const ParameterAccess& parameters, int first, int count);

} // namespace quorel
