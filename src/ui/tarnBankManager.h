// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "ui/RowGrid.h"

namespace quorel
{

/** The list of folders. A click chooses a folder; in a search it limits the results to that folder, and a
    second click lifts the limit. Sends a change message after each click. Message thread. */
class tarnBankManager : public RowGrid, public juce::ChangeBroadcaster
{
public:
    tarnBankManager(juce::Rectangle<int> bounds, juce::ChangeListener* listener,
                    PluginProcessor& pluginProcessor);

    void setSearchMode(bool search);

protected:
    int numEntries() const override;
    juce::String entryText(int index) const override;
    int currentEntry() const override;
    bool isSelected(int index) const override;
    void entryClicked(int index, const juce::ModifierKeys& modifiers) override;

private:
    PluginProcessor& processor;
    PresetLibrary& library;
    bool searchMode = false;
};

} // namespace quorel
