// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/mySlider2.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{

mySlider2::mySlider2(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, int parameterId,
                     const CBitmap* faderFilm, int numFrames, PluginProcessor& pluginProcessor)
    : FilmSlider(boundsOnImage(bounds, faderFilm, numFrames), LinearVertical, "slider", listener, parameterId,
                 faderFilm, numFrames, pluginProcessor)
{
}

void mySlider2::mouseDown(const juce::MouseEvent& event)
{
    // The drag extent has no effect on a cap that jumps to the mouse: with Shift it starts from where it is.
    setSliderSnapsToMousePosition(!event.mods.isShiftDown());
    FilmSlider::mouseDown(event);
}

void mySlider2::paint(juce::Graphics& g)
{
    const juce::Rectangle<int> frame(frameWidth(), frameHeight());
    drawFrame(g, getValue(), frame.toFloat());
}

} // namespace quorel
