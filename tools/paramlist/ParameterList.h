// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** The list of all parameters and of the effects' parameters, in Markdown: index, name, default, what the
    value holds, text at the default. */
juce::String parameterList();

} // namespace quorel
