// SPDX-License-Identifier: GPL-3.0-or-later
// The menu of a control: what a right click shows, and what its rows do. Message thread.
#pragma once

#include "platform/MenuEntries.h"

namespace quorel
{

class PluginProcessor;

namespace controlMenuId
{
constexpr int setToDefault = 3;
constexpr int setToMinimum = 4;
constexpr int setToMaximum = 5;
constexpr int setToMid = 6;
constexpr int setToRandom = 7;
constexpr int increase = 8;
constexpr int decrease = 9;
constexpr int setValue = 10;
constexpr int latchToMidi = 11;
constexpr int unlatchMidi = 12;
constexpr int setMidiController = 13;
constexpr int clearMidi = 14;
/** Rows that inform and can't be chosen. */
constexpr int information = 9999;
} // namespace controlMenuId

/** A row that informs and can't be chosen. */
MenuEntry informationRow(const juce::String& text);

/** The rows of a knob, fader or number: name, text and controller of the parameter, then the commands. None for
    an index outside 1 to 1506: such a control has no menu. */
MenuEntries controlMenu(PluginProcessor& processor, int parameter, const juce::String& name,
                        const juce::String& text);

/** The same for a switch, with the commands that tie it to a controller alone. */
MenuEntries switchMenu(PluginProcessor& processor, int parameter, const juce::String& name,
                       const juce::String& text);

/** Does what row `id` says. `defaultValue`, 0 to 1, is what a double click sets the control to. Other ids do
    nothing. "Set Value", "Set Midi CC" and "Clear Midi" ask the user and return with the answer. */
void runControlMenuItem(PluginProcessor& processor, int parameter, float defaultValue, int id);

} // namespace quorel
