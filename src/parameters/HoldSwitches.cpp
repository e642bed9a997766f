// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/HoldSwitches.h"

#include "parameters/ParameterLayout.h"

namespace quorel
{

namespace
{
constexpr float centre = 0.5f;

constexpr bool isMultiTarget(int t) noexcept
{
    return isWithin(t, 0, numMultiTargets);
}
} // namespace

bool isHeld(const ParameterAccess& parameters, int t) noexcept
{
    return isMultiTarget(t) && parameters.readParameter(slot::multiHold + t) != 0.0f;
}

void setHold(ParameterAccess& parameters, int t, bool on)
{
    if (!isMultiTarget(t) || isHeld(parameters, t) == on)
        return;

    const int knob = slot::multiKnob + t;
    const int memory = slot::multiMemory + t;
    parameters.writeParameterNotifyingHost(slot::multiHold + t, on ? 1.0f : 0.0f);
    const int from = on ? knob : memory;
    const int to = on ? memory : knob;
    parameters.writeParameterNotifyingHost(to, parameters.readParameter(from));
    parameters.writeParameterNotifyingHost(from, centre);
}

} // namespace quorel
