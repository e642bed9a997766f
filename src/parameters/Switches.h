// SPDX-License-Identifier: GPL-3.0-or-later
// Which parameters are switches, and when they are on: one reading for what plays and for what is shown.
#pragma once

#include "parameters/ParameterCatalogue.h"

namespace quorel
{

/** True for a slot, 0 to 1507, that is either on or off. Any thread. */
inline bool isSwitch(int index) noexcept
{
    const auto kind = parameterInfo(index).coding.kind;
    return kind == Coding::onOff || kind == Coding::onAboveHalf || kind == Coding::onAtOne;
}

/** Whether the switch in slot `index` is on at `value`, 0 to 1. Any thread. */
inline bool isSwitchOn(int index, float value) noexcept
{
    switch (parameterInfo(index).coding.kind)
    {
    case Coding::onAboveHalf:
        return value > 0.5f;
    case Coding::onAtOne:
        return value == 1.0f;
    default:
        return value != 0.0f;
    }
}

} // namespace quorel
