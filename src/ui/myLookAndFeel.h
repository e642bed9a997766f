// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Makes JUCE's own parts fit the artwork: menus without frames, small bold type, plain labels, all in the
    editor's typeface. Message thread. */
class myLookAndFeel : public juce::LookAndFeel_V3
{
public:
    myLookAndFeel();

    juce::Typeface::Ptr getTypefaceForFont(const juce::Font& font) override;

    juce::Font getTextButtonFont(juce::TextButton&, int buttonHeight) override;

    void drawAlertBox(juce::Graphics& g, juce::AlertWindow& alert, const juce::Rectangle<int>& textArea,
                      juce::TextLayout& textLayout) override;
    int getAlertWindowButtonHeight() override;
    juce::Font getAlertWindowMessageFont() override;
    juce::Font getAlertWindowFont() override;

    juce::Font getPopupMenuFont() override;
    /** Keeps rows that can't be chosen readable: they carry information. */
    void drawPopupMenuItem(juce::Graphics& g, const juce::Rectangle<int>& area, bool isSeparator,
                           bool isActive, bool isHighlighted, bool isTicked, bool hasSubMenu,
                           const juce::String& text, const juce::String& shortcutKeyText,
                           const juce::Drawable* icon, const juce::Colour* textColour) override;

    void drawComboBox(juce::Graphics&, int, int, bool, int, int, int, int, juce::ComboBox&) override {}

    juce::Font getComboBoxFont(juce::ComboBox& box) override;
    void positionComboBoxText(juce::ComboBox& box, juce::Label& label) override;
    void drawComboBoxTextWhenNothingSelected(juce::Graphics& g, juce::ComboBox& box,
                                             juce::Label& label) override;

    /** Room between the ends of a scroll bar and those of its track, in pixels. */
    static constexpr int scrollBarMargin = 5;

    /** A thin rounded track, and the thumb on it. */
    void drawScrollbar(juce::Graphics& g, juce::ScrollBar& bar, int x, int y, int width, int height,
                       bool isVertical, int thumbStart, int thumbSize, bool isMouseOver,
                       bool isMouseDown) override;

    int getMinimumScrollbarThumbSize(juce::ScrollBar&) override { return 30; }

    /** Text fitted into its box; in boxes of 26 pixels and more, up to three small lines. */
    void drawLabel(juce::Graphics& g, juce::Label& label) override;

    /** A thin amber frame around what has the keyboard focus. */
    std::unique_ptr<juce::FocusOutline> createFocusOutlineForComponent(juce::Component&) override;

private:
    void setColours();
};

} // namespace quorel
