// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/PresetGrid.h"

#include <optional>

namespace quorel
{

/** The words of all categories, with presets below them: in filter mode the words searched for and the
    presets found, otherwise the words of the current preset and the presets of its folder; where some of these
    are selected, the words that all of them have. Sends a change message after each click. Message thread. */
class CategoryManager : public KeyboardSurface, public juce::ChangeBroadcaster
{
public:
    CategoryManager(juce::Rectangle<int> bounds, juce::ChangeListener* listener,
                    PluginProcessor& pluginProcessor);

    void setFilterMode(bool filter);

    /** The category at a position, 0 to 65. The rows below the last word of a short column count as well. */
    static std::optional<int> categoryAt(juce::Point<int> position);
    /** Bounds of word `row` of a column, 0 to 4. */
    static juce::Rectangle<int> wordBounds(int column, int row);

    PresetGrid& getGrid() noexcept { return grid; }

    void paint(juce::Graphics& g) override;
    void mouseDown(const juce::MouseEvent& event) override;
    /** Left, Right, Page up and down, Home and End choose a word; the space bar and Return
        switch it. */
    bool keyPressed(const juce::KeyPress& key) override;

protected:
    /** The word at the cursor, and whether it is on. */
    juce::String spokenText() const override;

private:
    CategoryFlags shownFlags() const;
    void toggle(int flag);
    int cursorFlag() const;

    PluginProcessor& processor;
    PresetGrid grid;
    bool filterMode = false;
    /** The word the keyboard is at, counting through all columns. */
    int cursor = 0;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(CategoryManager)
};

} // namespace quorel
