// SPDX-License-Identifier: GPL-3.0-or-later
// Icons of the instruments: a tile in a hue of its own with a sign for the instrument's sound, in grey for an
// instrument that is missing.
#include "Canvas.h"
#include "Lettering.h"
#include "Palette.h"
#include "Surfaces.h"

#include <cmath>
#include <vector>

namespace quorel::artwork
{
namespace
{

/** A sign in a unit square: lines of one width, and filled parts. */
struct Sign
{
    juce::Path lines;
    juce::Path solid;
    float lineWidth = 2.0f;

    void line(std::initializer_list<juce::Point<float>> points)
    {
        bool first = true;
        for (const auto& point : points)
        {
            if (first)
                lines.startNewSubPath(point);
            else
                lines.lineTo(point);
            first = false;
        }
    }

    void dot(float x, float y, float radius)
    {
        solid.addEllipse(x - radius, y - radius, 2 * radius, 2 * radius);
    }
};

juce::Path hexagon(float x, float y, float radius)
{
    juce::Path path;
    path.addPolygon({x, y}, 6, radius, 0.0f);
    return path;
}

/** Two oscillators: a saw over a square. */
Sign twoWaves()
{
    Sign sign;
    sign.line({{0.04f, 0.42f}, {0.35f, 0.1f}, {0.35f, 0.42f}, {0.66f, 0.1f}, {0.66f, 0.42f}, {0.96f, 0.1f}});
    sign.line({{0.04f, 0.9f},
               {0.04f, 0.6f},
               {0.27f, 0.6f},
               {0.27f, 0.9f},
               {0.5f, 0.9f},
               {0.5f, 0.6f},
               {0.73f, 0.6f},
               {0.73f, 0.9f},
               {0.96f, 0.9f},
               {0.96f, 0.6f}});
    return sign;
}

/** A bass: one slow, heavy wave over its sub. */
Sign heavyWave()
{
    Sign sign;
    sign.lineWidth = 4.0f;
    sign.lines.startNewSubPath(0.06f, 0.44f);
    sign.lines.cubicTo(0.22f, -0.12f, 0.36f, -0.12f, 0.5f, 0.44f);
    sign.lines.cubicTo(0.64f, 1.0f, 0.78f, 1.0f, 0.94f, 0.44f);
    sign.solid.addRoundedRectangle(0.06f, 0.92f, 0.88f, 0.08f, 0.04f);
    return sign;
}

/** Unison: a fan of seven lines from one foot. */
Sign fan()
{
    Sign sign;
    sign.lineWidth = 1.9f;
    for (int i = -3; i <= 3; ++i)
    {
        const float angle = static_cast<float>(i) * 0.27f;
        sign.line({{0.5f + std::sin(angle) * 0.16f, 0.92f - std::cos(angle) * 0.16f},
                   {0.5f + std::sin(angle) * 0.88f, 0.92f - std::cos(angle) * 0.88f}});
    }
    sign.dot(0.5f, 0.92f, 0.07f);
    return sign;
}

/** A hard lead: a bolt. */
Sign bolt()
{
    Sign sign;
    sign.solid.startNewSubPath(0.6f, 0.0f);
    for (const auto& [x, y] :
         {std::pair{0.16f, 0.56f}, {0.46f, 0.56f}, {0.36f, 1.0f}, {0.84f, 0.4f}, {0.54f, 0.4f}})
        sign.solid.lineTo(x, y);
    sign.solid.closeSubPath();
    return sign;
}

/** FM: a struck fork in a ring of six sides. */
Sign fork()
{
    Sign sign;
    sign.lines = hexagon(0.5f, 0.5f, 0.52f);
    juce::Path tines;
    tines.startNewSubPath(0.38f, 0.2f);
    tines.lineTo(0.38f, 0.46f);
    tines.quadraticTo(0.38f, 0.58f, 0.5f, 0.58f);
    tines.quadraticTo(0.62f, 0.58f, 0.62f, 0.46f);
    tines.lineTo(0.62f, 0.2f);
    tines.startNewSubPath(0.5f, 0.58f);
    tines.lineTo(0.5f, 0.8f);
    sign.lines.addPath(tines);
    return sign;
}

/** Sustained FM: two rings that share an edge. */
Sign rings()
{
    Sign sign;
    sign.lines = hexagon(0.33f, 0.36f, 0.34f);
    sign.lines.addPath(hexagon(0.67f, 0.64f, 0.34f));
    sign.dot(0.33f, 0.36f, 0.09f);
    sign.dot(0.67f, 0.64f, 0.09f);
    return sign;
}

/** Chip sounds: a ring of six sides around steps. */
Sign chip()
{
    Sign sign;
    sign.lines = hexagon(0.5f, 0.5f, 0.52f);
    for (const auto& [x, y, h] :
         {std::tuple{0.26f, 0.56f, 0.14f}, {0.39f, 0.42f, 0.28f}, {0.52f, 0.3f, 0.4f}, {0.65f, 0.48f, 0.22f}})
        sign.solid.addRectangle(x, y, 0.1f, h);
    return sign;
}

/** A drum with its sticks. */
Sign drum()
{
    Sign sign;
    sign.lines.addEllipse(0.08f, 0.36f, 0.84f, 0.24f);
    sign.lines.startNewSubPath(0.08f, 0.48f);
    sign.lines.lineTo(0.08f, 0.82f);
    sign.lines.cubicTo(0.08f, 1.03f, 0.92f, 1.03f, 0.92f, 0.82f);
    sign.lines.lineTo(0.92f, 0.48f);
    sign.line({{0.14f, 0.02f}, {0.46f, 0.42f}});
    sign.line({{0.86f, 0.02f}, {0.58f, 0.44f}});
    return sign;
}

/** A hard kit: a kick's shell with its lugs. */
Sign kick()
{
    Sign sign;
    sign.lines.addEllipse(0.06f, 0.06f, 0.88f, 0.88f);
    sign.lines.addEllipse(0.26f, 0.26f, 0.48f, 0.48f);
    sign.dot(0.5f, 0.5f, 0.1f);
    for (int i = 0; i < 8; ++i)
    {
        const float angle = static_cast<float>(i) * juce::MathConstants<float>::pi / 4;
        sign.dot(0.5f + std::sin(angle) * 0.345f, 0.5f + std::cos(angle) * 0.345f, 0.035f);
    }
    return sign;
}

/** A wide pad: currents of air. */
Sign wind()
{
    Sign sign;
    const auto current = [&sign](float y, float to, float curl)
    {
        sign.lines.startNewSubPath(0.04f, y);
        sign.lines.lineTo(to, y);
        sign.lines.cubicTo(to + 0.26f, y, to + 0.26f, y + curl * 1.5f, to, y + curl * 1.5f);
        sign.lines.quadraticTo(to - 0.06f, y + curl * 1.5f, to - 0.08f, y + curl);
    };
    current(0.34f, 0.56f, -0.19f);
    current(0.52f, 0.74f, -0.2f);
    current(0.7f, 0.5f, 0.17f);
    return sign;
}

/** Plucked strings, one of them swinging. */
Sign strings()
{
    Sign sign;
    sign.lineWidth = 1.5f;
    for (const float x : {0.14f, 0.32f, 0.68f, 0.86f})
        sign.line({{x, 0.02f}, {x, 0.98f}});
    for (const float bulge : {-0.13f, 0.13f})
    {
        sign.lines.startNewSubPath(0.5f, 0.02f);
        sign.lines.quadraticTo(0.5f + 2 * bulge, 0.5f, 0.5f, 0.98f);
    }
    sign.solid.addRoundedRectangle(0.04f, 0.0f, 0.92f, 0.07f, 0.03f);
    sign.solid.addRoundedRectangle(0.04f, 0.93f, 0.92f, 0.07f, 0.03f);
    return sign;
}

Sign bell()
{
    Sign sign;
    sign.solid.startNewSubPath(0.5f, 0.06f);
    sign.solid.cubicTo(0.78f, 0.06f, 0.78f, 0.34f, 0.8f, 0.52f);
    sign.solid.cubicTo(0.82f, 0.66f, 0.94f, 0.7f, 0.94f, 0.8f);
    sign.solid.lineTo(0.06f, 0.8f);
    sign.solid.cubicTo(0.06f, 0.7f, 0.18f, 0.66f, 0.2f, 0.52f);
    sign.solid.cubicTo(0.22f, 0.34f, 0.22f, 0.06f, 0.5f, 0.06f);
    sign.dot(0.5f, 0.9f, 0.1f);
    sign.dot(0.5f, 0.06f, 0.07f);
    return sign;
}

/** Bowed glass: a filled goblet. */
Sign goblet()
{
    Sign sign;
    sign.lines.startNewSubPath(0.2f, 0.04f);
    sign.lines.cubicTo(0.16f, 0.44f, 0.28f, 0.6f, 0.5f, 0.6f);
    sign.lines.cubicTo(0.72f, 0.6f, 0.84f, 0.44f, 0.8f, 0.04f);
    sign.lines.closeSubPath();
    sign.line({{0.5f, 0.6f}, {0.5f, 0.94f}});
    sign.line({{0.26f, 0.96f}, {0.74f, 0.96f}});
    sign.solid.startNewSubPath(0.26f, 0.3f);
    sign.solid.quadraticTo(0.5f, 0.22f, 0.74f, 0.3f);
    sign.solid.cubicTo(0.7f, 0.48f, 0.6f, 0.53f, 0.5f, 0.53f);
    sign.solid.cubicTo(0.4f, 0.53f, 0.3f, 0.48f, 0.26f, 0.3f);
    return sign;
}

/** An organ's drawbars. */
Sign drawbars()
{
    Sign sign;
    int i = 0;
    for (const float length : {0.78f, 0.5f, 0.92f, 0.62f, 0.36f})
    {
        const float x = 0.06f + 0.19f * static_cast<float>(i++);
        sign.solid.addRectangle(x + 0.035f, 0.0f, 0.05f, length);
        sign.solid.addRoundedRectangle(x, length - 0.12f, 0.12f, 0.18f, 0.03f);
    }
    return sign;
}

/** Any other plug-in: keys. */
Sign keys()
{
    Sign sign;
    sign.lineWidth = 1.6f;
    sign.lines.addRoundedRectangle(0.02f, 0.16f, 0.96f, 0.68f, 0.06f);
    for (const float x : {0.26f, 0.5f, 0.74f})
    {
        sign.line({{x, 0.56f}, {x, 0.84f}});
        sign.solid.addRectangle(x - 0.07f, 0.16f, 0.14f, 0.4f);
    }
    return sign;
}

struct Icon
{
    const char* shortName;
    const char* title;
    juce::uint32 hue;
    Sign (*sign)();
};

const Icon icons[] = {{"orlen", "ORLEN", 0xe0a030, twoWaves},
                      {"tarn", "TARN", 0xd8602c, heavyWave},
                      {"tarn2", "TARN 2", 0xe04a5a, fan},
                      {"tarnmini", "TARN MINI", 0xf0c020, bolt},
                      {"hexley", "HEXLEY", 0x3f9be0, fork},
                      {"hexley2", "HEXLEY 2", 0x6a7cf0, rings},
                      {"hexleymini", "HEXLEY MINI", 0x30b8c8, chip},
                      {"dorvik", "DORVIK", 0xc88850, drum},
                      {"dorvikk", "DORVIK-K", 0xd84848, kick},
                      {"zeph", "ZEPH", 0x58b8e8, wind},
                      {"imre", "IMRE", 0x7cc04a, strings},
                      {"glsn", "GLASSON", 0x40c0a0, bell},
                      {"glsn2", "GLASSON 2", 0x60d0d8, goblet},
                      {"fenn2", "FENN 2", 0xa870d8, drawbars},
                      {"plugin", "PLUG-IN", 0xb0aca4, keys}};

void drawIcon(const Canvas& canvas, const Icon& icon, bool grey)
{
    auto& g = canvas.g;
    const auto hue = grey ? rgb(0x8a8a8c) : rgb(icon.hue);
    const auto tile = canvas.bounds().reduced(1);
    g.setColour(juce::Colours::white.withAlpha(0.09f));
    g.fillPath(roundedRect(tile.translated(0, 1), 6));
    g.setColour(rgb(0x060607));
    g.fillPath(roundedRect(tile, 6));
    const auto face = tile.reduced(1);
    fillShaded(g, roundedRect(face, 5), face,
               hue.withMultipliedBrightness(grey ? 0.34f : 0.46f).withMultipliedSaturation(0.8f),
               hue.withMultipliedBrightness(0.14f));
    g.setColour(juce::Colours::white.withAlpha(0.16f));
    g.fillPath(roundedRect(face.withHeight(1).reduced(4, 0), 0.5f));

    const auto sign = icon.sign();
    const Rect area = Rect(27, 27).withCentre({tile.getCentreX(), tile.getY() + 20.5f});
    const auto place =
        juce::AffineTransform::scale(area.getWidth(), area.getHeight()).translated(area.getX(), area.getY());
    const auto ink = grey ? rgb(0xa8a8aa) : hue.interpolatedWith(juce::Colours::white, 0.62f);
    const auto draw = [&](const juce::AffineTransform& transform, juce::Colour colour)
    {
        g.setColour(colour);
        juce::Path lines = sign.lines;
        lines.applyTransform(transform);
        g.strokePath(lines, juce::PathStrokeType(sign.lineWidth, juce::PathStrokeType::curved,
                                                 juce::PathStrokeType::rounded));
        g.fillPath(sign.solid, transform);
    };
    draw(place.translated(0, 1), juce::Colours::black.withAlpha(0.5f));
    draw(place, ink);
    const float size = juce::String(icon.title).length() > 9 ? 4.2f : capitals::tiny;
    print(g, icon.title, tile.getCentreX(), tile.getBottom() - 5,
          {Face::condensed, size, grey ? rgb(0x9a9a9c) : rgb(0xf0ece4), 0.03f},
          juce::Justification::horizontallyCentred);
}

} // namespace

bool paintInstrumentIcon(const Canvas& canvas)
{
    for (const bool grey : {false, true})
        for (const auto& icon : icons)
            if (canvas.name == juce::String(grey ? "ico_gray_" : "ico_") + icon.shortName)
            {
                drawIcon(canvas, icon, grey);
                return true;
            }
    return false;
}

} // namespace quorel::artwork
