// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/ParameterAccess.h"

#include <juce_core/juce_core.h>

namespace quorel {

/** Sets the bit of the category of this name. False if there is none. */
bool setCategory(ParameterAccess &parameters, const juce::String &name);

} // namespace quorel
