// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/RowGrid.h"

#include "ui/EditorColours.h"
#include "ui/myLookAndFeel.h"

#include <cmath>

namespace quorel
{

namespace
{
constexpr int textInset = 5;
constexpr float fontHeight = 12.0f;
constexpr int rowsPerWheelStep = 3;

/** Selected entries have it too, as their ground is lighter. */
const juce::Colour hoverColour{0xffc4c4c4};
const juce::Colour currentColour = juce::Colours::white;
} // namespace

RowGrid::RowGrid(RowGridLayout gridLayout)
    : KeyboardSurface(juce::AccessibilityRole::list)
    , layout(gridLayout)
{
    bar.addListener(this);
    addAndMakeVisible(bar);
}

void RowGrid::setLayout(RowGridLayout gridLayout)
{
    const int step = currentStep();
    layout = gridLayout;
    resized();
    setStep(step);
}

void RowGrid::resized()
{
    bar.setBounds(getLocalBounds().withTop(layout.barTop));
}

void RowGrid::entriesChanged()
{
    const int count = numEntries();

    if (count != shownCount)
        setStep(currentStep());

    cursor = juce::jlimit(0, juce::jmax(0, count - 1), cursor);
    const int current = currentEntry();

    if (current != shownCurrent || count != shownCount)
    {
        if (current >= 0)
            bringIntoView(current);

        if (!hasKeyboardFocus(false))
            cursor = juce::jmax(0, current);
    }

    if (count != shownCount)
        lastClick = -1;

    shownCurrent = current;
    shownCount = count;
    repaint();
}

//==============================================================================================================
// Scrolling

RowGrid::Bar::Bar()
    : juce::ScrollBar(false)
{
    setMouseClickGrabsKeyboardFocus(false);
    // Moving the list's cursor scrolls it, so the keyboard has no use for the bar.
    setAccessible(false);
}

void RowGrid::Bar::setLengths(int total, int inView)
{
    entriesInView = inView;
    travel = juce::jmax(0, total - inView);
    setRangeLimits(0.0, total, juce::dontSendNotification);
}

double RowGrid::Bar::getPosition() const
{
    return travel > 0 ? getCurrentRangeStart() / travel : 0.0;
}

void RowGrid::Bar::setPosition(double position)
{
    setCurrentRange(position * travel, entriesInView);
}

void RowGrid::Bar::mouseDown(const juce::MouseEvent& event)
{
    mouseDrag(event);
}

void RowGrid::Bar::mouseDrag(const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu())
        return;

    constexpr int margin = myLookAndFeel::scrollBarMargin;
    setPosition(static_cast<double>(event.x - margin) / (getWidth() - 2 * margin));
}

void RowGrid::Bar::mouseWheelMove(const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel)
{
    juce::Component::mouseWheelMove(event, wheel);
}

int RowGrid::maxStep() const
{
    const int count = numEntries();

    if (count <= visibleEntries())
        return 0;

    return layout.scrollUnit == 1 ? count - 1 : count / layout.scrollUnit;
}

int RowGrid::currentStep() const
{
    const int step = static_cast<int>(maxStep() * bar.getPosition());
    // A list of whole columns ends with the last of them.
    return juce::jlimit(0, juce::jmax(0, (numEntries() - 1) / layout.scrollUnit), step);
}

void RowGrid::setStep(int step)
{
    bar.setLengths(numEntries(), visibleEntries());
    const int last = maxStep();
    // The middle of the step's part of the bar.
    bar.setPosition(last == 0 ? 0.0 : juce::jmin(1.0, (juce::jlimit(0, last, step) + 0.5) / last));
    repaint();
}

int RowGrid::firstVisible() const
{
    return currentStep() * layout.scrollUnit;
}

void RowGrid::bringIntoView(int index)
{
    const int first = firstVisible();

    if (index >= first && index < first + visibleEntries())
        return;

    const int unitsInView = visibleEntries() / layout.scrollUnit;
    setStep(index / layout.scrollUnit - unitsInView / 2);
}

int RowGrid::entryAt(juce::Point<int> position) const
{
    if (position.y >= layout.barTop)
        return -1;

    const int column = juce::jlimit(0, layout.columns - 1, position.x / layout.columnWidth);
    const int row = juce::jlimit(0, layout.rows - 1, (position.y - layout.top) / layout.rowHeight);
    const int index = firstVisible() + layout.rows * column + row;
    return index < numEntries() ? index : -1;
}

juce::Rectangle<int> RowGrid::boundsOf(int index) const
{
    const int place = index - firstVisible();

    if (index < 0 || index >= numEntries() || place < 0 || place >= visibleEntries())
        return {};

    return {layout.columnWidth * (place / layout.rows) + textInset,
            layout.top + layout.rowHeight * (place % layout.rows), layout.columnWidth - 2 * textInset,
            layout.rowHeight};
}

//==============================================================================================================
// Painting

void RowGrid::paint(juce::Graphics& g)
{
    const int first = firstVisible();
    const int end = juce::jmin(numEntries(), first + visibleEntries());
    g.setFont(fontHeight);

    if (numEntries() == 0)
    {
        g.setColour(colours::brightText);
        g.drawText(emptyText(),
                   getLocalBounds().withTop(layout.top).withHeight(layout.rowHeight).reduced(textInset, 0),
                   juce::Justification::centredLeft);
    }

    for (int index = first; index < end; ++index)
    {
        const auto box = boundsOf(index);

        if (!g.clipRegionIntersects(box))
            continue;

        if (isSelected(index))
        {
            g.setColour(colours::raised);
            g.fillRect(box.withTrimmedLeft(-2));
        }

        const bool raised = index == hovered || isSelected(index);
        g.setColour(isCurrent(index)     ? currentColour
                    : index == lastClick ? colours::brightText
                    : raised             ? hoverColour
                                         : colours::captionText);
        paintEntry(g, index, box);

        if (hasKeyboardFocus(false) && index == cursor)
        {
            g.setColour(colours::amber);
            g.drawRect(box.withTrimmedLeft(-3));
        }
    }
}

//==============================================================================================================
// Mouse and keys

void RowGrid::paintEntry(juce::Graphics& g, int index, juce::Rectangle<int> box)
{
    g.drawText(entryText(index), box, juce::Justification::centredLeft);
}

void RowGrid::mouseDown(const juce::MouseEvent& event)
{
    const int index = entryAt(event.getPosition());

    if (index < 0)
        return;

    if (event.mods.isPopupMenu())
        return entryMenuWanted(index);

    lastClick = index;
    cursor = index;
    repaint();
    entryClicked(index, event.mods);
}

void RowGrid::setHovered(int index)
{
    if (index == hovered)
        return;

    repaint(boundsOf(hovered));
    hovered = index;
    repaint(boundsOf(hovered));
}

void RowGrid::mouseMove(const juce::MouseEvent& event)
{
    setHovered(entryAt(event.getPosition()));
}

void RowGrid::mouseExit(const juce::MouseEvent&)
{
    setHovered(-1);
}

void RowGrid::mouseWheelMove(const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel)
{
    if (maxStep() == 0)
        return;

    // JUCE reports a notch as about a quarter; smooth wheels send many fractions of one.
    constexpr float notch = 0.25f;
    const float delta = std::abs(wheel.deltaY) >= std::abs(wheel.deltaX) ? wheel.deltaY : wheel.deltaX;
    wheelRest += (wheel.isReversed ? -delta : delta) / notch;
    int notches = static_cast<int>(wheelRest);

    if (!wheel.isSmooth && notches == 0)
        notches = delta > 0.0f ? 1 : -1;

    if (notches == 0)
        return;

    wheelRest = wheel.isSmooth ? wheelRest - static_cast<float>(notches) : 0.0f;
    const int perNotch = layout.scrollUnit == 1 ? rowsPerWheelStep : 1;
    setStep(currentStep() - notches * perNotch);
    setHovered(entryAt(event.getPosition()));
}

bool RowGrid::keyPressed(const juce::KeyPress& key)
{
    if (const auto place = cursorAfter(key, cursor, layout.rows, numEntries()))
    {
        cursor = *place;
        bringIntoView(cursor);
        cursorMoved();
        return true;
    }

    const bool toggles = key.getKeyCode() == juce::KeyPress::spaceKey;

    if (!toggles && key.getKeyCode() != juce::KeyPress::returnKey)
        return false;

    if (cursor < numEntries())
    {
        lastClick = cursor;
        entryClicked(cursor,
                     toggles ? juce::ModifierKeys(juce::ModifierKeys::ctrlModifier) : key.getModifiers());
        repaint();
    }

    return true;
}

juce::String RowGrid::spokenText() const
{
    if (numEntries() == 0)
        return emptyText();

    const int index = hasKeyboardFocus(false) ? cursor : currentEntry();
    return index >= 0 && index < numEntries() ? entryText(index) : juce::String();
}

} // namespace quorel
