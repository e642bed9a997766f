// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <bitset>
#include <vector>

namespace quorel
{

/** The glow around a control: green while a MIDI controller moves its parameter, red while the parameter
    waits for one. Follows the processor every 100 milliseconds. Message thread. */
class MidiGlow
{
public:
    MidiGlow(juce::Component& glowingControl, int parameterNumber, PluginProcessor& pluginProcessor);
    ~MidiGlow();

    /** Lets the clock of all glows tick together with a timer that starts now: each timer that ticks for itself wakes
        the processor. */
    static void alignClock();

private:
    /** One clock for all controls of all editors in the process. It decodes a processor's 128 controllers
        once for all of its controls, so that an idle editor of 300 controls costs next to nothing. */
    class Clock : private juce::Timer
    {
    public:
        void add(MidiGlow& glow);
        void remove(MidiGlow& glow);
        void restart();

    private:
        void timerCallback() override;

        std::vector<MidiGlow*> glows;
    };

    /** Parameters of a processor that a controller is bound to. */
    using BoundParameters = std::bitset<numParameterSlots>;
    static BoundParameters boundParameters(const PluginProcessor& processor);

    void follow(const BoundParameters& bound);

    juce::Component& control;
    const int parameter;
    PluginProcessor& processor;
    juce::GlowEffect effect;
    juce::Colour shown;
    juce::SharedResourcePointer<Clock> clock;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(MidiGlow)
};

} // namespace quorel
