// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myIntBox.h"

#include "engine/ControlMenu.h"
#include "ui/widgets/WidgetTools.h"

#include <cmath>

namespace quorel
{
namespace
{
constexpr float fontHeight = 13.0f;
constexpr double hundredths = 100.0;

// Rows that number boxes with a parameter don't have.
constexpr int halveId = 101;
constexpr int doubleId = 102;
} // namespace

myIntBox::myIntBox(juce::Rectangle<int> bounds, juce::Slider::Listener* listener,
                   const CBitmap* backgroundImage, juce::String textBefore, PluginProcessor& pluginProcessor)
    : ReadoutBox(bounds, listener, "myIntBox", noParameter, backgroundImage, fontHeight, 0, pluginProcessor)
    , prefix(std::move(textBefore))
{
}

double myIntBox::numberAt(double value) const
{
    return std::round((minimum + value / numberStep()) * hundredths) / hundredths;
}

double myIntBox::valueOf(double number) const
{
    return (number - minimum) * numberStep();
}

juce::String myIntBox::typedTextAt(double value) const
{
    // As many places as the number needs.
    const auto text = juce::String(numberAt(value), 2);
    return text.trimCharactersAtEnd("0").trimCharactersAtEnd(".");
}

juce::String myIntBox::textAt(double value) const
{
    return prefix + typedTextAt(value);
}

void myIntBox::showNumber(double number)
{
    setValue(juce::jlimit(0.0, 1.0, valueOf(number)), juce::dontSendNotification);

    if (!isTyping())
        showText();
}

double myIntBox::snapValue(double attempted, DragMode mode)
{
    // A press is a drag of no pixels, which is to leave a fraction as it is.
    const bool moves = mode != notDragging && numberAt(attempted) != getNumber();
    return moves ? valueOf(std::floor(numberAt(attempted))) : attempted;
}

MenuEntries myIntBox::menuRows()
{
    return {informationRow(getTitle()),
            informationRow(textAt(getValue())),
            MenuEntry::separator(),
            MenuEntry::command(controlMenuId::setToDefault, "Set To " + juce::String(defaultNumber)),
            MenuEntry::command(controlMenuId::increase, "Increase"),
            MenuEntry::command(controlMenuId::decrease, "Decrease"),
            MenuEntry::command(halveId, "Halve"),
            MenuEntry::command(doubleId, "Double"),
            MenuEntry::command(controlMenuId::setValue, "Set Value")};
}

void myIntBox::runMenuRow(int id)
{
    if (id == controlMenuId::setToDefault)
        enter(defaultNumber);
    else if (id == halveId)
        enter(getNumber() / 2.0);
    else if (id == doubleId)
        enter(getNumber() * 2.0);
    else
        ReadoutBox::runMenuRow(id);
}

} // namespace quorel
