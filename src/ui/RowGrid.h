// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Where a list of short texts stands within its component: columns of rows, filled from top to bottom, and a
    scroll bar below them. Pixels. */
struct RowGridLayout
{
    int columns;
    int rows;
    int columnWidth;
    int rowHeight;
    /** Free room above the first row. */
    int top;
    /** Top of the scroll bar's strip, which goes down to the lower edge. */
    int barTop;
    /** Rows that the smallest move scrolls by: a whole column where there are several. */
    int scrollUnit;
};

/** A list of any length in columns, drawn row by row as far as it is in view, so that ten thousand entries
   cost what a screenful does. It scrolls by its bar and by the wheel. With the keyboard focus, Left and Right
   go from entry to entry, Page up and down by a column, Home and End to the ends; Return is a click, the
   space bar one with Ctrl. Message thread. */
class RowGrid : public juce::Component
{
public:
    explicit RowGrid(RowGridLayout gridLayout);

    void setLayout(RowGridLayout gridLayout);

    /** The list has changed, or another entry is the current one, which comes into view if it is another than
        before. */
    void entriesChanged();

    /** Entry that stands at the top left. */
    int firstVisible() const;
    /** Entry at a place of the component; -1 where there is none. */
    int entryAt(juce::Point<int> position) const;
    /** Where an entry stands; empty while it is out of view. */
    juce::Rectangle<int> boundsOf(int index) const;

    void paint(juce::Graphics& g) override;
    void mouseDown(const juce::MouseEvent& event) override;
    void mouseDrag(const juce::MouseEvent& event) override;
    void mouseUp(const juce::MouseEvent& event) override;
    void mouseMove(const juce::MouseEvent& event) override;
    void mouseExit(const juce::MouseEvent& event) override;
    void mouseWheelMove(const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel) override;
    bool keyPressed(const juce::KeyPress& key) override;
    void focusGained(FocusChangeType cause) override;
    void focusLost(FocusChangeType cause) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

protected:
    virtual int numEntries() const = 0;
    /** 0 to `numEntries()` - 1, as in all that follows. */
    virtual juce::String entryText(int index) const = 0;
    /** The entry that is in force; -1 for none. */
    virtual int currentEntry() const = 0;

    virtual bool isCurrent(int index) const { return index == currentEntry(); }

    virtual bool isSelected(int index) const = 0;
    virtual void entryClicked(int index, const juce::ModifierKeys& modifiers) = 0;
    /** Clicks are to do nothing. */
    virtual bool isLocked() const = 0;

private:
    class ListText;

    int maxStep() const;
    int currentStep() const;

    int visibleEntries() const noexcept { return layout.columns * layout.rows; }

    double barWidth() const;
    void setStep(int step);
    void scrollTo(int x);
    void bringIntoView(int index);
    void moveCursor(int index);
    void setHovered(int index);

    RowGridLayout layout;
    /** Pixels along the bar. */
    double scroll = 0.0;
    bool dragging = false;
    int lastClick = -1;
    int hovered = -1;
    int cursor = 0;
    int shownCurrent = -1;
    int shownCount = 0;
    float wheelRest = 0.0f;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(RowGrid)
};

} // namespace quorel
