// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tarnPresetManager.h"

namespace quorel
{

namespace
{
constexpr int numColumns = 4;
constexpr int columnWidth = 180;
constexpr int rowHeight = 15;
constexpr int browseRows = 38;
constexpr int searchRows = 36;
constexpr int searchTop = 35;
constexpr int barTop = 577;

constexpr RowGridLayout browseLayout{numColumns, browseRows, columnWidth, rowHeight, 0, barTop, browseRows};
constexpr RowGridLayout searchLayout{numColumns, searchRows, columnWidth, rowHeight,
                                     searchTop,  barTop,     searchRows};
} // namespace

tarnPresetManager::tarnPresetManager(juce::Rectangle<int> bounds, juce::ChangeListener* listener,
                                     PluginProcessor& pluginProcessor)
    : PresetGrid(pluginProcessor, browseLayout)
{
    setBounds(bounds);
    setName("PresetManager");
    addChangeListener(listener);
    onClick = [this] { sendChangeMessage(); };
}

void tarnPresetManager::setSearchMode(bool search)
{
    if (search != isShowingResults())
        setLayout(search ? searchLayout : browseLayout);

    showResults(search);
}

} // namespace quorel
