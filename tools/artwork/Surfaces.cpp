// SPDX-License-Identifier: GPL-3.0-or-later
#include "Surfaces.h"

#include "Palette.h"

#include <cmath>

namespace quorel::artwork
{

juce::Path roundedRect(Rect area, float radius)
{
    juce::Path path;
    path.addRoundedRectangle(area, radius);
    return path;
}

void fillShaded(juce::Graphics& g, const juce::Path& shape, Rect area, juce::Colour top, juce::Colour bottom)
{
    g.setGradientFill(juce::ColourGradient::vertical(top, bottom, area));
    g.fillPath(shape);
}

void brushed(juce::Graphics& g, Rect area, juce::Colour top, juce::Colour bottom, float strength)
{
    g.setGradientFill(juce::ColourGradient::vertical(top, bottom, area));
    g.fillRect(area);
    constexpr float lineHeight = 0.5f;
    juce::Random random(1);
    const int numLines = juce::roundToInt(area.getHeight() / lineHeight);
    for (int line = 0; line < numLines; ++line)
    {
        const float y = area.getY() + lineHeight * static_cast<float>(line);
        const float change = (random.nextFloat() - 0.5f) * strength;
        g.setColour((change > 0 ? juce::Colours::white : juce::Colours::black).withAlpha(std::abs(change)));
        g.fillRect(area.withY(y).withHeight(lineHeight));
    }
}

void raisedPlate(juce::Graphics& g, Rect area, float radius, juce::Colour top, juce::Colour bottom)
{
    for (int i = 3; i > 0; --i)
    {
        const auto spread = static_cast<float>(i);
        g.setColour(juce::Colours::black.withAlpha(0.12f));
        g.fillPath(roundedRect(area.expanded(spread * 0.5f).translated(0, spread * 0.6f), radius + spread));
    }
    g.setColour(palette::edge);
    g.fillPath(roundedRect(area, radius));
    const auto face = area.reduced(1.0f);
    fillShaded(g, roundedRect(face, radius - 1), face, top.brighter(0.25f), bottom.darker(0.2f));
    const auto inner = face.withTrimmedTop(1.0f).withTrimmedBottom(1.0f);
    fillShaded(g, roundedRect(inner, radius - 1), inner, top, bottom);
}

void inset(juce::Graphics& g, Rect area, float radius)
{
    g.setColour(juce::Colours::white.withAlpha(0.07f));
    g.fillPath(roundedRect(area.translated(0, 1), radius));
    g.setColour(palette::edge);
    g.fillPath(roundedRect(area, radius));
    const auto inner = area.reduced(1.0f);
    fillShaded(g, roundedRect(inner, radius - 1), inner, palette::insetTop, palette::insetBottom);
    g.saveState();
    g.reduceClipRegion(roundedRect(inner, radius - 1));
    g.setGradientFill(juce::ColourGradient::vertical(juce::Colours::black.withAlpha(0.35f), inner.getY(),
                                                     juce::Colours::transparentBlack, inner.getY() + 5));
    g.fillRect(inner.withHeight(5));
    g.restoreState();
}

void glass(juce::Graphics& g, Rect area, float radius)
{
    g.setColour(juce::Colours::white.withAlpha(0.1f));
    g.fillPath(roundedRect(area.translated(0, 1), radius));
    g.setColour(juce::Colours::black);
    g.fillPath(roundedRect(area, radius));
    const auto inner = area.reduced(1.0f);
    fillShaded(g, roundedRect(inner, juce::jmax(0.0f, radius - 1)), inner, palette::glassTop,
               palette::glassBottom);
}

void groove(juce::Graphics& g, juce::Point<float> from, juce::Point<float> to)
{
    const bool across = juce::approximatelyEqual(from.y, to.y);
    const auto line =
        across ? Rect(from.x, from.y, to.x - from.x, 1) : Rect(from.x, from.y, 1, to.y - from.y);
    g.setColour(juce::Colours::black.withAlpha(0.55f));
    g.fillRect(line);
    g.setColour(juce::Colours::white.withAlpha(0.07f));
    g.fillRect(across ? line.translated(0, 1) : line.translated(1, 0));
}

void screw(juce::Graphics& g, juce::Point<float> centre, float radius)
{
    const auto disc = Rect(2 * radius, 2 * radius).withCentre(centre);
    juce::Path path;
    path.addEllipse(disc.expanded(1.5f));
    fillShaded(g, path, disc.expanded(1.5f), juce::Colours::black.withAlpha(0.6f),
               juce::Colours::black.withAlpha(0.25f));
    path.clear();
    path.addEllipse(disc);
    fillShaded(g, path, disc, rgb(0x7c7d82), rgb(0x2e2f32));
    path.clear();
    path.addEllipse(disc.reduced(1));
    fillShaded(g, path, disc, rgb(0x56575b), rgb(0x3a3b3e));
    path.clear();
    path.addPolygon(centre, 6, radius * 0.5f, 0.26f);
    g.setColour(rgb(0x0e0e0f));
    g.fillPath(path);
}

} // namespace quorel::artwork
