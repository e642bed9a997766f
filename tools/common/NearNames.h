// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** ": did you mean Layer1 Pan, Layer2 Pan?" for somebody who typed `wanted`: the nearest first, each once, at most five
    of those that differ by few letters or have it in them. Letter case, blanks and signs don't count. Empty where
    nothing is near. */
juce::String didYouMean(const juce::String& wanted, const juce::StringArray& names);

} // namespace quorel
