// SPDX-License-Identifier: GPL-3.0-or-later
// Bitmap fonts: a column of 40 cells, white on nothing, for use as a mask.
#include "Canvas.h"
#include "Lettering.h"

namespace quorel::artwork
{
namespace
{

constexpr const char* firstSet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345678-_.+/ ";
constexpr const char* secondSet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-.:, ";

struct Strip
{
    const char* name;
    const char* characters;
    /** The part of the cell that is shown, from its left edge on: texts overlap their cells. */
    float left;
    float shownWidth;
    float capHeight;
    float baseline;
};

// Texts of the first two take columns 1 to width - 2 of the cell and step by width - 4; those of the third
// take width - 3 columns from the first on, pressed to 8 pixels of 9, and step by 7.
const Strip strips[] = {{"text_strip_a", firstSet, 1.0f, 7.0f, 6.0f, 8.0f},
                        {"text_strip_b", firstSet, 1.0f, 13.0f, 11.0f, 14.0f},
                        {"label_text_strip", secondSet, 0.0f, 8.0f, 8.0f, 10.667f}};

/** Presses letters that are wider than the cell, and lifts what hangs out below it. */
void fitIntoCell(juce::Path& glyph, juce::Rectangle<float> cell)
{
    const auto ink = glyph.getBounds();
    if (ink.getWidth() > cell.getWidth())
        glyph.applyTransform(juce::AffineTransform::translation(-ink.getCentreX(), 0.0f)
                                 .scaled(cell.getWidth() / ink.getWidth(), 1.0f)
                                 .translated(cell.getCentreX(), 0.0f));
    if (ink.getBottom() > cell.getBottom())
        glyph.applyTransform(juce::AffineTransform::translation(0.0f, cell.getBottom() - ink.getBottom()));
}

} // namespace

bool paintBitmapFont(const Canvas& canvas)
{
    for (const auto& strip : strips)
    {
        if (canvas.name != strip.name)
            continue;
        const auto text =
            juce::String::charToString(static_cast<juce::juce_wchar>(strip.characters[canvas.frame]));
        // As outlines: text would be moved to whole pixels.
        auto glyph = outlineOf(text, strip.left + strip.shownWidth / 2, strip.baseline,
                               {Face::bold, strip.capHeight, juce::Colours::white, 0.0f});
        fitIntoCell(glyph, {strip.left, 0, strip.shownWidth, canvas.bounds().getHeight()});
        canvas.g.setColour(juce::Colours::white);
        canvas.g.fillPath(glyph);
        return true;
    }
    return false;
}

} // namespace quorel::artwork
