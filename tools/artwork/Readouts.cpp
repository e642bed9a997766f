// SPDX-License-Identifier: GPL-3.0-or-later
// Frames of read-outs and menus. Controls stretch them to their own size, so they have straight edges all
// round.
#include "Canvas.h"
#include "Palette.h"
#include "Surfaces.h"

namespace quorel::artwork
{

bool paintReadout(const Canvas& canvas)
{
    const bool twoLines = canvas.name == "lcdmulti120x31";
    if (!twoLines && !canvas.name.startsWith("readout"))
        return false;
    auto& g = canvas.g;
    const auto area = canvas.bounds();
    g.setColour(rgb(0x050506));
    g.fillRect(area);
    const auto inner = area.reduced(1);
    g.setGradientFill(juce::ColourGradient::vertical(palette::glassTop, palette::glassBottom, inner));
    g.fillRect(inner);
    // The lower edge catches the light.
    g.setColour(rgb(0x3c3d41));
    g.fillRect(area.withTop(area.getBottom() - 1));
    if (twoLines)
    {
        g.setColour(rgb(0x262628));
        g.fillRect(inner.withTop(area.getCentreY() - 0.5f).withHeight(1).reduced(4, 0));
    }
    return true;
}

} // namespace quorel::artwork
