// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterAccess.h"
#include "parameters/ParameterLayout.h"

#include <juce_core/juce_core.h>

#include <atomic>

namespace quorel
{

/** Which MIDI controller moves which parameter: 128 entries that live in the parameter table itself, and the
    one parameter, if any, that waits for its controller. */
class ControllerMap
{
public:
    explicit ControllerMap(ParameterAccess& parameterTable) noexcept
        : parameters(parameterTable)
    {
    }

    /** Audio thread: a controller, 0 to 127, has arrived. Binds it to the waiting parameter, if any, then
        moves the parameter bound to it to value / 127. A hold switch does what a click on it does. */
    void controllerReceived(int controller, int value);

    /** The controller bound to `parameter`, the highest if several are; -1 if none is. */
    int controllerOf(int parameter) const noexcept;

    /** Frees the parameter's controller and lets the next one that arrives take its place. */
    void latch(int parameter);
    /** Frees the parameter's controller, and stops waiting if it is the one that waits. */
    void unlatch(int parameter);
    /** Binds the controller whose number was typed. Text that isn't a number of 0 to 127 does nothing. */
    void assign(int parameter, const juce::String& controllerNumber);
    /** Unbinds all controllers by storing 0, as "Clear Midi" does. */
    void clearEntries();
    /** Unbinds all controllers by storing the encoded 0, as an empty table has it. */
    void clearControllerTable();

    /** 128 decimal integers: the parameters bound to controllers 0 to 127. */
    juce::StringArray exportTable() const;
    /** Reads what `exportTable` wrote. Lines past the 128th are ignored, controllers without a line keep
        their parameters, and text that is no integer unbinds. */
    void importTable(const juce::StringArray& lines);

    /** The parameter that waits for its controller; 0 for none. Any thread. */
    int waitingParameter() const noexcept { return learnTarget.load(std::memory_order_relaxed); }

private:
    void move(int target, int value);
    void unbind(int controller);

    ParameterAccess& parameters;
    std::atomic<int> learnTarget{0};
};

} // namespace quorel
