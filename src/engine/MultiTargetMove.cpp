// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/MultiTargetMove.h"

#include "engine/PluginProcessor.h"
#include "parameters/ParameterCodings.h"

namespace quorel
{

namespace
{
/** Number of a parameter in the list of targets; 0 for one that can't be a target. */
int listNumberOf(int parameter)
{
    for (int number = 1; number <= MultiControls::numTargets; ++number)
        if (MultiControls::parameterOfListNumber(number) == parameter)
            return number;

    return 0;
}
} // namespace

MultiTargetMove::MultiTargetMove(PluginProcessor& pluginProcessor, const NewPlace& newPlace)
    : processor(pluginProcessor)
{
    auto& multi = processor.multiControls();

    for (int t = 0; t < numMultiTargets; ++t)
    {
        const int parameter = multi.targetParameter(t);

        if (parameter == noParameter || newPlace(parameter) == parameter)
            continue;

        targets[static_cast<size_t>(t)] = listNumberOf(newPlace(parameter));
        multi.forget(t);
        processor.getParameterTable().setRaw(slot::multiAssignment + t, encodeParamInt(0));
    }
}

MultiTargetMove::~MultiTargetMove()
{
    for (int t = 0; t < numMultiTargets; ++t)
        if (const int number = targets[static_cast<size_t>(t)]; number > 0)
        {
            // There already when it is written, it counts as the same target, and the knob isn't centred.
            processor.getParameterTable().setRaw(slot::multiAssignment + t, encodeParamInt(number));
            processor.writeFollowingParameter(slot::multiAssignment + t, encodeParamInt(number));
        }
}

} // namespace quorel
