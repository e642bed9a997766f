// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <cstdint>
#include <vector>

namespace quorel
{

/** Moves the controls whose parameters automation, controllers or restores have changed. Each pass takes the
    processor's dirty flags; which control belongs to a parameter is found when the picture is rebuilt, not in
    the pass. Message thread. */
class ControlSync
{
public:
    explicit ControlSync(PluginProcessor& pluginProcessor)
        : processor(pluginProcessor)
    {
        entryOf.fill(noEntry);
    }

    /** Finds the controls among the visible children of `root`, at any depth. Of several controls with the
        same parameter the first counts. */
    void rebuild(juce::Component& root);

    /** Takes all dirty flags and sets the controls of those parameters. Takes microseconds when nothing has
        changed. */
    void run();

private:
    enum class Kind
    {
        none,
        knob,
        slider,
        intBox,
        intBox2,
        toggle,
        menu,
        /** The steps of the rhythm gate, which read their parameter when they paint. */
        steps,
        /** One of a strip's keys that share a parameter: the strip sets them all. */
        stripKey
    };

    struct Entry
    {
        juce::Component::SafePointer<juce::Component> component;
        Kind kind = Kind::none;
    };

    static Kind kindOf(const juce::Component& component, int parameter);
    void collect(juce::Component& component, int eqUnit);
    void update(int parameter);
    static void show(Kind kind, juce::Component& component, float value);

    static constexpr std::int16_t noEntry = -1;

    PluginProcessor& processor;
    std::vector<Entry> entries;
    std::array<std::int16_t, numParameterSlots> entryOf{};
    /** The EQ curves, which show many parameters each. */
    std::array<juce::Component::SafePointer<juce::Component>, numEqUnits> eqScreens;
};

} // namespace quorel
