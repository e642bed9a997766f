// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/FilmSlider.h"

#include "engine/ControlMenu.h"
#include "ui/PopupMenus.h"
#include "ui/widgets/ParameterAccessibility.h"
#include "ui/widgets/WidgetTools.h"

namespace quorel
{
namespace
{
constexpr int fineDragFactor = 10;
} // namespace

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
        showControlMenu(juce::PopupMenu::Options().withTargetComponent(this).withMousePosition());
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
        return showControlMenu(juce::PopupMenu::Options().withTargetComponent(this));

    const int direction = arrowDirection(key);
    if (direction != 0)
        moveSlider(*this, getValue() + keyboardStep * direction);
    return direction != 0;
}

bool FilmSlider::showControlMenu(juce::PopupMenu::Options options)
{
    const auto rows = controlMenu(processor, parameter);
    if (rows.empty() || !isEnabled())
        return false;

    auto menu = popupMenuOf(rows);
    menu.setLookAndFeel(&getLookAndFeel());
    menu.showMenuAsync(options,
                       [control = SafePointer<FilmSlider>(this)](int id)
                       {
                           // The editor may have closed under its menu.
                           if (control != nullptr)
                               runControlMenuItem(control->processor, control->parameter,
                                                  static_cast<float>(control->getDoubleClickReturnValue()),
                                                  id);
                       });
    return true;
}

juce::String FilmSlider::getTextFromValue(double value)
{
    return parameter > 0 && parameter < numHostParameters ? processor.getParameterText(parameter)
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
