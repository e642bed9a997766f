// SPDX-License-Identifier: GPL-3.0-or-later
// The platform seam's part about the keyboard of a host whose window an editor lies in.
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** True for a window that lies inside another program's, as an editor's does in its host. Message thread, as all
    of these. */
bool isInHostWindow(const juce::ComponentPeer& peer);

/** Gives the keyboard to the host's window around this one. */
void giveKeyboardToHost(const juce::ComponentPeer& peer);

/** Hands a key press on that came here, and the keyboard along with it: to the host, if this window has the keyboard,
    or if the host has it and the key came here because the pointer does. False, and nothing has happened, if the
    host has sent the key itself, or there is none. */
bool giveKeyToHost(const juce::ComponentPeer& peer, const juce::KeyPress& key);

} // namespace quorel
