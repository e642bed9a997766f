// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/ParameterAccessibility.h"

namespace quorel
{
namespace
{

class SliderValue : public juce::AccessibilityValueInterface
{
public:
    SliderValue(juce::Slider& wrappedSlider, double sliderStep)
        : slider(wrappedSlider)
        , step(sliderStep)
    {
    }

    bool isReadOnly() const override { return !slider.isEnabled(); }

    double getCurrentValue() const override { return slider.getValue(); }

    juce::String getCurrentValueAsString() const override
    {
        return slider.getTextFromValue(slider.getValue());
    }

    void setValue(double value) override { moveSlider(slider, value); }

    void setValueAsString(const juce::String& text) override { setValue(slider.getValueFromText(text)); }

    AccessibleValueRange getRange() const override
    {
        return {{slider.getMinimum(), slider.getMaximum()}, step};
    }

private:
    juce::Slider& slider;
    const double step;
};

class SliderAccessibility : public juce::AccessibilityHandler
{
public:
    SliderAccessibility(juce::Slider& slider, int parameterNumber, PluginProcessor& pluginProcessor,
                        double step)
        : AccessibilityHandler(slider, juce::AccessibilityRole::slider, {},
                               {std::make_unique<SliderValue>(slider, step)})
        , parameter(parameterNumber)
        , processor(pluginProcessor)
    {
    }

    juce::String getTitle() const override { return controlTitle(getComponent(), parameter, processor); }

private:
    const int parameter;
    PluginProcessor& processor;
};

} // namespace

juce::String controlTitle(const juce::Component& control, int parameter, PluginProcessor& processor)
{
    const auto title = control.getTitle();
    return title.isEmpty() && parameter > 0 && parameter < numHostParameters
               ? processor.getParameterName(parameter)
               : title;
}

std::unique_ptr<juce::AccessibilityHandler> makeSliderAccessibility(juce::Slider& slider, int parameter,
                                                                    PluginProcessor& processor, double step)
{
    return std::make_unique<SliderAccessibility>(slider, parameter, processor, step);
}

int arrowDirection(const juce::KeyPress& key)
{
    if (key == juce::KeyPress::rightKey || key == juce::KeyPress::upKey)
        return 1;
    return key == juce::KeyPress::leftKey || key == juce::KeyPress::downKey ? -1 : 0;
}

void moveSlider(juce::Slider& slider, double value)
{
    if (!slider.isEnabled())
        return;
    juce::Slider::ScopedDragNotification gesture(slider);
    slider.setValue(value, juce::sendNotificationSync);
}

} // namespace quorel
