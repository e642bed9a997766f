// SPDX-License-Identifier: GPL-3.0-or-later
// Separators, a loose fader cap, and the fills under the EQ's curves.
#include "Canvas.h"
#include "Faders.h"
#include "Palette.h"
#include "Surfaces.h"

namespace quorel::artwork
{
namespace
{

/** One column, densest at the curve or the middle line, whichever is above. */
void drawCurveFill(const Canvas& canvas)
{
    const auto hue = canvas.name.contains("green")  ? palette::green
                     : canvas.name.contains("blue") ? palette::blue
                                                    : palette::rose;
    canvas.g.setGradientFill(
        juce::ColourGradient::vertical(hue.withAlpha(0.42f), hue.withAlpha(0.16f), canvas.bounds()));
    canvas.g.fillAll();
}

} // namespace

bool paintOrnament(const Canvas& canvas)
{
    auto& g = canvas.g;
    const auto area = canvas.bounds();
    if (canvas.name.startsWith("eq") && canvas.name.endsWith("linebitmap"))
        drawCurveFill(canvas);
    else if (canvas.name == "cap")
        drawFaderCap(g, area.reduced(4, 1).withTrimmedBottom(1));
    else if (canvas.name == "cap__handle_background")
        glass(g, Rect(4, area.getHeight() - 4).withCentre(area.getCentre()), 2);
    else if (canvas.name == "vline")
    {
        g.setColour(palette::printFaint);
        g.fillAll();
    }
    else if (canvas.name == "vertical_separation_line_panels")
        groove(g, {1, 0}, {1, area.getHeight()});
    else if (canvas.name == "horizontal_separation_line_panels")
        groove(g, {0, 1}, {area.getWidth(), 1});
    else
        return false;
    return true;
}

} // namespace quorel::artwork
