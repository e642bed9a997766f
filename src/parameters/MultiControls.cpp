// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/MultiControls.h"

#include "parameters/ParameterCodings.h"

namespace quorel
{

namespace
{
constexpr std::array<int, 6> mixerTargets{layerSlot::volume,        layerSlot::pan,
                                          layerSlot::sendLevel,     layerSlot::sendLevel + 1,
                                          layerSlot::sendLevel + 2, layerSlot::sendLevel + 3};

constexpr int faderOf(int t) noexcept
{
    return slot::multiFader + t / multiTargetsPerFader;
}
} // namespace

MultiControls::MultiControls(ParameterAccess& parameterTable) noexcept
    : parameters(parameterTable)
{
    for (int t = 0; t < numMultiTargets; ++t)
        forget(t);
}

void MultiControls::forget(int t) noexcept
{
    targetValue[cell(t)].store(0.0f, std::memory_order_relaxed);
    targetIndex[cell(t)].store(noParameter, std::memory_order_relaxed);
}

int MultiControls::parameterOfListNumber(int listNumber) noexcept
{
    const int layer = (listNumber - 1) / targetsPerLayer;
    const int entry = (listNumber - 1) % targetsPerLayer;
    const int firstEasy = static_cast<int>(mixerTargets.size());
    const int n = entry < firstEasy ? mixerTargets[static_cast<size_t>(entry)]
                                    : layerSlot::easyValue + entry - firstEasy;
    return layerParameter(layer, n);
}

void MultiControls::rebase(int parameter, float value) noexcept
{
    for (int t = 0; t < numMultiTargets; ++t)
        if (targetParameter(t) == parameter)
            targetValue[cell(t)].store(value, std::memory_order_relaxed);
}

bool MultiControls::isLive(int t) const noexcept
{
    const int index = targetParameter(t);
    return decodeParamInt(parameters.readParameter(slot::multiAssignment + t)) > 0 && index > 0 &&
           index != noParameter;
}

void MultiControls::moveTarget(int t, float amount)
{
    const float moved = runningValue(t) + amount;
    targetValue[cell(t)].store(moved, std::memory_order_relaxed);
    parameters.writeParameter(targetParameter(t), moved);
}

void MultiControls::changed(int index, float oldValue, float newValue)
{
    const float delta = newValue - oldValue;

    if (isWithin(index, slot::multiKnob, numMultiTargets))
        knobMoved(index - slot::multiKnob, delta);
    else if (isWithin(index, slot::multiFader, numMultiFaders))
        faderMoved(index - slot::multiFader, delta);
    else if (isWithin(index, slot::multiAssignment, numMultiTargets))
        assignmentChanged(index - slot::multiAssignment, oldValue, newValue);
}

void MultiControls::knobMoved(int t, float delta)
{
    if (isLive(t))
        moveTarget(t, delta * 2.0f * parameters.readParameter(faderOf(t)));
}

void MultiControls::faderMoved(int group, float delta)
{
    const int first = multiTargetsPerFader * group;

    for (int t = first; t < first + multiTargetsPerFader; ++t)
    {
        const double knob = static_cast<double>(parameters.readParameter(slot::multiKnob + t));
        const float depth = static_cast<float>((knob - 0.5) * 2.0);

        if (isLive(t))
            moveTarget(t, depth * delta);
    }
}

void MultiControls::assignmentChanged(int t, float oldValue, float newValue)
{
    const int oldNumber = decodeParamInt(oldValue);
    const int newNumber = decodeParamInt(newValue);

    if (oldNumber > 0 && newNumber != oldNumber)
    {
        // The target goes back to where it stood before this knob had any effect, and the knob to its centre.
        const float knob = parameters.readParameter(slot::multiKnob + t);
        const float restored = runningValue(t) + (0.5f - knob) * 2.0f * parameters.readParameter(faderOf(t));
        const int index = targetParameter(t);
        forget(t);

        if (index >= 1 && index < numParameterSlots)
            parameters.writeParameter(index, restored);

        parameters.writeParameter(slot::multiKnob + t, 0.5f);
    }

    if (newNumber > 0)
    {
        if (newNumber != oldNumber)
            parameters.writeParameter(slot::multiKnob + t, 0.5f);

        const int index = parameterOfListNumber(newNumber);
        targetIndex[cell(t)].store(index, std::memory_order_relaxed);
        targetValue[cell(t)].store(parameters.readParameter(index), std::memory_order_relaxed);
    }
}

void MultiControls::clearEasyTargetsOf(int layer)
{
    const int first = layerParameter(layer, layerSlot::easyValue);

    for (int t = 0; t < numMultiTargets; ++t)
        if (isWithin(targetParameter(t), first, numEasyParameters))
            parameters.writeParameter(slot::multiAssignment + t, 0.0f);
}

} // namespace quorel
