// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

#include <juce_core/juce_core.h>

#include <array>

namespace quorel
{

/** Values, 0 to 1, of the ten parameters of one effect block. */
using FxParameterValues = std::array<float, fxParameterCount>;

/** What parameter `j` (0 to 9) of an effect of `type` (0 to 32) reads. The whole block counts: a length reads
    as a note where the block's sync is on. "-" where the type has no such parameter. Any thread. */
juce::String fxParameterText(int type, int j, const FxParameterValues& values);

/** `value` in fixed notation with `decimals` digits after a full stop, whatever the host's locale. Halves go
    to the even digit, and what rounds to zero from below reads "-0". Any thread. */
juce::String fixedText(double value, int decimals);

/** The same with a sign in front of every number. */
juce::String signedFixedText(double value, int decimals);

/** `value` with six significant digits at most, as many as it needs. */
juce::String shortText(double value);

} // namespace quorel
