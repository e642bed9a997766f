// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ControlPage.h"

#include "parameters/ParameterCatalogue.h"
#include "parameters/Switches.h"
#include "ui/widgets/WidgetTools.h"

namespace quorel
{

Page viewPageOf(const PluginProcessor& processor)
{
    return pageOf(processor.readParameter(slot::view));
}

ControlPage::ControlPage(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                         const EditorImages& editorImages)
    : processor(pluginProcessor)
    , host(editorHost)
    , images(editorImages)
{
    setInterceptsMouseClicks(false, true);
}

int ControlPage::parameterOf(const juce::Component& component)
{
    // The IDs of editable labels count the labels.
    if (dynamic_cast<const juce::Label*>(&component) != nullptr)
        return 0;

    const int number = component.getComponentID().getIntValue();
    return number >= 1 && number < numParameterSlots ? number : 0;
}

void ControlPage::setUpHotspot(juce::Button& button, juce::Rectangle<int> bounds, const juce::String& title)
{
    button.setBounds(bounds);
    button.setComponentID(juce::String(noParameter));
    button.setTitle(title);
    button.setMouseClickGrabsKeyboardFocus(false);
    button.setHasFocusOutline(true);
    button.addListener(this);
}

void ControlPage::addControls(std::initializer_list<juce::Component*> controls)
{
    for (auto* control : controls)
        addAndMakeVisible(control);
}

void ControlPage::returnToDefault(juce::Slider& slider)
{
    slider.setDoubleClickReturnValue(true, static_cast<double>(parameterDefault(parameterOf(slider))));
}

void ControlPage::showToggle(juce::Button& toggle) const
{
    const int parameter = parameterOf(toggle);
    toggle.setToggleState(isSwitchOn(parameter, processor.readParameter(parameter)),
                          juce::dontSendNotification);
}

void ControlPage::showSlider(juce::Slider& slider) const
{
    slider.setValue(static_cast<double>(processor.readParameter(parameterOf(slider))),
                    juce::dontSendNotification);
}

void ControlPage::sliderValueChanged(juce::Slider* slider)
{
    if (const int parameter = parameterOf(*slider); parameter > 0)
        processor.setParameterFromUi(parameter, static_cast<float>(slider->getValue()));
}

void ControlPage::sliderDragStarted(juce::Slider* slider)
{
    if (const int parameter = parameterOf(*slider); parameter > 0 && parameter < numHostParameters)
        processor.beginUserGesture(parameter);
}

void ControlPage::sliderDragEnded(juce::Slider* slider)
{
    if (const int parameter = parameterOf(*slider); parameter > 0 && parameter < numHostParameters)
        processor.endUserGesture(parameter);
}

void ControlPage::buttonClicked(juce::Button* button)
{
    if (const int parameter = parameterOf(*button); parameter > 0 && button->getClickingTogglesState())
        processor.setParameterFromUi(parameter, button->getToggleState() ? 1.0f : 0.0f);
}

} // namespace quorel
