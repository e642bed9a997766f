// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/PresetGrid.h"

namespace quorel
{

/** The large grid of presets: those of the current folder, or below the search field those that a search has
    found. Sends a change message after each click. Message thread. */
class tarnPresetManager : public PresetGrid, public juce::ChangeBroadcaster
{
public:
    tarnPresetManager(juce::Rectangle<int> bounds, juce::ChangeListener* listener,
                      PluginProcessor& pluginProcessor);

    void setSearchMode(bool search);
};

} // namespace quorel
