// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/MidiGlow.h"

#include "parameters/ParameterCodings.h"

#include <algorithm>

namespace quorel
{
namespace
{
constexpr int glowIntervalMillis = 100;
constexpr float glowRadius = 2.0f;
const juce::Colour boundColour{0xff008000};
const juce::Colour waitingColour{0xffff0000};
} // namespace

MidiGlow::MidiGlow(juce::Component& glowingControl, int parameterNumber, PluginProcessor& pluginProcessor)
    : control(glowingControl)
    , parameter(parameterNumber)
    , processor(pluginProcessor)
{
    if (parameter > 0 && ParameterTable::isSlot(parameter))
        clock->add(*this);
}

MidiGlow::~MidiGlow()
{
    clock->remove(*this);
    control.setComponentEffect(nullptr);
}

MidiGlow::BoundParameters MidiGlow::boundParameters(const PluginProcessor& processor)
{
    BoundParameters bound;
    for (int controller = 0; controller < numControllers; ++controller)
    {
        const int target = decodeParamInt(processor.readParameter(slot::controllerMap + controller));
        if (target > 0 && ParameterTable::isSlot(target))
            bound.set(static_cast<size_t>(target));
    }
    return bound;
}

void MidiGlow::follow(const BoundParameters& bound)
{
    juce::Colour wanted;
    if (bound.test(static_cast<size_t>(parameter)))
        wanted = boundColour;
    else if (processor.getControllerMap().waitingParameter() == parameter)
        wanted = waitingColour;

    if (wanted == shown)
        return;

    shown = wanted;
    effect.setGlowProperties(glowRadius, shown);
    control.setComponentEffect(shown.isTransparent() ? nullptr : &effect);
    control.repaint();
}

void MidiGlow::Clock::add(MidiGlow& glow)
{
    glows.push_back(&glow);
    startTimer(glowIntervalMillis);
}

void MidiGlow::Clock::remove(MidiGlow& glow)
{
    glows.erase(std::remove(glows.begin(), glows.end(), &glow), glows.end());
    if (glows.empty())
        stopTimer();
}

void MidiGlow::alignClock()
{
    juce::SharedResourcePointer<Clock>()->restart();
}

void MidiGlow::Clock::restart()
{
    if (!glows.empty())
        startTimer(glowIntervalMillis);
}

void MidiGlow::Clock::timerCallback()
{
    // The controls of one editor are mostly neighbours in the list.
    const PluginProcessor* known = nullptr;
    BoundParameters bound;
    for (auto* glow : glows)
    {
        if (&glow->processor != known)
        {
            known = &glow->processor;
            bound = boundParameters(*known);
        }
        glow->follow(bound);
    }
}

} // namespace quorel
