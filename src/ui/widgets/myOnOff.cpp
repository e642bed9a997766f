// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myOnOff.h"

#include "engine/ControlMenu.h"
#include "parameters/Switches.h"
#include "ui/HintText.h"
#include "ui/widgets/ControlPopup.h"
#include "ui/widgets/ParameterAccessibility.h"
#include "ui/widgets/WidgetTools.h"

namespace quorel
{
namespace
{

class ToggleAccessibility : public juce::AccessibilityHandler
{
public:
    ToggleAccessibility(juce::Button& toggle, int parameterNumber, PluginProcessor& pluginProcessor)
        : AccessibilityHandler(
              toggle, juce::AccessibilityRole::toggleButton,
              juce::AccessibilityActions()
                  .addAction(juce::AccessibilityActionType::press, [&toggle] { toggle.triggerClick(); })
                  .addAction(juce::AccessibilityActionType::toggle, [&toggle] { toggle.triggerClick(); }))
        , button(toggle)
        , parameter(parameterNumber)
        , processor(pluginProcessor)
    {
    }

    juce::AccessibleState getCurrentState() const override
    {
        const auto state = AccessibilityHandler::getCurrentState().withCheckable();
        return button.getToggleState() ? state.withChecked() : state;
    }

    juce::String getTitle() const override { return controlTitle(button, parameter, processor); }

private:
    juce::Button& button;
    const int parameter;
    PluginProcessor& processor;
};

} // namespace

myOnOff::myOnOff(juce::Rectangle<int> bounds, juce::Button::Listener* listener, int parameterId,
                 const CBitmap* twoStateImage, PluginProcessor& pluginProcessor)
    : TwoStateButton(bounds, listener, "toggle", parameterId, twoStateImage)
    , processor(pluginProcessor)
    , parameter(parameterId)
    , tieable(parameterId > 0 && parameterId < numHostParameters && isSwitch(parameterId))
    , glow(*this, tieable ? parameterId : 0, pluginProcessor)
{
    setClickingTogglesState(true);
}

void myOnOff::mouseDown(const juce::MouseEvent& event)
{
    if (!event.mods.isRightButtonDown() || !tieable)
        TwoStateButton::mouseDown(event);
    else if (isEnabled())
        showSwitchMenu();
}

void myOnOff::mouseDrag(const juce::MouseEvent& event)
{
    if (!event.mods.isRightButtonDown() || !tieable)
        TwoStateButton::mouseDrag(event);
}

void myOnOff::showSwitchMenu()
{
    showControlPopup(*this,
                     switchMenu(processor, parameter, controlName(*this, parameter, processor),
                                valueText(processor, parameter)),
                     PopupPlace::mouse,
                     [this](int id) { runControlMenuItem(processor, parameter, 0.0f, id); });
}

std::unique_ptr<juce::AccessibilityHandler> myOnOff::createAccessibilityHandler()
{
    return std::make_unique<ToggleAccessibility>(*this, parameter, processor);
}

} // namespace quorel
