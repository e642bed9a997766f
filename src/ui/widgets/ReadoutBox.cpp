// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/ReadoutBox.h"

#include "engine/ControlMenu.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterCodings.h"
#include "ui/HintText.h"
#include "ui/TypedText.h"
#include "ui/widgets/ParameterAccessibility.h"
#include "ui/widgets/WidgetTools.h"

#include <cmath>
#include <utility>

namespace quorel
{

namespace
{
/** Digits with a point among them and a sign in front, or without either. */
bool isDecimal(const juce::String& text)
{
    const auto digits = text.startsWithChar('-') || text.startsWithChar('+') ? text.substring(1) : text;
    return digits.containsAnyOf("0123456789") && digits.containsOnly("0123456789.") &&
           digits.indexOfChar('.') == digits.lastIndexOfChar('.');
}
} // namespace

//==============================================================================================================

juce::TextEditor* ReadoutBox::Text::createEditorComponent()
{
    auto* field = new TypedText(getName());
    field->applyFontToAllText(getFont());
    field->setJustification(juce::Justification::centred);
    // The boxes are hardly higher than their text.
    field->setIndents(0, 0);
    field->setBorder(juce::BorderSize<int>(1));
    return field;
}

void ReadoutBox::Text::editorShown(juce::TextEditor* field)
{
    juce::Label::editorShown(field);
    field->setText(box.typedTextAt(box.getValue()), false);
    field->selectAll();
}

void ReadoutBox::Text::textWasEdited()
{
    const auto text = getText();
    box.showText();
    box.typed(text);
}

//==============================================================================================================

ReadoutBox::ReadoutBox(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, const char* kind,
                       int parameterId, const CBitmap* backgroundImage, float fontHeight,
                       int labelWidthAdjust, PluginProcessor& pluginProcessor)
    : juce::Slider(RotaryVerticalDrag, NoTextBox)
    , processor(pluginProcessor)
    , parameter(parameterId)
    , image(backgroundImage)
    , dragExtent(getMouseDragSensitivity())
{
    setUpControl(*this, kind, parameterId);
    setWantsKeyboardFocus(true);
    setRange(0.0, 1.0);
    setBounds(boundsOnImage(bounds, image, 1));

    label.setFont(juce::Font(fontHeight, juce::Font::bold));
    label.setJustificationType(juce::Justification::centred);
    // The field that it opens takes the mouse.
    label.setInterceptsMouseClicks(false, true);
    label.setAccessible(false);
    label.setBounds(getLocalBounds().withWidth(getWidth() + labelWidthAdjust));
    addAndMakeVisible(label);

    if (listener != nullptr)
        addListener(listener);
}

int ReadoutBox::numberOf(float value) const noexcept
{
    return paramToInt(value, minimum, maximum);
}

void ReadoutBox::showText()
{
    label.setText(textAt(getValue()), juce::dontSendNotification);
}

void ReadoutBox::update(float value)
{
    setValue(static_cast<double>(clampUnit(value)), juce::dontSendNotification);

    if (!isTyping())
        showText();
}

void ReadoutBox::valueChanged()
{
    showText();
}

void ReadoutBox::paint(juce::Graphics& g)
{
    if (image != nullptr)
        image->paint(g, getLocalBounds().toFloat());
}

double ReadoutBox::numberStep() const noexcept
{
    return maximum == minimum ? 1.0 : 1.0 / std::abs(maximum - minimum);
}

double ReadoutBox::valueOf(double number) const
{
    // The middle of the number's range, so that rounding can't lead to a neighbour.
    return (std::floor(number) - minimum + 0.5) * numberStep();
}

void ReadoutBox::enter(double number)
{
    moveSlider(*this, juce::jlimit(0.0, 1.0, valueOf(juce::jlimit<double>(minimum, maximum, number))));
}

void ReadoutBox::step(int numbers)
{
    enter(numberAt(getValue()) + numbers);
}

std::optional<double> ReadoutBox::numberOfText(const juce::String& text) const
{
    // Half of Europe writes its decimals behind a comma.
    const auto number = text.trim().replaceCharacter(',', '.');
    return isDecimal(number) ? std::optional<double>(number.getDoubleValue()) : std::nullopt;
}

void ReadoutBox::typed(const juce::String& text)
{
    const auto number = numberOfText(text);

    // What is there already stays as it is, to the bit.
    if (number && *number != numberAt(getValue()))
        enter(*number);
}

void ReadoutBox::showField()
{
    if (isEnabled())
        label.showEditor();
}

//==============================================================================================================
// Mouse and keys

void ReadoutBox::mouseDown(const juce::MouseEvent& event)
{
    dragging = isEnabled() && !event.mods.isRightButtonDown();
    setMouseDragSensitivity(event.mods.isShiftDown() ? dragExtent * fineDragFactor : dragExtent);

    if (dragging)
        juce::Slider::mouseDown(event);
    else if (isEnabled())
        showControlPopup(*this, menuRows(), PopupPlace::mouse, [this](int id) { runMenuRow(id); });
}

void ReadoutBox::mouseDrag(const juce::MouseEvent& event)
{
    if (dragging)
        juce::Slider::mouseDrag(event);
}

void ReadoutBox::mouseUp(const juce::MouseEvent& event)
{
    if (std::exchange(dragging, false))
        juce::Slider::mouseUp(event);
}

void ReadoutBox::mouseDoubleClick(const juce::MouseEvent& event)
{
    if (!event.mods.isRightButtonDown())
        showField();
}

void ReadoutBox::mouseWheelMove(const juce::MouseEvent&, const juce::MouseWheelDetails& wheel)
{
    const float turn = wheel.isReversed ? -wheel.deltaY : wheel.deltaY;

    if (turn != 0.0f && !isMouseButtonDown())
        step(turn > 0.0f ? 1 : -1);
}

bool ReadoutBox::keyPressed(const juce::KeyPress& key)
{
    if (key == juce::KeyPress::returnKey)
    {
        showField();
        return true;
    }

    const int direction = arrowDirection(key);

    if (direction != 0)
        step(direction);

    return direction != 0;
}

MenuEntries ReadoutBox::menuRows()
{
    return controlMenu(processor, parameter, controlName(*this, parameter, processor), textAt(getValue()));
}

void ReadoutBox::runMenuRow(int id)
{
    // A step of the menu is one number here, and what is typed is a number of the box.
    if (id == controlMenuId::increase)
        step(1);
    else if (id == controlMenuId::decrease)
        step(-1);
    else if (id == controlMenuId::setValue)
        showField();
    else
        runControlMenuItem(processor, parameter, parameterDefault(parameter), id);
}

juce::String ReadoutBox::getTextFromValue(double value)
{
    return textAt(value);
}

double ReadoutBox::getValueFromText(const juce::String& text)
{
    const auto number = numberOfText(text);
    return number ? juce::jlimit(0.0, 1.0, valueOf(*number)) : getValue();
}

std::unique_ptr<juce::AccessibilityHandler> ReadoutBox::createAccessibilityHandler()
{
    return makeSliderAccessibility(*this, parameter, processor, numberStep());
}

} // namespace quorel
