// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/FilmSlider.h"

#include "engine/ControlMenu.h"
#include "ui/HintText.h"
#include "ui/widgets/ParameterAccessibility.h"
#include "ui/widgets/WidgetTools.h"

namespace quorel
{
FilmSlider::FilmSlider(juce::Rectangle<int> bounds, SliderStyle style, const char* kind,
                       juce::Slider::Listener* listener, int parameterId, const CBitmap* slideFilm,
                       int numFrames, PluginProcessor& pluginProcessor)
    : juce::Slider(style, NoTextBox)
    , processor(pluginProcessor)
    , parameter(parameterId)
    , film(slideFilm)
    , frames(numFrames)
    , dragExtent(getMouseDragSensitivity())
{
    setUpControl(*this, kind, parameterId);
    setWantsKeyboardFocus(true);
    setRange(0.0, 1.0);
    setBounds(bounds);
    if (listener != nullptr)
        addListener(listener);
}

void FilmSlider::setFilm(const CBitmap* newFilm)
{
    if (film == newFilm)
        return;
    film = newFilm;
    repaint();
}

void FilmSlider::mouseDown(const juce::MouseEvent& event)
{
    dragging = false;
    if (!isEnabled())
        return;

    setMouseDragSensitivity(event.mods.isShiftDown() ? dragExtent * fineDragFactor : dragExtent);
    if (event.mods.isRightButtonDown())
    {
        showControlMenu(PopupPlace::mouse);
        return;
    }

    dragging = true;
    juce::Slider::mouseDown(event);
}

void FilmSlider::mouseDrag(const juce::MouseEvent& event)
{
    if (dragging)
        juce::Slider::mouseDrag(event);
}

void FilmSlider::mouseUp(const juce::MouseEvent& event)
{
    if (dragging)
        juce::Slider::mouseUp(event);
    dragging = false;
}

void FilmSlider::mouseDoubleClick(const juce::MouseEvent& event)
{
    if (!event.mods.isRightButtonDown())
        juce::Slider::mouseDoubleClick(event);
}

bool FilmSlider::keyPressed(const juce::KeyPress& key)
{
    if (key == juce::KeyPress::returnKey)
        return showControlMenu(PopupPlace::control);

    const int direction = arrowDirection(key);
    if (direction != 0)
        moveSlider(*this, getValue() + keyboardStep * direction);
    return direction != 0;
}

bool FilmSlider::showControlMenu(PopupPlace place)
{
    return isEnabled() &&
           showControlPopup(*this,
                            controlMenu(processor, parameter, controlName(*this, parameter, processor),
                                        getTextFromValue(getValue())),
                            place,
                            [this](int id) {
                                runControlMenuItem(processor, parameter,
                                                   static_cast<float>(getDoubleClickReturnValue()), id);
                            });
}

juce::String FilmSlider::getTextFromValue(double value)
{
    return parameter > 0 && parameter < numHostParameters ? valueText(processor, parameter)
                                                          : juce::String(value, 2);
}

std::unique_ptr<juce::AccessibilityHandler> FilmSlider::createAccessibilityHandler()
{
    return makeSliderAccessibility(*this, parameter, processor, keyboardStep);
}

void FilmSlider::drawFrame(juce::Graphics& g, double position, juce::Rectangle<float> destination) const
{
    if (!film->isValid())
        return;
    const int frame = static_cast<int>(juce::jlimit(0.0, 1.0, position) * (frames - 1));
    film->draw(g, destination, {0, frame * frameHeight(), frameWidth(), frameHeight()});
}

} // namespace quorel
