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
const auto inkDim = rgb(0x55565a);

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

void vents(juce::Graphics& g, Rect area)
{
    for (float y = area.getY(); y < area.getBottom(); y += 11)
    {
        const Rect slit(area.getX(), y, area.getWidth(), 5);
        g.setColour(juce::Colours::white.withAlpha(0.6f));
        g.fillPath(roundedRect(slit.translated(0, 1), 2.5f));
        fillShaded(g, roundedRect(slit, 2.5f), slit, rgb(0x0b0b0c), rgb(0x323236));
    }
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

    vents(g, {730, 120, 300, 480});
    return true;
}

} // namespace quorel::artwork
