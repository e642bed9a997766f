// SPDX-License-Identifier: GPL-3.0-or-later
// The back panel: bright bare metal with dark print, since its labels are black.
#include "Canvas.h"
#include "Lettering.h"
#include "Palette.h"
#include "Surfaces.h"
#include "Symbols.h"
#include "ui/Geometry.h"

namespace quorel::artwork
{
namespace
{

const auto ink = rgb(0x1c1c1e);
const auto inkDim = rgb(0x38393c);

/** A line cut into the metal around a group, with the group's title in its upper edge. */
void group(juce::Graphics& g, Rect area, const juce::String& title)
{
    const Lettering style{Face::bold, capitals::caption, ink, 0.12f};
    juce::Path frame;
    const float from = area.getX() + 14;
    const float to = from + widthOf(title, style) + 12;
    constexpr float radius = 6;
    frame.startNewSubPath(from, area.getY());
    frame.lineTo(area.getX() + radius, area.getY());
    frame.quadraticTo(area.getX(), area.getY(), area.getX(), area.getY() + radius);
    frame.lineTo(area.getX(), area.getBottom() - radius);
    frame.quadraticTo(area.getX(), area.getBottom(), area.getX() + radius, area.getBottom());
    frame.lineTo(area.getRight() - radius, area.getBottom());
    frame.quadraticTo(area.getRight(), area.getBottom(), area.getRight(), area.getBottom() - radius);
    frame.lineTo(area.getRight(), area.getY() + radius);
    frame.quadraticTo(area.getRight(), area.getY(), area.getRight() - radius, area.getY());
    frame.lineTo(to, area.getY());
    g.setColour(juce::Colours::white.withAlpha(0.55f));
    g.strokePath(frame, juce::PathStrokeType(1.0f), juce::AffineTransform::translation(0, 1));
    g.setColour(ink.withAlpha(0.55f));
    g.strokePath(frame, juce::PathStrokeType(1.0f));
    print(g, title, from + 6, area.getY() + 3, style);
}

/** Two columns of cooling slots. */
void vents(juce::Graphics& g, Rect area)
{
    constexpr float gap = 22;
    constexpr float pitch = 13;
    const float width = (area.getWidth() - gap) / 2;
    for (const float x : {area.getX(), area.getRight() - width})
        for (int i = 0; i < static_cast<int>(area.getHeight() / pitch); ++i)
        {
            const Rect slit(x, area.getY() + pitch * static_cast<float>(i), width, 6);
            g.setColour(juce::Colours::white.withAlpha(0.6f));
            g.fillPath(roundedRect(slit.translated(0, 1), 3));
            fillShaded(g, roundedRect(slit, 3), slit, rgb(0x08080a), rgb(0x38383c));
        }
}

void ring(juce::Graphics& g, juce::Point<float> centre, float radius, juce::Colour top, juce::Colour bottom)
{
    const auto area = Rect(2 * radius, 2 * radius).withCentre(centre);
    juce::Path path;
    path.addEllipse(area);
    fillShaded(g, path, area, top, bottom);
}

void printBelow(juce::Graphics& g, const juce::String& text, juce::Point<float> socket, float distance)
{
    print(g, text, socket.x, socket.y + distance, {Face::bold, capitals::caption, ink, 0.08f},
          juce::Justification::horizontallyCentred);
}

void jack(juce::Graphics& g, juce::Point<float> centre, const juce::String& text)
{
    ring(g, centre.translated(0, 1.5f), 18, juce::Colours::black.withAlpha(0.3f),
         juce::Colours::black.withAlpha(0.1f));
    juce::Path nut;
    nut.addPolygon(centre, 6, 18, 0.0f);
    fillShaded(g, nut, Rect(36, 36).withCentre(centre), rgb(0xf0f0f2), rgb(0x7c7c80));
    ring(g, centre, 13, rgb(0x88888c), rgb(0xe2e2e4));
    ring(g, centre, 11.5f, rgb(0x3a3a3d), rgb(0x1c1c1e));
    ring(g, centre, 7, rgb(0x050506), rgb(0x1a1a1c));
    printBelow(g, text, centre, 33);
}

/** A five-pole socket. */
void midiSocket(juce::Graphics& g, juce::Point<float> centre, const juce::String& text)
{
    ring(g, centre.translated(0, 1.5f), 22, juce::Colours::white.withAlpha(0.4f),
         juce::Colours::white.withAlpha(0.6f));
    ring(g, centre, 22, rgb(0x88888c), rgb(0xececee));
    ring(g, centre, 20, rgb(0x161618), rgb(0x2e2e31));
    for (int pole = -2; pole <= 2; ++pole)
    {
        const auto at = centre.getPointOnCircumference(12, static_cast<float>(pole) * 0.785f);
        ring(g, at, 2.8f, rgb(0x9a9a9e), rgb(0x56565a));
        ring(g, at, 1.9f, rgb(0x000000), rgb(0x0c0c0d));
    }
    const Rect key(centre.x - 3, centre.y + 15, 6, 5);
    g.setColour(rgb(0x060607));
    g.fillRect(key);
    printBelow(g, text, centre, 33);
}

/** The type plate, black with bright print. */
void plate(juce::Graphics& g, Rect area)
{
    g.setColour(juce::Colours::white.withAlpha(0.6f));
    g.fillPath(roundedRect(area.translated(0, 1), 4));
    fillShaded(g, roundedRect(area, 4), area, rgb(0x101011), rgb(0x242427));
    for (const float x : {area.getX() + 9, area.getRight() - 9})
        screw(g, {x, area.getCentreY()}, 3);
    drawLogo(g, {area.getX() + 26, area.getY() + 17}, 19, rgb(0xe6e2d8), rgb(0xb0aca2), palette::amberBright);
    const float textX = area.getX() + 176;
    print(g, "OSTRAND", textX, area.getY() + 24, {Face::bold, capitals::caption, rgb(0xd8d4ca), 0.2f});
    print(g, "LAYERING INSTRUMENT", textX, area.getY() + 36,
          {Face::condensed, capitals::tiny, rgb(0x9c988e), 0.12f});
    print(g, "FOUR INSTRUMENTS   FOUR EFFECTS   ONE SOUND", area.getX() + 26, area.getY() + 56,
          {Face::condensed, capitals::tiny, palette::amberBright, 0.14f});
}

} // namespace

bool paintBackPanel(const Canvas& canvas)
{
    if (canvas.name != "quorel_back")
        return false;
    namespace b = geometry::back;
    auto& g = canvas.g;
    const auto area = canvas.bounds();
    brushed(g, area, rgb(0xd2d2d4), rgb(0xaeaeb1), 0.08f);
    for (const float x : {16.0f, area.getWidth() - 16})
        for (const float y : {16.0f, area.getHeight() - 16})
            screw(g, {x, y}, 7);

    drawLogo(g, {70, 26}, 20, ink, ink, rgb(0x9a6c00));
    print(g, "CLICK ANYWHERE TO TURN BACK", 1040, 42, {Face::condensed, capitals::caption, inkDim, 0.1f},
          juce::Justification::right);

    const float left = 70;
    const float width = 600;
    const auto around = [&](juce::Point<int> top, float height)
    { return Rect(left, static_cast<float>(top.y) - 16, width, height); };
    group(g, {left, static_cast<float>(b::version.getY()) - 16, width, 46}, "ABOUT");
    group(g, around(b::ecsMenu, 50), "CONTROLLER SET");
    group(g, around(b::rescan, 112), "PLUG-INS");
    group(g, around(b::scale, 50), "WINDOW SIZE");
    group(g, around(b::block(0), 157), "MIDI");

    for (const auto& menu : {b::ecsMenu, b::scale})
        drawMenuMark(g, Rect(6, 4).withPosition(menu.translated(-10, 8).toFloat()), ink);

    vents(g, {720, 74, 320, 540});

    group(g, {left, 660, width, 90}, "CONNECTIONS");
    midiSocket(g, {140, 694}, "MIDI IN");
    jack(g, {270, 694}, "LEFT");
    jack(g, {350, 694}, "RIGHT");
    print(g, "OUTPUT", 310, 678, {Face::condensed, capitals::tiny, inkDim, 0.1f},
          juce::Justification::horizontallyCentred);
    plate(g, {720, 665, 320, 72});
    return true;
}

} // namespace quorel::artwork
