// SPDX-License-Identifier: GPL-3.0-or-later
// What the multi-control panel shows and lets choose: targets, their texts, and the names of the four groups.
// Message thread.
#pragma once

#include "platform/MenuEntries.h"

namespace quorel
{

class PluginProcessor;

/** Last row of the target menu: no target. The ids below it are the list numbers 1 to 72. */
constexpr int noMultiTargetId = 73;

/** The targets that any knob can have: a sub-menu for each layer, then "none". The present target of knob
    `t`, 0 to 15, is ticked. */
MenuEntries multiTargetMenu(PluginProcessor& processor, int t);

/** Gives knob `t`, 0 to 15, the target of row `id`. Other numbers do nothing. */
void chooseMultiTarget(PluginProcessor& processor, int t, int id);

/** The two lines under a knob. */
struct MultiTargetText
{
    /** Such as "Layer 1 : Volume"; "---" without a target. */
    juce::String layerLine;
    /** Name of the hosted parameter behind an Easy value; else empty. */
    juce::String nameLine;
};

MultiTargetText multiTargetText(PluginProcessor& processor, int t);

/** Name of group 0 to 3. */
juce::String multiControlName(PluginProcessor& processor, int group);

/** Stores a group's name: its first 23 characters, with "_" for those that a text slot can't hold. */
void setMultiControlName(PluginProcessor& processor, int group, const juce::String& name);

} // namespace quorel
