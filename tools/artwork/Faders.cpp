// SPDX-License-Identifier: GPL-3.0-or-later
// Films of the faders: a cap in a slot.
#include "Faders.h"
#include "Canvas.h"
#include "Palette.h"
#include "Surfaces.h"

namespace quorel::artwork
{
namespace
{

void drawSlot(juce::Graphics& g, Rect slot)
{
    g.setColour(juce::Colours::white.withAlpha(0.09f));
    g.fillPath(roundedRect(slot.translated(0, 1), slot.getWidth() / 2));
    g.setColour(rgb(0x050506));
    g.fillPath(roundedRect(slot, slot.getWidth() / 2));
}

/** Marks on both sides of the slot at every tenth of the travel, longer at the ends and the middle. */
void drawScale(juce::Graphics& g, float centreX, float top, float travel, float inner, float length)
{
    constexpr int steps = 10;
    for (int i = 0; i <= steps; ++i)
    {
        const bool main = i % 5 == 0;
        const float y = top + travel * static_cast<float>(i) / steps;
        const float part = main ? length : length * 0.6f;
        g.setColour(main ? palette::printDim : palette::printFaint);
        g.fillRect(Rect(centreX - inner - part, y, part, 1.0f));
        g.fillRect(Rect(centreX + inner, y, part, 1.0f));
    }
}

} // namespace

void drawFaderCap(juce::Graphics& g, Rect cap)
{
    for (int i = 4; i > 0; --i)
    {
        const auto spread = static_cast<float>(i);
        g.setColour(juce::Colours::black.withAlpha(0.12f));
        g.fillPath(roundedRect(cap.expanded(spread * 0.3f, 0).translated(0, spread * 0.7f), 2.5f));
    }
    g.setColour(rgb(0x08080a));
    g.fillPath(roundedRect(cap, 2.5f));
    const auto body = cap.reduced(0.8f);
    juce::ColourGradient metal = juce::ColourGradient::vertical(rgb(0x8f9095), rgb(0x1c1d1f), body);
    metal.addColour(0.06, rgb(0x5e5f64));
    metal.addColour(0.38, rgb(0x3a3b3f));
    metal.addColour(0.5, rgb(0x232427));
    metal.addColour(0.62, rgb(0x3d3e42));
    metal.addColour(0.95, rgb(0x2a2b2e));
    g.setGradientFill(metal);
    g.fillPath(roundedRect(body, 1.8f));
    // The line that shows the value.
    const Rect line(body.getX() + 1, cap.getCentreY() - 1.0f, body.getWidth() - 2, 2.0f);
    g.setColour(palette::amber.withAlpha(0.35f));
    g.fillRect(line.expanded(0, 1));
    g.setColour(palette::amberBright);
    g.fillRect(line);
}

bool paintFader(const Canvas& canvas)
{
    const bool big = canvas.name.startsWith("big_fader");
    if (!big && !canvas.name.startsWith("fader"))
        return false;

    auto& g = canvas.g;
    // One pixel of travel to a frame of the big one. The small one's menu covers the last pixels of its
    // frame.
    const float travel = big ? 141.0f : 78.0f;
    const float top = big ? 13.0f : 7.0f;
    const float centreX = static_cast<float>(canvas.width) / 2;
    const auto capSize = big ? Rect(30, 22) : Rect(20, 12);
    const float y = top + travel * (1 - canvas.value());

    drawScale(g, centreX, top - 0.5f, travel, big ? 9.0f : 5.0f, big ? 9.0f : 5.0f);
    const auto slot = Rect(centreX - 2.0f, top - 4, 4.0f, travel + 8);
    drawSlot(g, slot);
    // Light in the slot below the cap.
    const auto lit = slot.reduced(1.0f, 1.5f).withTop(y);
    g.setColour(palette::amber.withAlpha(0.9f));
    g.fillPath(roundedRect(lit, 1.0f));
    drawFaderCap(g, capSize.withCentre({centreX, y}));
    return true;
}

} // namespace quorel::artwork
