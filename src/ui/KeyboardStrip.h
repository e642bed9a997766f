// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <vector>

namespace quorel
{

/** A small keyboard of all 128 notes: light where a layer plays them, amber while they are held. What has changed
    is repainted key by key. Message thread. */
class KeyboardStrip : public juce::Component
{
public:
    /** Where the notes of a layer come from. */
    enum class Source
    {
        range,
        zones
    };

    KeyboardStrip(juce::Rectangle<int> bounds, int layerIndex, Source noteSource,
                  PluginProcessor& pluginProcessor);

    /** Takes what the processor says now. Called in each pass of the editor. */
    void follow();

    void paint(juce::Graphics& g) override;

private:
    static constexpr int numNotes = 128;

    struct Key
    {
        bool played = false;
        bool held = false;

        bool operator!=(const Key& other) const { return played != other.played || held != other.held; }
    };

    void readKeys();
    bool readParameters();
    juce::Rectangle<int> boundsOf(int note) const;
    void paintKey(juce::Graphics& g, int note) const;

    PluginProcessor& processor;
    const int layer;
    /** Of every range: its lowest key, its highest one, and its switch or 0. */
    std::vector<std::array<int, 3>> parameters;
    std::vector<float> values;
    std::array<std::uint64_t, 2> heldNotes{};
    std::array<Key, numNotes> keys{};

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(KeyboardStrip)
};

} // namespace quorel
