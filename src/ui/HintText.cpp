// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/HintText.h"

#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterDisplay.h"
#include "parameters/Switches.h"
#include "ui/ControlPage.h"
#include "ui/widgets/ReadoutBox.h"
#include "ui/widgets/kappelDisplay.h"

namespace quorel
{

namespace
{
bool hasOwnName(int parameter, const juce::String& name)
{
    switch (parameterInfo(parameter).name.naming)
    {
    case Naming::text:
        return !isSelector(parameter);
    case Naming::effectLabel:
        // The effect type has no such parameter.
        return name != "-";
    case Naming::easyTarget:
        return name.fromFirstOccurrenceOf(" ", false, false) != juce::String(numberInLayer(parameter));
    default:
        return false;
    }
}

/** Text of a control that stands for a parameter; empty for a key that chooses a place, which says it all. */
juce::String controlText(juce::Component& control, int parameter, PluginProcessor& processor)
{
    if (isSelector(parameter))
        return {};

    // What a menu shows says more than its parameter's number.
    if (const auto* menu = dynamic_cast<const juce::ComboBox*>(&control))
        return menu->getText();

    if (const auto* steps = dynamic_cast<const kappelDisplay*>(&control))
        return steps->patternText();

    if (auto* slider = dynamic_cast<juce::Slider*>(&control))
        return slider->getTextFromValue(slider->getValue());

    return valueText(processor, parameter);
}

/** Text of a control without a parameter. */
juce::String ownText(juce::Component& control)
{
    if (const auto* menu = dynamic_cast<const juce::ComboBox*>(&control))
        return menu->getText();

    if (auto* box = dynamic_cast<ReadoutBox*>(&control))
        return box->getTextFromValue(box->getValue());

    return {};
}
} // namespace

juce::String controlName(const juce::Component& control, int parameter, PluginProcessor& processor)
{
    if (parameter < 1 || parameter >= numHostParameters)
        return control.getTitle();

    const auto name = processor.getParameterName(parameter);

    if (hasOwnName(parameter, name))
        return name;

    if (control.getTitle().isNotEmpty())
        return control.getTitle();

    if (parameterInfo(parameter).name.naming == Naming::easyTarget)
        return "Layer" + juce::String(layerOf(parameter) + 1) + " Easy " +
               juce::String(numberInLayer(parameter) - layerSlot::easyValue + 1);

    return name;
}

juce::String valueText(PluginProcessor& processor, int parameter)
{
    if (const auto text = processor.getParameterText(parameter); text.isNotEmpty())
        return text;

    const float value = processor.readParameter(parameter);

    if (isWithin(parameter, slot::masterEq, slot::masterEqEnd - slot::masterEq + 1))
        return parameterText(eqBase(0) + parameter - slot::masterEq,
                             {[value](int) { return value; }, [](int, int) { return juce::String(); }});

    if (isSwitch(parameter))
        return isSwitchOn(parameter, value) ? "On" : "Off";

    return juce::String(value, 2);
}

juce::String hintText(juce::Component& component, PluginProcessor& processor)
{
    // Parts of a control, such as a menu's text, have no ID of their own.
    auto* control = &component;

    while (control != nullptr && control->getComponentID().isEmpty())
        control = control->getParentComponent();

    if (control == nullptr)
        return {};

    const int parameter = ControlPage::parameterOf(*control);
    const bool isParameter = parameter > 0 && parameter < numHostParameters;
    const auto name = controlName(*control, isParameter ? parameter : 0, processor);
    const auto text = isParameter ? controlText(*control, parameter, processor) : ownText(*control);
    return name.isEmpty() || text.isEmpty() ? name : name + " = " + text;
}

} // namespace quorel
