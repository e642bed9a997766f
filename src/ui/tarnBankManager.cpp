// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tarnBankManager.h"

namespace quorel
{

namespace
{
constexpr int numRows = 30;
constexpr int rowHeight = 19;
constexpr int barTop = 577;
} // namespace

tarnBankManager::tarnBankManager(juce::Rectangle<int> bounds, juce::ChangeListener* listener,
                                 PluginProcessor& pluginProcessor)
    : RowGrid({1, numRows, bounds.getWidth(), rowHeight, 0, barTop, 1})
    , processor(pluginProcessor)
    , library(pluginProcessor.getPresetLibrary())
{
    setBounds(bounds);
    setName("BankManager");
    setTitle("Folders");
    addChangeListener(listener);
}

void tarnBankManager::setSearchMode(bool search)
{
    searchMode = search;
    entriesChanged();
}

int tarnBankManager::numEntries() const
{
    return library.getFolderCount();
}

juce::String tarnBankManager::entryText(int index) const
{
    return library.getFolderNames()[index];
}

int tarnBankManager::currentEntry() const
{
    return library.getCurrentFolderIndex();
}

bool tarnBankManager::isSelected(int index) const
{
    return searchMode && index == library.getSelectedResultFolder();
}

void tarnBankManager::entryClicked(int index, const juce::ModifierKeys&)
{
    processor.getPresetCommands().clickFolder(index, searchMode);
    sendChangeMessage();
}

} // namespace quorel
