// SPDX-License-Identifier: GPL-3.0-or-later
// What the effects page knows of the effect types beside their names.
#pragma once

#include "effects/FxTypes.h"

#include <array>
#include <cstddef>

namespace quorel
{

/** What a type starts with when the user picks it, 0 to 1. */
struct FxTypeDefaults
{
    std::array<float, fxParameterCount> parameters;
    float mix = 1.0f;
    float pan = 0.5f;
    float volume = 0.75f;
};

/** `type` is 0 to 32. */
const FxTypeDefaults& fxTypeDefaults(int type);

/** True where the knob of parameter `j`, 0 to 9, has its zero in the middle. */
bool isBipolarFxParameter(int type, int j);

} // namespace quorel
