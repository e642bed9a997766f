// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ControlMenu.h"

#include "engine/PluginProcessor.h"
#include "parameters/ParameterCodings.h"

namespace quorel
{

namespace
{
constexpr float stepOfOneClick = 0.01f;

bool hasControlMenu(PluginProcessor& processor, int parameter)
{
    return parameter > 0 && parameter < processor.getNumParameters();
}

MenuEntry information(const juce::String& text)
{
    auto entry = MenuEntry::command(controlMenuId::information, text);
    entry.enabled = false;
    return entry;
}

float randomValue()
{
    constexpr int steps = 32767;
    return static_cast<float>(juce::Random::getSystemRandom().nextInt(steps + 1)) / steps;
}

void askForController(PluginProcessor& processor, int parameter)
{
    const int controller = processor.getControllerMap().controllerOf(parameter);
    const juce::WeakReference<PluginProcessor> alive(&processor);
    const auto typed = processor.userInteraction().askText(
        {}, "Enter MIDI Controller number:", controller != -1 ? juce::String(controller) : juce::String());

    // The host may have closed the plug-in behind the open question.
    if (alive != nullptr)
        processor.getControllerMap().assign(parameter, typed);
}
} // namespace

MenuEntries controlMenu(PluginProcessor& processor, int parameter)
{
    if (!hasControlMenu(processor, parameter))
        return {};

    const int controller = processor.getControllerMap().controllerOf(parameter);
    MenuEntries menu{
        information(processor.getParameterName(parameter)),
        information(processor.getParameterText(parameter)), MenuEntry::separator(),
        information(controller != -1 ? "Midi CC : " + juce::String(controller) : juce::String("Not Latched")),
        MenuEntry::separator()};
    int id = controlMenuId::setToDefault;

    for (const char* text :
         {"Set To Default", "Set To Minimum", "Set To Maximum", "Set To Mid", "Set To Random", "Increase",
          "Decrease", "Set Value", "-", "Latch To Midi", "Unlatch Midi", "Set Midi CC", "Clear Midi"})
    {
        if (juce::String(text) == "-")
            menu.push_back(MenuEntry::separator());
        else
            menu.push_back(MenuEntry::command(id++, text));
    }

    return menu;
}

void runControlMenuItem(PluginProcessor& processor, int parameter, float defaultValue, int id)
{
    if (!hasControlMenu(processor, parameter))
        return;

    auto& controllers = processor.getControllerMap();
    const float value = processor.readParameter(parameter);
    const auto write = [&](float newValue) { processor.setParameterFromUi(parameter, clampUnit(newValue)); };

    switch (id)
    {
    case controlMenuId::setToDefault:
        write(defaultValue);
        break;
    case controlMenuId::setToMinimum:
        write(0.0f);
        break;
    case controlMenuId::setToMaximum:
        write(1.0f);
        break;
    case controlMenuId::setToMid:
        write(0.5f);
        break;
    case controlMenuId::setToRandom:
        write(randomValue());
        break;
    case controlMenuId::increase:
        write(value + stepOfOneClick);
        break;
    case controlMenuId::decrease:
        write(value - stepOfOneClick);
        break;
    case controlMenuId::setValue:
        processor.editParameterValue(parameter);
        break;
    case controlMenuId::latchToMidi:
        controllers.latch(parameter);
        break;
    case controlMenuId::unlatchMidi:
        controllers.unlatch(parameter);
        break;
    case controlMenuId::setMidiController:
        askForController(processor, parameter);
        break;
    case controlMenuId::clearMidi:
        controllers.clearEntries();
        break;
    default:
        break;
    }
}

} // namespace quorel
