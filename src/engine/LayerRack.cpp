// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LayerRack.h"

#include "engine/PluginProcessor.h"
#include "parameters/ParameterText.h"

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
    processor.resetLayer(layer);
    auto& instrument = (*this)[layer];

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

    processor.requestEditorRefresh();
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
