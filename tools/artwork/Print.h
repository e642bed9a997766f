// SPDX-License-Identifier: GPL-3.0-or-later
// Groups of printing that pages and strip panels share.
#pragma once

#include "Surfaces.h"

namespace quorel::artwork
{

/** Frame, captions and screen of an EQ whose controls stand where `geometry::eq` has those of a layer, in
    strip coordinates. The master's stand 598 pixels lower, its switches in one column. */
void printEq(juce::Graphics& g, Rect frame, bool master);

/** Ground and numbers of a strip's twelve Easy faders, in strip coordinates. */
void printEasyPanel(juce::Graphics& g);

/** Baseline of the caption below a knob whose frame starts at `knobY`. */
constexpr float belowKnob(int knobY) noexcept
{
    return static_cast<float>(knobY) + 46.0f;
}

} // namespace quorel::artwork
