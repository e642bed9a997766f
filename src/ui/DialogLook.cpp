// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/DialogLook.h"

#include "resources/EditorFont.h"
#include "ui/EditorColours.h"

namespace quorel
{
namespace
{
const juce::Colour ground{0xff1c1c1e};
const juce::Colour frame{0xff606060};
const juce::Colour brightInk{0xfff0f0f0};
} // namespace

DialogLook::DialogLook()
    : juce::LookAndFeel_V4(juce::LookAndFeel_V4::ColourScheme{ground, colours::sunken, colours::sunken, frame,
                                                              colours::brightText, colours::raised, brightInk,
                                                              colours::amber, colours::brightText})
{
    constexpr float selectionAlpha = 0.4f;
    setColour(juce::DirectoryContentsDisplayComponent::textColourId, colours::brightText);
    setColour(juce::DirectoryContentsDisplayComponent::highlightColourId,
              colours::amber.withAlpha(selectionAlpha));
    setColour(juce::DirectoryContentsDisplayComponent::highlightedTextColourId, brightInk);
    setColour(juce::FileBrowserComponent::currentPathBoxBackgroundColourId, colours::sunken);
    setColour(juce::FileBrowserComponent::currentPathBoxTextColourId, colours::brightText);
    setColour(juce::FileBrowserComponent::currentPathBoxArrowColourId, colours::brightText);
    setColour(juce::FileBrowserComponent::filenameBoxBackgroundColourId, colours::sunken);
    setColour(juce::FileBrowserComponent::filenameBoxTextColourId, brightInk);
    setColour(juce::FileChooserDialogBox::titleTextColourId, brightInk);
    setColour(juce::TextEditor::highlightColourId, colours::amber.withAlpha(selectionAlpha));
    setColour(juce::TextEditor::highlightedTextColourId, brightInk);
    setColour(juce::CaretComponent::caretColourId, colours::amber);
    setColour(juce::Label::textWhenEditingColourId, brightInk);
    setColour(juce::Slider::thumbColourId, colours::brightText);
    // White on amber can't be read.
    setColour(juce::PopupMenu::highlightedBackgroundColourId, colours::raised);
}

juce::Typeface::Ptr DialogLook::getTypefaceForFont(const juce::Font& font)
{
    return editorTypeface(font.isBold());
}

} // namespace quorel
