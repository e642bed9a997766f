// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myKnob.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{
namespace
{
constexpr float disabledOpacity = 0.5f;

int squareFrames(const CBitmap& film)
{
    return film.getHeight() / film.getWidth();
}
} // namespace

myKnob::myKnob(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, int parameterId,
               const CBitmap* knobFilm, PluginProcessor& pluginProcessor)
    : FilmSlider(boundsOnImage(bounds, knobFilm, squareFrames(*knobFilm)), RotaryVerticalDrag, "knob",
                 listener, parameterId, knobFilm, squareFrames(*knobFilm), pluginProcessor)
{
}

void myKnob::paint(juce::Graphics& g)
{
    g.setOpacity(isEnabled() ? 1.0f : disabledOpacity);
    drawFrame(g, valueToProportionOfLength(getValue()), getLocalBounds().toFloat());
}

} // namespace quorel
