// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CategoryManager.h"

#include "ui/EditorColours.h"

namespace quorel
{

namespace
{
constexpr int wordsTop = 21;
constexpr int wordsBottom = 186;
constexpr int wordHeight = 15;
constexpr int maxRows = 11;
constexpr int widestWord = 124;
constexpr float fontHeight = 12.0f;
constexpr int gridTop = 204;
constexpr int numColumns = 4;
constexpr int numRows = 25;
constexpr int columnWidth = 180;
constexpr int rowHeight = 15;

/** Left and right edges of the columns: two under each of the first two headings, one under the third. */
constexpr std::array<std::pair<int, int>, categoryColumns.size()> columnEdges{
    {{2, 132}, {132, 262}, {265, 390}, {390, 505}, {505, 735}}};

const juce::Colour onColour = juce::Colours::white;

constexpr int numWords()
{
    int count = 0;

    for (const auto& column : categoryColumns)
        count += column.numItems;

    return count;
}

/** Column and row of a word, counting through all columns. */
std::pair<int, int> placeOf(int word)
{
    int column = 0;

    while (word >= categoryColumns[static_cast<size_t>(column)].numItems)
    {
        word -= categoryColumns[static_cast<size_t>(column)].numItems;
        ++column;
    }

    return {column, word};
}

int flagAt(int column, int row)
{
    const auto& place = categoryColumns[static_cast<size_t>(column)];
    return place.group * categoriesPerGroup + place.firstItem + row;
}
} // namespace

CategoryManager::CategoryManager(juce::Rectangle<int> bounds, juce::ChangeListener* listener,
                                 PluginProcessor& pluginProcessor)
    : KeyboardSurface(juce::AccessibilityRole::group)
    , processor(pluginProcessor)
    , grid(pluginProcessor, {numColumns, numRows, columnWidth, rowHeight, 0, numRows * rowHeight, numRows})
{
    setBounds(bounds);
    setName("CategoryManager");
    setTitle("Categories");
    addChangeListener(listener);
    grid.setBounds(getLocalBounds().withTop(gridTop));
    grid.onClick = [this] { sendChangeMessage(); };
    addAndMakeVisible(grid);
}

void CategoryManager::setFilterMode(bool filter)
{
    filterMode = filter;
    grid.showResults(filter);
    repaint();
}

CategoryFlags CategoryManager::shownFlags() const
{
    if (filterMode)
        return processor.getPresetLibrary().getCategoryFilter();

    if (const auto selected = processor.getPresetLibrary().selectedPlaces(); !selected.empty())
        return processor.getPresetCommands().onSelection().commonCategories(selected);

    return categoriesOf(processor);
}

std::optional<int> CategoryManager::categoryAt(juce::Point<int> position)
{
    if (position.y < 0 || position.y >= wordsBottom)
        return {};

    std::optional<int> flag;
    const int row = juce::jlimit(0, maxRows - 1, (position.y - wordsTop) / wordHeight);

    for (size_t column = 0; column < columnEdges.size(); ++column)
        if (position.x >= columnEdges[column].first && position.x < columnEdges[column].second)
            flag = flagAt(static_cast<int>(column), row);

    return flag;
}

juce::Rectangle<int> CategoryManager::wordBounds(int column, int row)
{
    const auto [left, right] = columnEdges[static_cast<size_t>(column)];
    return {left, wordsTop + wordHeight * row, right - left, wordHeight};
}

void CategoryManager::paint(juce::Graphics& g)
{
    const auto shown = shownFlags();
    g.setFont(fontHeight);

    for (int word = 0; word < numWords(); ++word)
    {
        const auto [column, row] = placeOf(word);
        const int flag = flagAt(column, row);
        const bool on = shown[static_cast<size_t>(flag)] != 0;
        auto box = wordBounds(column, row).reduced(3, 0);
        box.setWidth(juce::jmin(box.getWidth(), widestWord));

        if (on)
        {
            g.setColour(colours::raised);
            g.fillRect(box);
        }

        g.setColour(on ? onColour : colours::captionText);
        g.drawText(categoryName(flag), box.withTrimmedLeft(3), juce::Justification::centredLeft);

        if (hasKeyboardFocus(false) && word == cursor)
        {
            g.setColour(colours::amber);
            g.drawRect(box);
        }
    }
}

void CategoryManager::toggle(int flag)
{
    auto& commands = processor.getPresetCommands();

    if (filterMode)
    {
        commands.toggleFilterCategory(flag);
    }
    else if (!processor.getPresetLibrary().selectedPlaces().empty())
    {
        // That asks a question, during which the host may close the editor.
        juce::MessageManager::callAsync(
            [self = juce::Component::SafePointer<CategoryManager>(this), flag]
            {
                if (self != nullptr)
                    self->processor.getPresetCommands().toggleCategory(flag);

                if (self != nullptr)
                    self->sendChangeMessage();
            });
    }
    else if (!processor.getSoundChange().awaitedReason())
    {
        commands.toggleCategory(flag);
    }

    repaint();
    sendChangeMessage();
}

void CategoryManager::mouseDown(const juce::MouseEvent& event)
{
    if (!event.mods.isLeftButtonDown())
        return;

    if (const auto flag = categoryAt(event.getPosition()))
        toggle(*flag);
}

int CategoryManager::cursorFlag() const
{
    const auto [column, row] = placeOf(cursor);
    return flagAt(column, row);
}

bool CategoryManager::keyPressed(const juce::KeyPress& key)
{
    if (const auto place = cursorAfter(key, cursor, maxRows, numWords()))
    {
        cursor = *place;
        cursorMoved();
        return true;
    }

    if (key.getKeyCode() != juce::KeyPress::spaceKey && key.getKeyCode() != juce::KeyPress::returnKey)
        return false;

    toggle(cursorFlag());

    return true;
}

juce::String CategoryManager::spokenText() const
{
    const int flag = cursorFlag();
    return juce::String(categoryName(flag)) + (shownFlags()[static_cast<size_t>(flag)] != 0 ? " on" : " off");
}

} // namespace quorel
