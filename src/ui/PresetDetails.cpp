// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PresetDetails.h"

#include "ui/EditorColours.h"
#include "ui/Geometry.h"
#include "ui/MarkSigns.h"

#include <utility>

namespace quorel
{

namespace
{
constexpr int signSize = 15;
constexpr int signStep = 18;
constexpr int numSigns = 1 + highestRating;
constexpr float fontHeight = 12.0f;
constexpr float outline = 1.0f;
constexpr const char* noAuthor = "author";
constexpr const char* noComment = "comment";

juce::Point<int> position()
{
    return geometry::manager::marks.getPosition();
}
} // namespace

PresetMarkRow::PresetMarkRow(juce::Rectangle<int> bounds, PluginProcessor& pluginProcessor)
    : KeyboardSurface(juce::AccessibilityRole::group)
    , processor(pluginProcessor)
{
    setBounds(bounds);
    setTitle("Favourite and rating");
}

juce::Rectangle<int> PresetMarkRow::signBounds(int sign)
{
    // A little more room behind the heart.
    const int gap = sign > 0 ? signSize / 3 : 0;
    return {sign * signStep + gap, 0, signSize, signSize};
}

PresetMark PresetMarkRow::shownMark() const
{
    const auto presets = processor.getPresetCommands().onSelection().chosen();
    return presets.empty() ? PresetMark() : processor.getPresetLibrary().marks.get(presets[0]);
}

void PresetMarkRow::paint(juce::Graphics& g)
{
    const auto mark = shownMark();

    for (int sign = 0; sign < numSigns; ++sign)
    {
        const bool lit = sign == 0 ? mark.favourite : sign <= mark.rating;
        const auto box = signBounds(sign).toFloat().reduced(1.5f);
        const auto shape = sign == 0 ? heartIn(box) : starIn(box);
        g.setColour(lit ? colours::amber : colours::captionText);

        if (lit)
            g.fillPath(shape);
        else
            g.strokePath(shape, juce::PathStrokeType(outline));

        if (hasKeyboardFocus(false) && sign == cursor)
        {
            g.setColour(colours::amber);
            g.drawRect(signBounds(sign));
        }
    }
}

void PresetMarkRow::click(int sign)
{
    auto& selection = processor.getPresetCommands().onSelection();
    const auto presets = selection.chosen();

    if (presets.empty())
        return;

    if (sign == 0)
        selection.setFavourite(presets, !shownMark().favourite);
    else
        selection.rate(presets, shownMark().rating == sign ? 0 : sign);

    repaint();

    if (onChange)
        onChange();
}

void PresetMarkRow::mouseDown(const juce::MouseEvent& event)
{
    if (event.mods.isLeftButtonDown())
        for (int sign = 0; sign < numSigns; ++sign)
            if (signBounds(sign).contains(event.getPosition()))
                return click(sign);
}

bool PresetMarkRow::keyPressed(const juce::KeyPress& key)
{
    if (const auto place = cursorAfter(key, cursor, numSigns, numSigns))
    {
        cursor = *place;
        cursorMoved();
        return true;
    }

    if (key.getKeyCode() != juce::KeyPress::spaceKey && key.getKeyCode() != juce::KeyPress::returnKey)
        return false;

    click(cursor);
    return true;
}

juce::String PresetMarkRow::spokenText() const
{
    const auto mark = shownMark();
    return (mark.favourite ? "favourite, " : "no favourite, ") + juce::String(mark.rating) + " of " +
           juce::String(highestRating) + " stars";
}

PresetDetails::PresetDetails(PluginProcessor& pluginProcessor, std::function<void()> changed)
    : processor(pluginProcessor)
    , marks(geometry::manager::marks.withZeroOrigin(), pluginProcessor)
    , author(geometry::manager::author - position(), "authorEntry", {})
    , comment(geometry::manager::comment - position(), "commentEntry", {})
    , onChange(std::move(changed))
{
    setBounds(geometry::manager::marks.getUnion(geometry::manager::comment));
    marks.onChange = onChange;
    addAndMakeVisible(marks);
    setUp(author, noAuthor, longestAuthor);
    setUp(comment, noComment, longestComment);
}

void PresetDetails::setUp(juce::Label& label, const char* placeholder, int longest)
{
    label.setTitle(placeholder);
    label.setFont(juce::Font(fontHeight));
    label.setMinimumHorizontalScale(1.0f);
    label.setJustificationType(juce::Justification::centredLeft);
    label.setColour(juce::Label::textWhenEditingColourId, juce::Colours::white);
    label.setColour(juce::Label::backgroundWhenEditingColourId, colours::sunken);
    label.setColour(juce::Label::outlineWhenEditingColourId, colours::amber);
    label.addListener(this);
    label.onEditorShow = [&label, placeholder, longest]
    {
        auto* editor = label.getCurrentTextEditor();
        editor->setInputRestrictions(longest);
        // The line is hardly higher than its letters.
        editor->setIndents(1, 0);

        if (label.getText() == placeholder)
            editor->clear();
    };
    addAndMakeVisible(label);
}

void PresetDetails::refresh()
{
    const PresetPlace current{processor.getFolderName(), processor.getPresetName()};
    const auto* entry = processor.getPresetLibrary().find(current);
    const bool isEdited = author.isBeingEdited() || comment.isBeingEdited();
    marks.repaint();

    // Don't overwrite what is being typed, unless it was meant for another preset.
    if (isEdited && current == shown)
        return;

    author.hideEditor(true);
    comment.hideEditor(true);
    shown = current;
    const auto show = [entry](juce::Label& label, const juce::String& text, const char* placeholder)
    {
        label.setColour(juce::Label::textColourId,
                        text.isEmpty() ? colours::captionText : colours::brightText);
        label.setText(text.isEmpty() ? juce::String(placeholder) : text, juce::dontSendNotification);
        label.setTooltip(text);
        label.setVisible(entry != nullptr);
    };
    show(author, entry != nullptr ? entry->notes.author : juce::String(), noAuthor);
    show(comment, entry != nullptr ? entry->notes.comment : juce::String(), noComment);
}

void PresetDetails::labelTextChanged(juce::Label*)
{
    const auto typed = [](const juce::Label& label, const char* placeholder, int longest)
    {
        const auto text = cleanNote(label.getText(), longest);
        return text == placeholder ? juce::String() : text;
    };
    processor.getPresetCommands().onSelection().setNotes(
        shown, {typed(author, noAuthor, longestAuthor), typed(comment, noComment, longestComment)});
    onChange();
}

} // namespace quorel
