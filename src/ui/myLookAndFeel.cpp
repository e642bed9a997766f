// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/myLookAndFeel.h"

#include "resources/EditorFont.h"
#include "ui/EditorColours.h"
#include "ui/widgets/MenuMark.h"

namespace quorel
{
namespace
{
constexpr float smallType = 13.0f;
constexpr int alertButtonHeight = 22;

// Alert icons.
constexpr int iconWidth = 80;
constexpr int iconExtra = 50;
constexpr int iconMargin = 20;
constexpr float iconCorner = 5.0f;
constexpr float iconCharacterHeight = 0.9f;
const juce::Colour warningColour{0x55ff5555};
const juce::Colour infoColour{0x605555ff};
const juce::Colour questionColour{0x40b69900};

// Boxes and labels of this height and more hold several lines.
constexpr int tallHeight = 26;
constexpr int comboTallHeight = 20;
constexpr float comboFontPart = 0.8f;
constexpr float tallLabelType = 9.0f;
constexpr int tallLabelLines = 3;
constexpr float tallLabelScale = 0.7f;

const juce::Colour buttonColour{0xff303030};
constexpr float selectionAlpha = 0.4f;

constexpr float scrollBarThickness = 8.0f;

constexpr float focusLine = 1.5f;
constexpr float focusCorner = 3.0f;

juce::Path alertIcon(juce::MessageBoxIconType type, juce::Rectangle<float> area)
{
    juce::Path icon;
    if (type == juce::MessageBoxIconType::WarningIcon)
    {
        icon.addTriangle(area.getCentreX(), area.getY(), area.getRight(), area.getBottom(), area.getX(),
                         area.getBottom());
        icon = icon.createPathWithRoundedCorners(iconCorner);
    }
    else
    {
        icon.addEllipse(area);
    }

    const char* character = type == juce::MessageBoxIconType::WarningIcon ? "!"
                            : type == juce::MessageBoxIconType::InfoIcon  ? "i"
                                                                          : "?";
    juce::GlyphArrangement glyphs;
    glyphs.addFittedText(juce::Font(area.getHeight() * iconCharacterHeight, juce::Font::bold), character,
                         area.getX(), area.getY(), area.getWidth(), area.getHeight(),
                         juce::Justification::centred, 1);
    glyphs.createPath(icon);
    // The character is cut out of the shape.
    icon.setUsingNonZeroWinding(false);
    return icon;
}

juce::Colour alertIconColour(juce::MessageBoxIconType type)
{
    if (type == juce::MessageBoxIconType::WarningIcon)
        return warningColour;
    return type == juce::MessageBoxIconType::InfoIcon ? infoColour : questionColour;
}

} // namespace

myLookAndFeel::myLookAndFeel()
{
    setColours();
}

void myLookAndFeel::setColours()
{
    setColour(juce::Label::backgroundColourId, juce::Colours::transparentBlack);
    setColour(juce::Label::textColourId, colours::brightText);
    setColour(juce::ComboBox::backgroundColourId, juce::Colours::black.withAlpha(0.0f));
    setColour(juce::ComboBox::textColourId, colours::brightText);
    setColour(juce::PopupMenu::backgroundColourId, juce::Colours::black);
    setColour(juce::TooltipWindow::backgroundColourId, colours::sunken);
    setColour(juce::TooltipWindow::textColourId, colours::brightText);
    setColour(juce::TooltipWindow::outlineColourId, colours::raised);
    setColour(juce::PopupMenu::textColourId, colours::brightText);
    setColour(juce::PopupMenu::headerTextColourId, colours::captionText);
    setColour(juce::PopupMenu::highlightedBackgroundColourId, buttonColour);
    setColour(juce::PopupMenu::highlightedTextColourId, juce::Colours::white);
    setColour(juce::ScrollBar::trackColourId, juce::Colour(0x30ffffff));
    setColour(juce::ScrollBar::thumbColourId, juce::Colours::grey);
    setColour(juce::AlertWindow::backgroundColourId, juce::Colours::black);
    setColour(juce::AlertWindow::textColourId, colours::brightText);

    // Buttons and fields of the boxes.
    setColour(juce::AlertWindow::outlineColourId, colours::raised);
    setColour(juce::TextButton::buttonColourId, buttonColour);
    setColour(juce::TextButton::textColourOffId, colours::brightText);
    setColour(juce::TextButton::textColourOnId, colours::brightText);
    setColour(juce::TextEditor::backgroundColourId, colours::sunken);
    setColour(juce::TextEditor::textColourId, colours::brightText);
    setColour(juce::TextEditor::outlineColourId, colours::raised);
    setColour(juce::TextEditor::focusedOutlineColourId, colours::amber);
    setColour(juce::TextEditor::highlightColourId, colours::amber.withAlpha(selectionAlpha));
    setColour(juce::TextEditor::highlightedTextColourId, juce::Colours::white);
    setColour(juce::CaretComponent::caretColourId, colours::amber);
}

juce::Typeface::Ptr myLookAndFeel::getTypefaceForFont(const juce::Font& font)
{
    return editorTypeface(font.isBold());
}

juce::Font myLookAndFeel::getTextButtonFont(juce::TextButton&, int)
{
    return juce::Font(smallType, juce::Font::bold);
}

void myLookAndFeel::drawAlertBox(juce::Graphics& g, juce::AlertWindow& alert,
                                 const juce::Rectangle<int>& textArea, juce::TextLayout& textLayout)
{
    g.fillAll(alert.findColour(juce::AlertWindow::backgroundColourId));

    int iconSpace = 0;
    if (const auto type = alert.getAlertType(); type != juce::MessageBoxIconType::NoIcon)
    {
        int size = juce::jmin(iconWidth + iconExtra, alert.getHeight() + iconMargin);
        if (alert.containsAnyExtraComponents() || alert.getNumButtons() > 2)
            size = juce::jmin(size, textArea.getHeight() + iconExtra);

        // A tenth of it is cut off by the corner.
        g.setColour(alertIconColour(type));
        g.fillPath(alertIcon(type, juce::Rectangle<int>(size / -10, size / -10, size, size).toFloat()));
        iconSpace = iconWidth;
    }

    g.setColour(alert.findColour(juce::AlertWindow::textColourId));
    textLayout.draw(g, textArea.withTrimmedLeft(iconSpace).toFloat());

    g.setColour(alert.findColour(juce::AlertWindow::outlineColourId));
    g.drawRect(0, 0, alert.getWidth(), alert.getHeight());
}

int myLookAndFeel::getAlertWindowButtonHeight()
{
    return alertButtonHeight;
}

juce::Font myLookAndFeel::getAlertWindowMessageFont()
{
    return juce::Font(smallType);
}

juce::Font myLookAndFeel::getAlertWindowFont()
{
    return juce::Font(smallType);
}

juce::Font myLookAndFeel::getPopupMenuFont()
{
    return juce::Font(smallType, juce::Font::bold);
}

void myLookAndFeel::drawPopupMenuItem(juce::Graphics& g, const juce::Rectangle<int>& area, bool isSeparator,
                                      bool isActive, bool isHighlighted, bool isTicked, bool hasSubMenu,
                                      const juce::String& text, const juce::String& shortcutKeyText,
                                      const juce::Drawable* icon, const juce::Colour* textColour)
{
    LookAndFeel_V3::drawPopupMenuItem(g, area, isSeparator, true, isHighlighted && isActive, isTicked,
                                      hasSubMenu, text, shortcutKeyText, icon,
                                      isActive ? textColour : &colours::quietText);
}

juce::Font myLookAndFeel::getComboBoxFont(juce::ComboBox& box)
{
    const int height = box.getHeight();
    return juce::Font(height > comboTallHeight
                          ? smallType
                          : juce::jmin(smallType, static_cast<float>(height) * comboFontPart));
}

void myLookAndFeel::positionComboBoxText(juce::ComboBox& box, juce::Label& label)
{
    const auto font = getComboBoxFont(box).boldened();
    if (box.getHeight() < tallHeight)
    {
        const int y = static_cast<int>((static_cast<float>(box.getHeight()) - font.getHeight()) / 2.0f);
        label.setBounds(1, y, box.getWidth() - 2, juce::jmin(box.getHeight(), box.getHeight() - 2 * y));
    }
    else
    {
        label.setBounds(1, 3, box.getWidth() - 2, box.getHeight() - 4);
    }
    label.setFont(font);
    // Room for the mark of a menu, and as much on the other side.
    if (box.getHeight() < tallHeight)
        label.setBorderSize({0, menuMarkRoom, 0, menuMarkRoom});
}

void myLookAndFeel::drawComboBoxTextWhenNothingSelected(juce::Graphics& g, juce::ComboBox& box,
                                                        juce::Label& label)
{
    g.setColour(colours::quietText);
    g.setFont(getLabelFont(label));
    g.drawFittedText(box.getTextWhenNothingSelected(),
                     getLabelBorderSize(label).subtractedFrom(label.getLocalBounds()),
                     label.getJustificationType(), 1, label.getMinimumHorizontalScale());
}

void myLookAndFeel::drawScrollbar(juce::Graphics& g, juce::ScrollBar& bar, int x, int y, int width,
                                  int height, bool isVertical, int thumbStart, int thumbSize, bool, bool)
{
    // The base class places the thumb on the whole bar.
    const auto length = static_cast<float>(isVertical ? height : width);
    const float scale = 1.0f - 2.0f * scrollBarMargin / length;
    const float start = scrollBarMargin + static_cast<float>(thumbStart) * scale;
    const float size = static_cast<float>(thumbSize) * scale;
    const auto area = juce::Rectangle<int>(x, y, width, height).toFloat();
    const auto track = isVertical ? area.withSizeKeepingCentre(scrollBarThickness, area.getHeight() * scale)
                                  : area.withSizeKeepingCentre(area.getWidth() * scale, scrollBarThickness);
    const auto thumb = isVertical ? track.withY(start).withHeight(size) : track.withX(start).withWidth(size);
    g.setColour(bar.findColour(juce::ScrollBar::trackColourId));
    g.fillRoundedRectangle(track, scrollBarThickness / 2.0f);
    g.setColour(bar.findColour(juce::ScrollBar::thumbColourId));
    g.fillRoundedRectangle(thumb, scrollBarThickness / 2.0f);
}

void myLookAndFeel::drawLabel(juce::Graphics& g, juce::Label& label)
{
    constexpr float disabledAlpha = 0.5f;
    g.fillAll(label.findColour(juce::Label::backgroundColourId));

    const float alpha = label.isEnabled() ? 1.0f : disabledAlpha;
    if (!label.isBeingEdited())
    {
        const auto area = getLabelBorderSize(label).subtractedFrom(label.getLocalBounds());
        g.setColour(label.findColour(juce::Label::textColourId).withMultipliedAlpha(alpha));

        if (label.getHeight() < tallHeight)
        {
            const auto font = getLabelFont(label);
            const int lines =
                juce::jmax(1, static_cast<int>(static_cast<float>(area.getHeight()) / font.getHeight()));
            g.setFont(font);
            g.drawFittedText(label.getText(), area, label.getJustificationType(), lines,
                             label.getMinimumHorizontalScale());
        }
        else
        {
            g.setFont(juce::Font(tallLabelType));
            g.drawFittedText(label.getText(), area, juce::Justification::topLeft, tallLabelLines,
                             tallLabelScale);
        }
    }
    else if (!label.isEnabled())
    {
        return;
    }

    g.setColour(label.findColour(juce::Label::outlineColourId).withMultipliedAlpha(alpha));
    g.drawRect(label.getLocalBounds());
}

std::unique_ptr<juce::FocusOutline> myLookAndFeel::createFocusOutlineForComponent(juce::Component&)
{
    struct Frame : public juce::FocusOutline::OutlineWindowProperties
    {
        juce::Rectangle<int> getOutlineBounds(juce::Component& component) override
        {
            return component.getScreenBounds();
        }

        void drawOutline(juce::Graphics& g, int width, int height) override
        {
            const auto bounds = juce::Rectangle<int>(width, height).toFloat().reduced(focusLine / 2.0f);
            g.setColour(colours::amber);
            g.drawRoundedRectangle(bounds, focusCorner, focusLine);
        }
    };

    return std::make_unique<juce::FocusOutline>(std::make_unique<Frame>());
}

} // namespace quorel
