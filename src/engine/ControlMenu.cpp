// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ControlMenu.h"

#include "engine/PluginProcessor.h"
#include "parameters/ParameterCodings.h"

#include <initializer_list>

namespace quorel
{

namespace
{
constexpr float stepOfOneClick = 0.01f;

bool hasControlMenu(PluginProcessor& processor, int parameter)
{
    return parameter > 0 && parameter < processor.getNumParameters();
}

float randomValue()
{
    constexpr int steps = 32767;
    return static_cast<float>(juce::Random::getSystemRandom().nextInt(steps + 1)) / steps;
}

const std::initializer_list<const char*> midiCommands{"Latch To Midi", "Unlatch Midi", "Set Midi CC",
                                                      "Clear Midi"};

void addCommands(MenuEntries& menu, int firstId, std::initializer_list<const char*> texts)
{
    for (const char* text : texts)
        menu.push_back(MenuEntry::command(firstId++, text));
}

/** What a menu tells before its commands. */
MenuEntries headRows(PluginProcessor& processor, int parameter, const juce::String& name,
                     const juce::String& text)
{
    if (!hasControlMenu(processor, parameter))
        return {};

    const int controller = processor.getControllerMap().controllerOf(parameter);
    return {informationRow(name), informationRow(text), MenuEntry::separator(),
            informationRow(controller != -1 ? "Midi CC : " + juce::String(controller)
                                            : juce::String("Not Latched")),
            MenuEntry::separator()};
}

void askForController(PluginProcessor& processor, int parameter)
{
    const int controller = processor.getControllerMap().controllerOf(parameter);
    const juce::WeakReference<PluginProcessor> alive(&processor);
    const auto typed = processor.userInteraction().askText(
        {}, "Enter MIDI Controller number:", controller != -1 ? juce::String(controller) : juce::String());

    // The host may have closed the plug-in behind the open question.
    if (alive == nullptr)
        return;

    const UndoHistory::Recording recording(processor);
    processor.getControllerMap().assign(parameter, typed);
}

void clearAfterAsking(PluginProcessor& processor)
{
    const juce::WeakReference<PluginProcessor> alive(&processor);

    if (!processor.userInteraction().confirm({}, "Untie all controls from their MIDI controllers ?") ||
        alive == nullptr)
        return;

    const UndoHistory::Recording recording(processor);
    processor.getControllerMap().clearEntries();
}
} // namespace

MenuEntry informationRow(const juce::String& text)
{
    auto entry = MenuEntry::command(controlMenuId::information, text);
    entry.enabled = false;
    return entry;
}

MenuEntries controlMenu(PluginProcessor& processor, int parameter, const juce::String& name,
                        const juce::String& text)
{
    auto menu = headRows(processor, parameter, name, text);

    if (menu.empty())
        return menu;

    addCommands(menu, controlMenuId::setToDefault,
                {"Set To Default", "Set To Minimum", "Set To Maximum", "Set To Mid", "Set To Random",
                 "Increase", "Decrease", "Set Value"});
    menu.push_back(MenuEntry::separator());
    addCommands(menu, controlMenuId::latchToMidi, midiCommands);
    return menu;
}

MenuEntries switchMenu(PluginProcessor& processor, int parameter, const juce::String& name,
                       const juce::String& text)
{
    auto menu = headRows(processor, parameter, name, text);

    if (!menu.empty())
        addCommands(menu, controlMenuId::latchToMidi, midiCommands);

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
    {
        const UndoHistory::Recording recording(processor);
        controllers.latch(parameter);
        break;
    }
    case controlMenuId::unlatchMidi:
    {
        const UndoHistory::Recording recording(processor);
        controllers.unlatch(parameter);
        break;
    }
    case controlMenuId::setMidiController:
        askForController(processor, parameter);
        break;
    case controlMenuId::clearMidi:
        clearAfterAsking(processor);
        break;
    default:
        break;
    }
}

} // namespace quorel
