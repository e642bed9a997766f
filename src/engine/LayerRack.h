// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/AudioGraph.h"
#include "hosting/VirtualInstrument.h"

#include <array>
#include <memory>
#include <vector>

namespace quorel
{

class PluginProcessor;
struct StateChunk;

/** The four layers, and what happens to all of their instruments at once. Message thread, but as stated. */
class LayerRack
{
public:
    explicit LayerRack(PluginProcessor& pluginProcessor);
    ~LayerRack();

    /** `layer` is 0 to 3. Any thread. */
    VirtualInstrument& operator[](int layer) { return *layers[static_cast<size_t>(layer)]; }

    AudioGraph::Layers forGraph() const;

    /** Host thread, while no block runs. */
    void prepare(double rate, int blockSize);

    /** The plug-in menu's choice: resets the layer, then loads the instrument in three timer ticks, or
        empties the layer for null. Choosing what is loaded already, or about to leave, keeps it and its
        state. */
    void choose(int layer, const juce::PluginDescription* description);

    /** Another of the instrument's programs, or banks, by its number in the menu, from 1. */
    void chooseProgram(int layer, int id);
    void chooseBank(int layer, int id);

    /** Forgets requested loads and closes the instruments' windows. True if one was open. */
    bool closeWindows();

    /** Forgets requested loads and asks every instrument to unload. True if a window was open: it needs time
        to go away. */
    bool requestUnload();

    /** The layers whose instrument is, or is about to be, another one than this sound names. */
    std::vector<int> layersUnlike(const StateChunk& chunk);

    /** Empties all layers at once, with whatever was on its way to them; windows close. */
    void unload();

    /** The picture of every layer is to be made anew. */
    void showAll();

    /** Destroys the layers, the last one first, while what they write to is still there. */
    void destroy();

private:
    void writePluginName(int layer, const juce::String& name);

    PluginProcessor& processor;
    std::array<std::unique_ptr<VirtualInstrument>, numLayers> layers;
};

} // namespace quorel
