// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LayerRack.h"

#include "engine/PluginProcessor.h"
#include "parameters/ParameterText.h"
#include "presets/StoredNames.h"

namespace quorel
{

LayerRack::LayerRack(PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
{
    for (int layer = 0; layer < numLayers; ++layer)
        layers[static_cast<size_t>(layer)] = std::make_unique<VirtualInstrument>(processor, layer);
}

LayerRack::~LayerRack()
{
    destroy();
}

void LayerRack::destroy()
{
    for (size_t layer = layers.size(); layer-- > 0;)
        layers[layer] = nullptr;
}

AudioGraph::Layers LayerRack::forGraph() const
{
    AudioGraph::Layers pointers{};

    for (size_t layer = 0; layer < layers.size(); ++layer)
        pointers[layer] = layers[layer].get();

    return pointers;
}

void LayerRack::prepare(double rate, int blockSize)
{
    for (auto& layer : layers)
        layer->prepare(rate, blockSize);
}

void LayerRack::writePluginName(int layer, const juce::String& name)
{
    writeParamText(processor, layerParameter(layer, layerSlot::pluginNameText), name, slot::nameTextLength);
}

void LayerRack::choose(int layer, const juce::PluginDescription* description)
{
    auto& instrument = (*this)[layer];
    processor.getUndo().beforeSoundChange(description != nullptr ? description->name : "no plugin");
    processor.resetLayer(layer);

    if (description == nullptr)
    {
        instrument.clearMissing();
        instrument.requestUnload();
        processor.setParameter(layerParameter(layer, layerSlot::pluginNameText), 0.0f);
    }
    else
    {
        instrument.requestLoad(*description);
        // Also for one that stays: the reset has emptied its name.
        writePluginName(layer, description->name);
    }

    processor.getSession().markEdited();
    processor.requestEditorRefresh();
}

void LayerRack::chooseProgram(int layer, int id)
{
    if (!(*this)[layer].hasInstance())
        return;

    processor.getUndo().beforeSoundChange("program");
    (*this)[layer].chooseProgram(id);
    processor.getSession().markEdited();
}

void LayerRack::chooseBank(int layer, int id)
{
    if (!(*this)[layer].hasInstance())
        return;

    processor.getUndo().beforeSoundChange("bank");
    (*this)[layer].chooseBank(id);
    processor.getSession().markEdited();
}

std::vector<int> LayerRack::layersUnlike(const StateChunk& chunk)
{
    std::vector<int> unlike;

    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto& instrument = (*this)[layer];
        const auto wanted = chunk.layerSizes[static_cast<size_t>(layer)] != 0 ? storedInstrument(chunk, layer)
                                                                              : juce::String();
        const bool isEmpty = instrument.getState() == LayerState::empty;
        const bool plays = instrument.getState() == LayerState::playing;

        if (!(wanted.isEmpty() ? isEmpty : plays && instrument.getPluginName() == wanted))
            unlike.push_back(layer);
    }

    return unlike;
}

bool LayerRack::closeWindows()
{
    bool windowWasOpen = false;

    for (auto& layer : layers)
    {
        layer->cancelLoad();

        if (layer->isWindowShowing())
        {
            layer->closeWindow();
            windowWasOpen = true;
        }
    }

    return windowWasOpen;
}

bool LayerRack::requestUnload()
{
    bool windowWasOpen = false;

    for (auto& layer : layers)
        windowWasOpen = layer->requestUnload() || windowWasOpen;

    return windowWasOpen;
}

void LayerRack::unload()
{
    for (auto& layer : layers)
        layer->unloadPlugin();

    showAll();
}

void LayerRack::showAll()
{
    for (auto& layer : layers)
        layer->needsDisplayUpdate.store(true);
}

} // namespace quorel
