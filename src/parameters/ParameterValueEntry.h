// SPDX-License-Identifier: GPL-3.0-or-later
// Values that the user types instead of turning a knob. Any thread that the sources allow.
#pragma once

#include "parameters/ParameterDisplay.h"

#include <optional>

namespace quorel
{

/** What the user is asked when a value is to be typed. */
struct ValueQuestion
{
    /** The range, such as "-100 to +12". */
    juce::String prompt;
    /** The present value as it would be typed. */
    juce::String current;
};

/** Nothing for a parameter that takes no typed value: those below the layers, except the master volume. */
std::optional<ValueQuestion> valueQuestion(int index, const ParameterTextSources& sources);

/** Value, 0 to 1, that a typed text means for the parameter. A text that isn't a number counts as 0. Nothing
    where the result lies outside the parameter's range. */
std::optional<float> typedValue(int index, const juce::String& text);

} // namespace quorel
