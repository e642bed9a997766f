// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"

namespace quorel
{

/** The list of all parameters and of the effects' parameters, in Markdown: index, name, default, text at the
    default. `processor` must be new and have no instruments; its values are not the same afterwards. Message
    thread. */
juce::String parameterList(PluginProcessor& processor);

} // namespace quorel
