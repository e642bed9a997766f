// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/BitmapText.h"

namespace quorel
{
namespace
{
constexpr int glyphsInStrip = 40;
constexpr int blank = 40;
constexpr int standIn = 36;

// Glyphs have margins in the strip: they are cut out and set closer than the image is wide.
constexpr int stepLess = 4;
constexpr int widthLess = 2;

constexpr int cellWidth = 8;
constexpr int cellHeight = 9;
constexpr int cellStep = 7;
constexpr int cellWidthLess = 3;

int textStep(const CBitmap& strip)
{
    return strip.getWidth() - stepLess;
}
} // namespace

int glyphRow(GlyphSet set, juce::juce_wchar character)
{
    static const juce::String sets[] = {"ABCDEFGHIJKLMNOPQRSTUVWXYZ012345678-_.+/ ",
                                        "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-.:, "};
    const auto& glyphs = sets[set == GlyphSet::first ? 0 : 1];
    const int row = glyphs.indexOfChar(juce::CharacterFunctions::toUpperCase(character));
    if (row == blank)
        return -1;
    return row >= 0 ? row : standIn;
}

int glyphHeight(const CBitmap& strip)
{
    return strip.getHeight() / glyphsInStrip;
}

juce::Point<int> bitmapTextSize(const CBitmap& strip, const juce::String& text)
{
    return {textStep(strip) * text.length(), glyphHeight(strip)};
}

void drawBitmapText(juce::Graphics& g, const CBitmap& strip, const juce::String& text,
                    juce::Point<int> position)
{
    const int width = strip.getWidth() - widthLess;
    const int height = glyphHeight(strip);
    for (auto character = text.getCharPointer(); !character.isEmpty(); position.x += textStep(strip))
        if (const int row = glyphRow(GlyphSet::first, character.getAndAdvance()); row >= 0)
            strip.draw(g, juce::Rectangle<int>(position.x, position.y, width, height).toFloat(),
                       {1, height * row, width, height}, true);
}

void drawBitmapTextBox(juce::Graphics& g, const CBitmap& strip, const juce::String& text,
                       juce::Rectangle<int> box, juce::Colour textColour, juce::Colour backgroundColour)
{
    g.setColour(backgroundColour);
    g.fillRect(box);
    g.setColour(textColour);
    const auto size = bitmapTextSize(strip, text);
    drawBitmapText(
        g, strip, text,
        box.getPosition().translated((box.getWidth() - size.x) / 2, (box.getHeight() - size.y) / 2));
}

void drawBitmapCells(juce::Graphics& g, const CBitmap& strip, const juce::String& text)
{
    const int height = glyphHeight(strip);
    int x = 0;
    for (auto character = text.getCharPointer(); !character.isEmpty(); x += cellStep)
        if (const int row = glyphRow(GlyphSet::second, character.getAndAdvance()); row >= 0)
            strip.draw(g, juce::Rectangle<int>(x, 0, cellWidth, cellHeight).toFloat(),
                       {0, height * row, strip.getWidth() - cellWidthLess, height}, true);
}

} // namespace quorel
