// SPDX-License-Identifier: GPL-3.0-or-later
// Switches and arrow buttons.
#include "Canvas.h"
#include "Palette.h"
#include "Surfaces.h"
#include "Symbols.h"

namespace quorel::artwork
{
namespace
{

/** A lit or dark button cap in a black collar. */
void drawButton(juce::Graphics& g, Rect area, float radius, juce::Colour light, bool lit)
{
    if (lit)
    {
        g.setColour(light.withAlpha(0.16f));
        g.fillPath(roundedRect(area.expanded(1.6f), radius + 1.6f));
    }
    g.setColour(juce::Colours::white.withAlpha(0.08f));
    g.fillPath(roundedRect(area.translated(0, 0.8f), radius));
    g.setColour(rgb(0x08080a));
    g.fillPath(roundedRect(area, radius));

    const float collar = juce::jmin(1.5f, area.getWidth() * 0.1f);
    const auto cap = area.reduced(collar);
    const float capRadius = juce::jmax(1.0f, radius - collar);
    if (lit)
    {
        fillShaded(g, roundedRect(cap, capRadius), cap, light.interpolatedWith(juce::Colours::white, 0.35f),
                   light.darker(0.5f));
        const auto inner = cap.reduced(0.8f);
        fillShaded(g, roundedRect(inner, capRadius), inner, light.brighter(0.1f), light.darker(0.25f));
        g.saveState();
        g.reduceClipRegion(roundedRect(inner, capRadius));
        juce::ColourGradient core(light.interpolatedWith(juce::Colours::white, 0.5f), cap.getCentre(),
                                  light.withAlpha(0.0f), cap.getCentre().translated(cap.getWidth() * 0.5f, 0),
                                  true);
        g.setGradientFill(core);
        g.fillRect(inner);
        g.restoreState();
        return;
    }
    fillShaded(g, roundedRect(cap, capRadius), cap, rgb(0x77787d), rgb(0x1c1d1f));
    const auto inner = cap.reduced(0.8f);
    fillShaded(g, roundedRect(inner, capRadius), inner, rgb(0x4a4b50), rgb(0x333438));
}

/** A dark switch shows a small unlit lens in its light's hue. */
void drawLens(juce::Graphics& g, Rect area, juce::Colour light)
{
    const auto lens = Rect(area.getWidth() * 0.36f, area.getWidth() * 0.36f).withCentre(area.getCentre());
    g.setColour(rgb(0x0c0c0d));
    g.fillPath(roundedRect(lens.expanded(0.7f), 1.6f));
    g.setColour(light.withMultipliedBrightness(0.32f));
    g.fillPath(roundedRect(lens, 1.2f));
}

juce::Colour lightOf(const juce::String& name)
{
    if (name.endsWith("_green"))
        return palette::green;
    if (name.endsWith("_blue"))
        return palette::blue;
    if (name.endsWith("_rose"))
        return palette::rose;
    return palette::amberLamp;
}

void drawArrowButton(const Canvas& canvas)
{
    const bool left = canvas.name.endsWith("left");
    const auto area = canvas.bounds().reduced(0.5f);
    drawButton(canvas.g, area, 2.0f, palette::amber, canvas.isDown());
    const auto size = canvas.bounds().getHeight() * 0.44f;
    const auto arrow =
        Rect(size * 0.8f, size).withCentre(area.getCentre().translated(left ? -0.4f : 0.4f, 0.0f));
    drawArrow(canvas.g, arrow, canvas.isDown() ? rgb(0x241a04) : rgb(0xe6e2d8), left);
}

} // namespace

bool paintSwitch(const Canvas& canvas)
{
    const auto& name = canvas.name;
    if (name.startsWith("arrow"))
    {
        drawArrowButton(canvas);
        return true;
    }
    const bool tiny = name.startsWith("small_switch");
    if (!tiny && !name.startsWith("switch"))
        return false;

    const auto light = lightOf(name);
    float inset = 1.6f;
    if (name.startsWith("switch_small"))
        inset = 3.0f;
    else if (name == "small_switch")
        inset = 0.8f;
    const auto area = canvas.bounds().reduced(inset);
    drawButton(canvas.g, area, area.getWidth() * (tiny ? 0.25f : 0.22f), light, canvas.isDown());
    if (!canvas.isDown())
        drawLens(canvas.g, area, light);
    return true;
}

} // namespace quorel::artwork
