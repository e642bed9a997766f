// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ControllerMap.h"

#include "parameters/HoldSwitches.h"
#include "parameters/IntegerLines.h"
#include "parameters/ParameterCodings.h"

namespace quorel
{

void ControllerMap::controllerReceived(int controller, int value)
{
    const int entry = slot::controllerMap + controller;

    if (const int waiting = learnTarget.exchange(0, std::memory_order_relaxed); waiting != 0)
        parameters.writeParameter(entry, encodeParamInt(waiting));

    const int target = decodeParamInt(parameters.readParameter(entry));

    if (target >= 1 && target < numHostParameters)
        move(target, value);
}

void ControllerMap::move(int target, int value)
{
    // The flag alone would lose the knob's place.
    if (isWithin(target, slot::multiHold, numMultiTargets))
        setHold(parameters, target - slot::multiHold, value != 0);
    else
        parameters.writeParameterNotifyingHost(target, static_cast<float>(value / 127.0));
}

int ControllerMap::controllerOf(int parameter) const noexcept
{
    for (int controller = numControllers; --controller >= 0;)
        if (decodeParamInt(parameters.readParameter(slot::controllerMap + controller)) == parameter)
            return controller;

    return -1;
}

void ControllerMap::unbind(int controller)
{
    // A controller of -1 writes the unused slot before the table, and always has: it does no harm.
    parameters.writeParameter(slot::controllerMap + controller, encodeParamInt(0));
}

void ControllerMap::latch(int parameter)
{
    if (const int controller = controllerOf(parameter); controller != -1)
        unbind(controller);

    learnTarget.store(parameter, std::memory_order_relaxed);
}

void ControllerMap::unlatch(int parameter)
{
    if (const int controller = controllerOf(parameter); controller != -1)
        unbind(controller);

    int expected = parameter;
    learnTarget.compare_exchange_strong(expected, 0, std::memory_order_relaxed);
}

void ControllerMap::assign(int parameter, const juce::String& controllerNumber)
{
    const auto typed = controllerNumber.trim();

    if (typed.isEmpty() || !typed.containsOnly("0123456789"))
        return;

    const int controller = integerOfLine(typed);

    if (controller >= numControllers)
        return;

    unbind(controllerOf(parameter));
    parameters.writeParameter(slot::controllerMap + controller, encodeParamInt(parameter));
}

void ControllerMap::clearEntries()
{
    for (int controller = 0; controller < numControllers; ++controller)
        parameters.writeParameter(slot::controllerMap + controller, 0.0f);
}

void ControllerMap::clearControllerTable()
{
    for (int controller = 0; controller < numControllers; ++controller)
        unbind(controller);
}

juce::StringArray ControllerMap::exportTable() const
{
    juce::StringArray lines;

    for (int controller = 0; controller < numControllers; ++controller)
        lines.add(juce::String(decodeParamInt(parameters.readParameter(slot::controllerMap + controller))));

    return lines;
}

void ControllerMap::importTable(const juce::StringArray& lines)
{
    for (int controller = 0; controller < juce::jmin(numControllers, lines.size()); ++controller)
        parameters.writeParameter(slot::controllerMap + controller,
                                  encodeParamInt(integerOfLine(lines[controller])));
}

} // namespace quorel
