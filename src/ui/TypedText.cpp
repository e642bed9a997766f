// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TypedText.h"

#include "ui/EditorColours.h"
#include "ui/EditorKeyboard.h"

namespace quorel
{
namespace
{
const juce::Colour ink{0xfff0f0f0};
constexpr float selectionAlpha = 0.4f;
} // namespace

TypedText::TypedText(const juce::String& name)
    : juce::TextEditor(name)
{
    // Its own colours: a label gives its field those of the text that it replaces.
    setColour(textColourId, ink);
    setColour(highlightedTextColourId, juce::Colours::white);
    setColour(highlightColourId, colours::amber.withAlpha(selectionAlpha));
    setColour(backgroundColourId, colours::sunken);
    setColour(outlineColourId, juce::Colours::transparentBlack);
    setColour(focusedOutlineColourId, colours::amber);
    setColour(juce::CaretComponent::caretColourId, colours::amber);
    setSelectAllWhenFocused(false);
}

TypedText::~TypedText()
{
    if (!hasKeyboardFocus(true))
        return;

    // Before the field is taken off its parent, which would take the keyboard for itself.
    giveAwayKeyboardFocus();
    EditorKeyboard::leave(*this);
}

} // namespace quorel
