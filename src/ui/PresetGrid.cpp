// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PresetGrid.h"

#include "ui/EditorColours.h"
#include "ui/MarkSigns.h"
#include "ui/PopupMenus.h"

namespace quorel
{

namespace
{
constexpr int signSize = 10;
constexpr float signInset = 0.5f;
constexpr int gapBehindName = 6;
constexpr int narrowestFolder = 20;
constexpr float fontHeight = 12.0f;
constexpr float folderFontHeight = 10.5f;
/** No brighter than the names. */
const juce::Colour folderColour = juce::Colours::grey;
} // namespace

PresetGrid::PresetGrid(PluginProcessor& pluginProcessor, RowGridLayout gridLayout)
    : RowGrid(gridLayout)
    , processor(pluginProcessor)
    , library(pluginProcessor.getPresetLibrary())
{
    setTitle("Presets");
}

void PresetGrid::showResults(bool results)
{
    showingResults = results;
    entriesChanged();
}

int PresetGrid::numEntries() const
{
    return showingResults ? library.getFilteredCount() : library.getPresetCount();
}

juce::String PresetGrid::entryText(int index) const
{
    return showingResults ? library.getFilteredPreset(index).name : library.getPresetNames()[index];
}

int PresetGrid::currentEntry() const
{
    if (!showingResults)
        return library.getCurrentPresetIndex();

    for (int row = 0; row < library.getFilteredCount(); ++row)
        if (isCurrent(row))
            return row;

    return -1;
}

bool PresetGrid::isCurrent(int index) const
{
    if (!showingResults)
        return index == library.getCurrentPresetIndex();

    const auto& entry = library.getFilteredPreset(index);
    return entry.name == processor.getPresetName() && entry.folder == processor.getFolderName();
}

bool PresetGrid::isSelected(int index) const
{
    return library.isSelected(index);
}

void PresetGrid::entryClicked(int index, const juce::ModifierKeys& modifiers)
{
    using Modifier = PresetCommands::Modifier;
    const auto modifier = modifiers.isShiftDown()  ? Modifier::shift
                          : modifiers.isCtrlDown() ? Modifier::control
                                                   : Modifier::none;
    auto& commands = processor.getPresetCommands();

    if (showingResults)
        commands.clickResult(index, modifier);
    else
        commands.clickPreset(index, modifier);

    if (onClick)
        onClick();
}

juce::String PresetGrid::emptyText() const
{
    if (!showingResults)
        return {};

    const int folder = library.getSelectedResultFolder();
    const bool isLimited = folder >= 0 && folder < library.getFolderCount();
    const auto words = categoryWords(library.getCategoryFilter());
    const auto among = library.getAmong();
    return "No " +
           juce::String(among == PresetQuery::Among::favourites ? "favourite "
                        : among == PresetQuery::Among::recent   ? "recent "
                                                                : "") +
           "preset found" + (words.isEmpty() ? juce::String() : " with " + words.joinIntoString(", ")) +
           (isLimited ? " in " + library.getFolderNames()[folder] : juce::String());
}

PresetPlace PresetGrid::placeOf(int index) const
{
    return showingResults ? library.getFilteredPreset(index).place()
                          : PresetPlace{processor.getFolderName(), library.getPresetNames()[index]};
}

juce::String PresetGrid::getTooltip()
{
    if (hoveredEntry() < 0 || hoveredEntry() >= numEntries())
        return {};

    const auto place = placeOf(hoveredEntry());
    juce::StringArray lines{place.text()};

    if (const auto* entry = library.find(place); entry != nullptr && !entry->notes.isEmpty())
    {
        lines.add(entry->notes.author);
        lines.add(entry->notes.comment);
        lines.removeEmptyStrings();
    }

    // A name that can be read needs no tip.
    return lines.size() > 1 || showingResults ? lines.joinIntoString("\n") : juce::String();
}

void PresetGrid::entryMenuWanted(int index)
{
    auto& selection = processor.getPresetCommands().onSelection();
    const auto rows =
        isSelected(index) ? selection.menu(selection.chosen()) : selection.menu({placeOf(index)});
    showMenuAtMouse(popupMenuOf(rows), *this,
                    [this](int id)
                    {
                        const juce::Component::SafePointer<PresetGrid> self(this);
                        processor.getPresetCommands().onSelection().menuChosen(id);

                        if (self != nullptr && onClick)
                            onClick();
                    });
}

void PresetGrid::paintEntry(juce::Graphics& g, int index, juce::Rectangle<int> box)
{
    const auto place = placeOf(index);
    const auto mark = library.marks.get(place);
    const int numSigns = mark.rating + (mark.favourite ? 1 : 0);
    auto signs = box.removeFromRight(numSigns * signSize);
    g.drawText(place.name, box, juce::Justification::centredLeft);
    const int nameWidth = g.getCurrentFont().getStringWidth(place.name) + gapBehindName;

    if (const auto rest = box.withTrimmedLeft(nameWidth);
        showingResults && rest.getWidth() >= narrowestFolder)
    {
        g.setColour(folderColour);
        g.setFont(folderFontHeight);
        g.drawText(place.folder, rest, juce::Justification::centredRight);
        g.setFont(fontHeight);
    }

    g.setColour(colours::amber);

    for (int sign = 0; sign < numSigns; ++sign)
    {
        const auto shape = signs.removeFromRight(signSize).toFloat().reduced(signInset);
        g.fillPath(mark.favourite && sign == 0 ? heartIn(shape) : starIn(shape));
    }
}

} // namespace quorel
