// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Surfaces.h"

namespace quorel::artwork
{

/** A fader's cap with its shadow and the lit line across its middle. */
void drawFaderCap(juce::Graphics& g, Rect cap);

} // namespace quorel::artwork
