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

thread_local int stillDepth = 0;

/** Whether another thread has moved a parameter on since it was read. One that moves it back to where the stand has it
    leaves no trace in the stand: only the parameter tells. False where either is no number. */
constexpr bool differ(float now, float then) noexcept
{
    return now < then || now > then;
}

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

MultiControls::Still::Still() noexcept
{
    ++stillDepth;
}

MultiControls::Still::~Still()
{
    --stillDepth;
}

MultiControls::Memory MultiControls::getMemory() const noexcept
{
    Memory memory;

    for (int t = 0; t < numMultiTargets; ++t)
    {
        const Stand stand = stands[cell(t)].load();
        memory.targets[cell(t)] = {runningValue(t), targetParameter(t), stand.knob, stand.fader};
    }

    return memory;
}

void MultiControls::setMemory(const Memory& memory) noexcept
{
    for (size_t t = 0; t < memory.targets.size(); ++t)
    {
        const auto& target = memory.targets[t];
        stands[t].store({target.knob, target.fader});
        targetIndex[t].store(target.index, std::memory_order_relaxed);
        targetValue[t].store(target.value, std::memory_order_relaxed);
    }
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
    const int index = targetParameter(t);
    auto& running = targetValue[cell(t)];
    float before = running.load();

    while (!running.compare_exchange_weak(before, before + amount))
    {
    }

    // Another thread may have moved the value on before this one came to write: the last to write is one that
    // has seen no further move, unless the target has been given up meanwhile. It looks by an exchange: a mere
    // read could come before what it has just written is there for all.
    float written = before + amount;
    parameters.writeFollowingParameter(index, written);

    for (float now = written; !running.compare_exchange_strong(now, now) && targetParameter(t) == index;)
    {
        written = now;
        parameters.writeFollowingParameter(index, written);
    }
}

void MultiControls::changed(int index, float oldValue, float newValue)
{
    if (stillDepth > 0)
        return;

    if (isWithin(index, slot::multiKnob, numMultiTargets))
        knobMoved(index - slot::multiKnob);
    else if (isWithin(index, slot::multiFader, numMultiFaders))
        faderMoved(index - slot::multiFader);
    else if (isWithin(index, slot::multiAssignment, numMultiTargets))
        assignmentChanged(index - slot::multiAssignment, oldValue, newValue);
}

void MultiControls::knobMoved(int t)
{
    const int knob = slot::multiKnob + t;
    auto& stand = stands[cell(t)];
    Stand from = stand.load();
    Stand to{};

    do
    {
        to = {parameters.readParameter(knob), from.fader};

        while (!stand.compare_exchange_weak(from, to))
            to = {parameters.readParameter(knob), from.fader};

        if (isLive(t))
            moveTarget(t, (to.knob - from.knob) * 2.0f * from.fader);

        from = to;
    } while (differ(parameters.readParameter(knob), to.knob));
}

void MultiControls::faderMoved(int group)
{
    const int fader = slot::multiFader + group;
    const int first = multiTargetsPerFader * group;

    for (int t = first; t < first + multiTargetsPerFader; ++t)
    {
        auto& stand = stands[cell(t)];
        Stand from = stand.load();
        Stand to{};

        do
        {
            to = {from.knob, parameters.readParameter(fader)};

            while (!stand.compare_exchange_weak(from, to))
                to = {from.knob, parameters.readParameter(fader)};

            const float depth = static_cast<float>((static_cast<double>(from.knob) - 0.5) * 2.0);

            if (isLive(t))
                moveTarget(t, depth * (to.fader - from.fader));

            from = to;
        } while (differ(parameters.readParameter(fader), to.fader));
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
        // A chunk brings knob and fader in without a move.
        stands[cell(t)].store(
            {parameters.readParameter(slot::multiKnob + t), parameters.readParameter(faderOf(t))});
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
