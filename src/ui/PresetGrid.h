// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "ui/RowGrid.h"

#include <functional>

namespace quorel
{

/** Presets in columns: those of the current folder, or the results of a search, which show their folders. Behind a
    name stand its rating and the heart of a favourite. A right click opens a menu over the selected presets, or over
    the one that was clicked. Message thread. */
class PresetGrid : public RowGrid, public juce::TooltipClient
{
public:
    PresetGrid(PluginProcessor& pluginProcessor, RowGridLayout gridLayout);

    /** Shows the results of the search or filter, or the folder. */
    void showResults(bool results);

    bool isShowingResults() const noexcept { return showingResults; }

    /** Called after a click has been carried out. */
    std::function<void()> onClick;

    /** What the mouse is over, with author and comment. */
    juce::String getTooltip() override;

protected:
    int numEntries() const override;
    juce::String entryText(int index) const override;
    int currentEntry() const override;
    bool isCurrent(int index) const override;
    bool isSelected(int index) const override;
    void entryClicked(int index, const juce::ModifierKeys& modifiers) override;
    /** That a search has found nothing. */
    juce::String emptyText() const override;
    void entryMenuWanted(int index) override;
    void paintEntry(juce::Graphics& g, int index, juce::Rectangle<int> box) override;

private:
    PresetPlace placeOf(int index) const;

    PluginProcessor& processor;
    PresetLibrary& library;
    bool showingResults = false;
};

} // namespace quorel
