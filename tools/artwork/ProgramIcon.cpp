// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgramIcon.h"

#include "Palette.h"
#include "PngWriter.h"
#include "Surfaces.h"
#include "resources/WindowIcons.h"

#include <cmath>

namespace quorel::artwork
{

juce::Image drawProgramIcon(int size)
{
    juce::Image image(juce::Image::ARGB, size, size, true, juce::SoftwareImageType());
    juce::Graphics g(image);
    const auto edge = static_cast<float>(size);
    const Rect area(edge, edge);
    const auto plate = area.reduced(edge / 32.0f);
    g.setColour(palette::edge);
    g.fillPath(roundedRect(plate, edge * 0.2f));
    const auto face = plate.reduced(juce::jmax(0.5f, edge / 64.0f));
    fillShaded(g, roundedRect(face, edge * 0.19f), face, rgb(0x46474c), rgb(0x202124));

    // Lines of whole pixels keep the small ones sharp.
    const float stroke = juce::jmax(2.0f, std::round(edge * 0.11f));
    const float margin = std::round(edge * 0.2f) + stroke / 2;
    const auto letter = area.reduced(margin, margin);
    juce::Path ring;
    ring.addRoundedRectangle(letter, edge * 0.16f);
    g.setGradientFill(juce::ColourGradient::vertical(rgb(0xf2eee4), rgb(0xb4b0a8), letter));
    g.strokePath(ring, juce::PathStrokeType(stroke));

    juce::Path tail;
    tail.startNewSubPath(letter.getRelativePoint(0.58f, 0.58f));
    tail.lineTo(letter.getRelativePoint(1.12f, 1.12f));
    const juce::PathStrokeType tailStroke(stroke * 1.1f, juce::PathStrokeType::mitered,
                                          juce::PathStrokeType::butt);
    g.setColour(palette::amberBright);
    g.strokePath(tail, tailStroke);
    return image;
}

juce::Image drawDocumentIcon(int size)
{
    juce::Image image(juce::Image::ARGB, size, size, true, juce::SoftwareImageType());
    juce::Graphics g(image);
    const auto edge = static_cast<float>(size);
    const float margin = std::round(edge * 0.11f);
    const float line = juce::jmax(1.0f, std::round(edge / 64.0f));
    const float fold = std::round(edge * 0.24f);
    const auto sheet = Rect(edge, edge).reduced(margin, line).reduced(line / 2);

    juce::Path outline;
    outline.startNewSubPath(sheet.getTopLeft());
    outline.lineTo(sheet.getRight() - fold, sheet.getY());
    outline.lineTo(sheet.getRight(), sheet.getY() + fold);
    outline.lineTo(sheet.getBottomRight());
    outline.lineTo(sheet.getBottomLeft());
    outline.closeSubPath();
    fillShaded(g, outline, sheet, rgb(0xfbf9f4), rgb(0xdcd8ce));

    juce::Path corner;
    corner.addTriangle(sheet.getRight() - fold, sheet.getY(), sheet.getRight(), sheet.getY() + fold,
                       sheet.getRight() - fold, sheet.getY() + fold);
    g.setColour(rgb(0xb4b0a8));
    g.fillPath(corner);
    g.setColour(palette::edge);
    g.strokePath(outline, juce::PathStrokeType(line));

    const int iconEdge = juce::roundToInt(edge * 0.58f);
    const int left = (size - iconEdge) / 2;
    const int top = juce::roundToInt(sheet.getBottom() - margin * 0.7f) - iconEdge;
    g.drawImageAt(drawProgramIcon(iconEdge), left, top);
    return image;
}

juce::MemoryBlock programIcons()
{
    int width = 0;
    for (const int size : iconSizes)
        width += size;
    juce::Image strip(juce::Image::ARGB, width, iconSizes.back(), true, juce::SoftwareImageType());
    juce::Graphics g(strip);
    int x = 0;
    for (const int size : iconSizes)
    {
        g.drawImageAt(drawProgramIcon(size), x, 0);
        x += size;
    }
    return pngOf(strip);
}

} // namespace quorel::artwork
