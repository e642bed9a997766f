// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/KeyboardSurface.h"

namespace quorel
{

/** How a list of short texts is laid out within its component: columns of rows, filled from top to bottom,
    above a scroll bar. In pixels. */
struct RowGridLayout
{
    int columns;
    int rows;
    int columnWidth;
    int rowHeight;
    /** Top of the first row. */
    int top;
    /** Top of the scroll bar's strip, which reaches to the lower edge. */
    int barTop;
    /** Rows of the smallest scrolling step: a whole column where there are several. */
    int scrollUnit;
};

/** A list of any length in columns. Only what is in view is drawn, so ten thousand entries cost what a
    screenful does. It scrolls by its bar and by the wheel. With the keyboard focus, Left and Right go from
    entry to entry, Page Up and Page Down by a column, Home and End to the ends; Return is a click, the space
    bar one with Ctrl. Message thread. */
class RowGrid : public KeyboardSurface, private juce::ScrollBar::Listener
{
public:
    explicit RowGrid(RowGridLayout gridLayout);

    void setLayout(RowGridLayout gridLayout);

    /** The list has changed, or another entry has become the current one: that entry is brought into view. */
    void entriesChanged();

    /** The entry at the top left. */
    int firstVisible() const;
    /** The entry at a position within the component; -1 where there is none. */
    int entryAt(juce::Point<int> position) const;
    /** Bounds of an entry; empty while it is out of view. */
    juce::Rectangle<int> boundsOf(int index) const;

    void resized() override;
    void paint(juce::Graphics& g) override;
    void mouseDown(const juce::MouseEvent& event) override;
    void mouseMove(const juce::MouseEvent& event) override;
    void mouseExit(const juce::MouseEvent& event) override;
    void mouseWheelMove(const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel) override;
    bool keyPressed(const juce::KeyPress& key) override;

protected:
    virtual int numEntries() const = 0;
    /** `index` is 0 to `numEntries()` - 1, here and below. */
    virtual juce::String entryText(int index) const = 0;
    /** The entry in force; -1 for none. */
    virtual int currentEntry() const = 0;

    virtual bool isCurrent(int index) const { return index == currentEntry(); }

    virtual bool isSelected(int index) const = 0;
    virtual void entryClicked(int index, const juce::ModifierKeys& modifiers) = 0;

    /** The right mouse button went down on an entry. */
    virtual void entryMenuWanted(int) {}

    /** Draws an entry into its box; colour and font are set. */
    virtual void paintEntry(juce::Graphics& g, int index, juce::Rectangle<int> box);

    /** The entry under the mouse; -1 for none. */
    int hoveredEntry() const noexcept { return hovered; }

    /** What stands in place of the entries while there are none. */
    virtual juce::String emptyText() const { return {}; }

    /** The entry under the keyboard's cursor, or the one in force. */
    juce::String spokenText() const override;

private:
    /** Goes straight to where the mouse presses it, and leaves the wheel to the list. */
    class Bar : public juce::ScrollBar
    {
    public:
        Bar();

        /** The list's length in entries, and how many of them are in view. */
        void setLengths(int total, int inView);
        /** 0 at the start of the list, 1 at its end. */
        double getPosition() const;
        void setPosition(double position);

        void mouseDown(const juce::MouseEvent& event) override;
        void mouseDrag(const juce::MouseEvent& event) override;
        void mouseWheelMove(const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel) override;

    private:
        int entriesInView = 0;
        /** How far the first entry in view can move. */
        int travel = 0;
    };

    void scrollBarMoved(juce::ScrollBar*, double) override { repaint(); }

    int maxStep() const;
    int currentStep() const;

    int visibleEntries() const noexcept { return layout.columns * layout.rows; }

    void setStep(int step);
    void bringIntoView(int index);
    void setHovered(int index);

    RowGridLayout layout;
    Bar bar;
    int lastClick = -1;
    int hovered = -1;
    int cursor = 0;
    int shownCurrent = -1;
    int shownCount = 0;
    float wheelRest = 0.0f;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(RowGrid)
};

} // namespace quorel
