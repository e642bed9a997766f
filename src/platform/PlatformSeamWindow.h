// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the platform's seam that stands on its windows.
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <vector>

namespace quorel
{

/** Gives a window its icon in several sizes, smallest first; where the system takes one alone, the largest. */
void setWindowIcons(juce::ComponentPeer& peer, const std::vector<juce::Image>& icons);

/** Shows what a program with windows prints where it was started from: on Windows it has no console of its own, not
    even that of a command line. Streams that lead elsewhere already stay so. */
void printToCallersConsole();

} // namespace quorel
