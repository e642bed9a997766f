// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PresetText.h"

#include "engine/PluginProcessor.h"

namespace quorel
{

/** Brings a processor to the sound that a text describes. The processor is new, prepared and used for nothing
    else; the message loop and blocks run meanwhile. Throws a TextError for a mistake in the text, or for a
    name that doesn't exist. Message thread. */
void buildSound(PluginProcessor& processor, const std::vector<TextSection>& text);

} // namespace quorel
