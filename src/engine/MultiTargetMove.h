// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterLayout.h"

#include <array>
#include <functional>

namespace quorel
{

class PluginProcessor;

/** While what multi-controls move is brought elsewhere in the sound, their knobs are off it; at the end of the
    scope they aim at its new place, and stand as before. Message thread. */
class MultiTargetMove
{
public:
    /** Parameter at the new place, for one at the old; the same for one that stays. */
    using NewPlace = std::function<int(int parameter)>;

    MultiTargetMove(PluginProcessor& pluginProcessor, const NewPlace& newPlace);
    ~MultiTargetMove();

private:
    PluginProcessor& processor;
    /** By knob: number in the list of targets, 0 for a knob that stays out of it. */
    std::array<int, numMultiTargets> targets{};
};

} // namespace quorel
