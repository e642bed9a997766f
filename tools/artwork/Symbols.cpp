// SPDX-License-Identifier: GPL-3.0-or-later
#include "Symbols.h"

#include "Lettering.h"
#include "Palette.h"

namespace quorel::artwork
{
namespace
{

/** A stroke with round ends, in a unit square that is laid over the area. */
void strokeUnit(juce::Graphics& g, Rect area, const juce::Path& unitPath, float thickness)
{
    juce::Path path = unitPath;
    path.applyTransform(
        juce::AffineTransform::scale(area.getWidth(), area.getHeight()).translated(area.getX(), area.getY()));
    g.strokePath(
        path, juce::PathStrokeType(thickness, juce::PathStrokeType::curved, juce::PathStrokeType::rounded));
}

void fillUnit(juce::Graphics& g, Rect area, const juce::Path& unitPath)
{
    g.fillPath(
        unitPath,
        juce::AffineTransform::scale(area.getWidth(), area.getHeight()).translated(area.getX(), area.getY()));
}

} // namespace

void drawSpeaker(juce::Graphics& g, Rect area, juce::Colour colour, bool muted)
{
    g.setColour(colour);
    juce::Path body;
    body.startNewSubPath(0.05f, 0.34f);
    for (const auto& [x, y] :
         {std::pair{0.25f, 0.34f}, {0.5f, 0.1f}, {0.5f, 0.9f}, {0.25f, 0.66f}, {0.05f, 0.66f}})
        body.lineTo(x, y);
    body.closeSubPath();
    fillUnit(g, area, body);
    juce::Path rest;
    if (muted)
    {
        rest.startNewSubPath(0.64f, 0.34f);
        rest.lineTo(0.96f, 0.66f);
        rest.startNewSubPath(0.96f, 0.34f);
        rest.lineTo(0.64f, 0.66f);
    }
    else
    {
        rest.addCentredArc(0.5f, 0.5f, 0.2f, 0.22f, 0.0f, 0.7f, 2.44f, true);
        rest.addCentredArc(0.5f, 0.5f, 0.42f, 0.42f, 0.0f, 0.8f, 2.34f, true);
    }
    strokeUnit(g, area, rest, 1.6f);
}

void drawNote(juce::Graphics& g, Rect area, juce::Colour colour)
{
    g.setColour(colour);
    juce::Path head;
    head.addEllipse(-0.2f, -0.145f, 0.4f, 0.29f);
    head.applyTransform(juce::AffineTransform::rotation(-0.4f).translated(0.36f, 0.82f));
    fillUnit(g, area, head);
    juce::Path stem;
    stem.startNewSubPath(0.53f, 0.78f);
    stem.lineTo(0.53f, 0.06f);
    stem.cubicTo(0.56f, 0.3f, 0.86f, 0.3f, 0.74f, 0.62f);
    strokeUnit(g, area, stem, 1.6f);
}

void drawBook(juce::Graphics& g, Rect area, juce::Colour colour, bool asQuestion)
{
    g.setColour(colour);
    if (asQuestion)
    {
        g.drawEllipse(area.reduced(1), 1.5f);
        print(g, "?", area.getCentreX(), area.getCentreY() + 4, {Face::bold, 8.0f, colour, 0.0f},
              juce::Justification::horizontallyCentred);
        return;
    }
    juce::Path book;
    for (const float side : {-1.0f, 1.0f})
    {
        book.startNewSubPath(0.5f, 0.22f);
        book.cubicTo(0.5f + side * 0.14f, 0.1f, 0.5f + side * 0.32f, 0.1f, 0.5f + side * 0.48f, 0.16f);
        book.lineTo(0.5f + side * 0.48f, 0.82f);
        book.cubicTo(0.5f + side * 0.32f, 0.76f, 0.5f + side * 0.14f, 0.76f, 0.5f, 0.9f);
    }
    book.startNewSubPath(0.5f, 0.22f);
    book.lineTo(0.5f, 0.9f);
    for (const float side : {-1.0f, 1.0f})
        for (const float y : {0.36f, 0.54f})
        {
            book.startNewSubPath(0.5f + side * 0.16f, y - 0.01f);
            book.lineTo(0.5f + side * 0.34f, y - 0.03f);
        }
    strokeUnit(g, area, book, 1.2f);
}

void drawArrow(juce::Graphics& g, Rect area, juce::Colour colour, bool left)
{
    juce::Path arrow;
    const float tip = left ? 0.0f : 1.0f;
    arrow.addTriangle(tip, 0.5f, 1 - tip, 0.0f, 1 - tip, 1.0f);
    g.setColour(colour);
    fillUnit(g, area, arrow);
}

void drawMenuMark(juce::Graphics& g, Rect area, juce::Colour colour)
{
    juce::Path mark;
    mark.addTriangle(area.getTopLeft(), area.getTopRight(), {area.getCentreX(), area.getBottom()});
    g.setColour(colour);
    g.fillPath(mark);
}

float drawLogo(juce::Graphics& g, juce::Point<float> topLeft, float height, juce::Colour top,
               juce::Colour bottom, juce::Colour accent)
{
    // Letters of one stroke width, on a body 0.9 high to 1 wide with round corners.
    const float stroke = height * 0.17f;
    const float h = height - stroke;
    const float w = h * 0.98f;
    const float gap = height * 0.42f;
    const float r = h * 0.34f;
    float x = topLeft.x + stroke / 2;
    const float y = topLeft.y + stroke / 2;
    juce::Path letters;
    juce::Path marks;

    // Q, with its tail in the accent's colour.
    letters.addRoundedRectangle(x, y, w, h, r);
    marks.startNewSubPath(x + w * 0.62f, y + h * 0.62f);
    marks.lineTo(x + w * 1.02f, y + h * 1.02f);
    x += w + gap;
    // U
    letters.startNewSubPath(x, y);
    letters.lineTo(x, y + h - r);
    letters.quadraticTo(x, y + h, x + r, y + h);
    letters.lineTo(x + w * 0.92f - r, y + h);
    letters.quadraticTo(x + w * 0.92f, y + h, x + w * 0.92f, y + h - r);
    letters.lineTo(x + w * 0.92f, y);
    x += w * 0.92f + gap;
    // O
    letters.addRoundedRectangle(x, y, w, h, r);
    x += w + gap;
    // R
    letters.startNewSubPath(x, y + h);
    letters.lineTo(x, y);
    letters.lineTo(x + w * 0.58f, y);
    letters.cubicTo(x + w * 0.98f, y, x + w * 0.98f, y + h * 0.58f, x + w * 0.58f, y + h * 0.58f);
    letters.lineTo(x + w * 0.3f, y + h * 0.58f);
    letters.startNewSubPath(x + w * 0.5f, y + h * 0.58f);
    letters.lineTo(x + w * 0.88f, y + h);
    x += w * 0.88f + gap;
    // E: its middle bar is the other mark.
    letters.startNewSubPath(x + w * 0.78f, y);
    letters.lineTo(x, y);
    letters.lineTo(x, y + h);
    letters.lineTo(x + w * 0.78f, y + h);
    marks.startNewSubPath(x + w * 0.3f, y + h * 0.5f);
    marks.lineTo(x + w * 0.7f, y + h * 0.5f);
    x += w * 0.78f + gap;
    // L
    letters.startNewSubPath(x, y);
    letters.lineTo(x, y + h);
    letters.lineTo(x + w * 0.72f, y + h);
    x += w * 0.72f;

    const juce::PathStrokeType type(stroke, juce::PathStrokeType::mitered, juce::PathStrokeType::square);
    g.setGradientFill(juce::ColourGradient::vertical(top, topLeft.y, bottom, topLeft.y + height));
    g.strokePath(letters, type);
    g.setColour(accent);
    g.strokePath(marks,
                 juce::PathStrokeType(stroke, juce::PathStrokeType::mitered, juce::PathStrokeType::butt));
    return x + stroke / 2 - topLeft.x;
}

} // namespace quorel::artwork
