// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PresetText.h"

#include "engine/PluginProcessor.h"

namespace quorel
{

/** Brings a processor to the sound that a text describes. The processor is new, prepared, and used for nothing else;
    its message loop and blocks run meanwhile. Throws a TextError for what the text says wrong, or names that isn't
    there. Message thread. */
void buildSound(PluginProcessor& processor, const std::vector<TextSection>& text);

} // namespace quorel
