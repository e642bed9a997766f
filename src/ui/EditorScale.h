// SPDX-License-Identifier: GPL-3.0-or-later
// How large the editor is drawn, in percent of its 1110 by 786 layout: a setting of the user, not of a
// preset.
#pragma once

#include "platform/UserStore.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>

namespace quorel
{

/** What the menu offers. A corner of the window gives any percentage between the smallest and the largest. */
constexpr std::array<int, 8> editorScales{75, 100, 125, 150, 175, 200, 225, 250};
constexpr int smallestEditorScale = 50;
constexpr int largestEditorScale = 300;
constexpr int defaultEditorScale = 100;

/** The user's choice, within the limits; the default if none is stored. Message thread. */
int readEditorScale(const UserStore& store);

/** False if the settings can't be written. */
bool writeEditorScale(UserStore& store, int percent);

/** Size of the editor, in its own pixels. */
juce::Rectangle<int> editorSizeAt(int percent);

/** The largest percentage, up to `largestEditorScale`, at which an editor that the host magnifies by `hostScale` fits
    the display where `shown` is, with a title bar; before it is shown, the largest display. Message thread. */
int largestFittingScale(const juce::Component& shown, float hostScale);

} // namespace quorel
