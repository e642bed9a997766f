// SPDX-License-Identifier: GPL-3.0-or-later
// Text in the parameter table: one character a slot, c / 256.
#pragma once

#include "parameters/ParameterAccess.h"

#include <juce_core/juce_core.h>

namespace quorel
{

/** The space character, which fills unused text slots. */
constexpr float textFiller = 0.125f;

/** Zeroes `count` slots from `first`, then writes at most `count` - 1 bytes of the text's UTF-8 form. Bytes
    above 127 can't be stored in a slot of 0 to 1: the text ends there when it is read. */
void writeParamText(ParameterAccess& parameters, int first, const juce::String& text, int count);

/** Reads up to the first zero, and at most `count` + 1 slots from `first`. */
juce::String readParamText(const ParameterAccess& parameters, int first, int count);

} // namespace quorel
