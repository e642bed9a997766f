// SPDX-License-Identifier: GPL-3.0-or-later
// Films of all knobs: a ring of light around a turned cap with a pointer.
#include "Canvas.h"
#include "Palette.h"
#include "Surfaces.h"

#include <cmath>

namespace quorel::artwork
{
namespace
{

/** Ends of the travel, clockwise from the top. */
constexpr float travel = 2.4f;

/** Radii of the ring's middle and of the cap. */
struct KnobSize
{
    float centreY;
    float ring;
    float cap;
};

constexpr float centreX = 23.5f;
// Knobs stand high in their frames: a caption follows close below. Those of the EQ's bands stand in rows that
// are closer than the frames are high.
constexpr KnobSize standardSize{21.5f, 16.8f, 12.4f};
constexpr KnobSize bigSize{21.5f, 18.8f, 14.4f};
constexpr KnobSize bandSize{22.5f, 15.6f, 11.4f};

struct KnobStyle
{
    juce::Colour light;
    bool bipolar;
    /** The master's: larger, of bright metal. */
    bool big;
    KnobSize size;

    juce::Point<float> centre() const { return {centreX, size.centreY}; }
};

juce::Path arc(juce::Point<float> centre, float radius, float from, float to)
{
    juce::Path path;
    path.addCentredArc(centre.x, centre.y, radius, radius, 0.0f, juce::jmin(from, to), juce::jmax(from, to),
                       true);
    return path;
}

Rect discArea(juce::Point<float> centre, float radius)
{
    return Rect(2 * radius, 2 * radius).withCentre(centre);
}

void shadedDisc(juce::Graphics& g, Rect area, juce::Colour top, juce::Colour bottom)
{
    juce::Path path;
    path.addEllipse(area);
    fillShaded(g, path, area, top, bottom);
}

void drawRing(juce::Graphics& g, const KnobStyle& style, float angle)
{
    const auto centre = style.centre();
    const float radius = style.size.ring;
    const juce::PathStrokeType wide(4.0f, juce::PathStrokeType::curved, juce::PathStrokeType::butt);
    const juce::PathStrokeType thin(2.4f, juce::PathStrokeType::curved, juce::PathStrokeType::butt);

    g.setColour(juce::Colours::white.withAlpha(0.06f));
    g.strokePath(arc(centre, radius, -travel, travel), wide, juce::AffineTransform::translation(0.0f, 0.8f));
    g.setColour(rgb(0x0b0b0c));
    g.strokePath(arc(centre, radius, -travel - 0.03f, travel + 0.03f), wide);
    g.setColour(style.light.withMultipliedSaturation(0.55f).withMultipliedBrightness(0.24f));
    g.strokePath(arc(centre, radius, -travel, travel), thin);

    const float from = style.bipolar ? 0.0f : -travel;
    if (std::abs(angle - from) > 0.01f)
    {
        g.setColour(style.light.withAlpha(0.22f));
        g.strokePath(arc(centre, radius, from, angle), juce::PathStrokeType(5.4f));
        g.setColour(style.light);
        g.strokePath(arc(centre, radius, from, angle), thin);
    }
    if (style.bipolar)
    {
        // Centre mark, in front of the ring.
        const Rect mark(centre.x - 1.0f, centre.y - radius - 2.2f, 2.0f, 4.4f);
        g.setColour(juce::Colours::black);
        g.fillRect(mark.expanded(0.8f, 0.0f));
        g.setColour(palette::amberCore.interpolatedWith(style.light, 0.15f));
        g.fillRect(mark);
    }
}

void drawCap(juce::Graphics& g, const KnobStyle& style, float angle)
{
    const auto centre = style.centre();
    const float radius = style.size.cap;
    const auto disc = [&](float change) { return discArea(centre, radius + change); };
    for (int i = 4; i > 0; --i)
    {
        const auto spread = static_cast<float>(i);
        g.setColour(juce::Colours::black.withAlpha(0.13f));
        g.fillEllipse(disc(0.2f + 0.35f * spread).translated(0, 0.55f * spread));
    }
    g.setColour(rgb(0x08080a));
    g.fillEllipse(disc(0.6f));
    if (style.big)
    {
        shadedDisc(g, disc(0), rgb(0xa9a9ad), rgb(0x2c2d30));
        shadedDisc(g, disc(-1.0f), rgb(0x6b6c71), rgb(0x3b3c40));
        shadedDisc(g, disc(-4.0f), rgb(0x2b2c2f), rgb(0x5e5f64));
        shadedDisc(g, disc(-4.8f), rgb(0x55565a), rgb(0x46474b));
    }
    else
    {
        shadedDisc(g, disc(0), rgb(0x85868b), rgb(0x19191b));
        shadedDisc(g, disc(-0.9f), rgb(0x4f5055), rgb(0x26272a));
        shadedDisc(g, disc(-3.6f), rgb(0x1e1f21), rgb(0x4a4b4f));
        shadedDisc(g, disc(-4.3f), rgb(0x3c3d41), rgb(0x313235));
    }

    const auto turn = juce::AffineTransform::rotation(angle, centre.x, centre.y);
    const Rect pointer(centre.x - 1.1f, centre.y - radius + 1.2f, 2.2f, radius * 0.62f);
    g.setColour(juce::Colours::black.withAlpha(0.7f));
    juce::Path path = roundedRect(pointer.expanded(0.7f), 1.5f);
    g.fillPath(path, turn);
    path = roundedRect(pointer, 1.0f);
    g.setColour(rgb(0xf6efdf).interpolatedWith(style.light, 0.12f));
    g.fillPath(path, turn);
}

KnobStyle styleOf(const juce::String& name)
{
    const bool big = name.startsWith("big_");
    const bool ofBand = name.startsWith("small_knob_");
    KnobStyle style{palette::amberBright, name.contains("_pan"), big,
                    big ? bigSize : (ofBand ? bandSize : standardSize)};
    const std::pair<const char*, juce::Colour> hues[] = {
        {"_green", palette::green},       {"_blue", palette::blue},   {"_rose", palette::rose},
        {"_amber", palette::amberBright}, {"_violet", rgb(0x8a6cf0)}, {"_grey", rgb(0xb4b4b8)}};
    for (const auto& [suffix, hue] : hues)
        if (name.endsWith(suffix))
            style.light = hue;
    return style;
}

} // namespace

bool paintKnob(const Canvas& canvas)
{
    if (canvas.width != 47 || canvas.frames < 3)
        return false;
    const auto style = styleOf(canvas.name);
    const float angle = (canvas.value() * 2.0f - 1.0f) * travel;
    drawRing(canvas.g, style, angle);
    drawCap(canvas.g, style, angle);
    return true;
}

} // namespace quorel::artwork
