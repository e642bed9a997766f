// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/StateRestore.h"

#include "engine/PluginProcessor.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"
#include "presets/StateChunk.h"

namespace quorel
{

namespace
{
bool isEasyValue(int index) noexcept
{
    if (!isLayerParameter(index))
        return false;

    const int n = numberInLayer(index);
    return n >= layerSlot::easyValue && n < layerSlot::easyValue + numEasyParameters;
}

void copyIntoTable(PluginProcessor& processor, const StateChunk& chunk, ChangeReason reason)
{
    for (size_t i = 0; i < chunk.parameters.size(); ++i)
        if (const int index = static_cast<int>(i); isRestored(index, reason))
            processor.getParameterTable().setRaw(index, chunk.parameters[i]);
}

void loadNamedInstrument(PluginProcessor& processor, int layer)
{
    auto& instrument = processor.getLayer(layer);
    const int nameSlot = layerParameter(layer, layerSlot::pluginNameText);
    const auto name = readParamText(processor, nameSlot, slot::nameTextLength);
    instrument.clearMissing();
    bool found = false;

    for (const auto& description : processor.getKnownPlugins().getTypes())
    {
        if (description.name != name)
            continue;

        found = true;

        if (!instrument.loadPlugin(description))
        {
            writeParamText(processor, nameSlot, {}, slot::nameTextLength);
            processor.userInteraction().alert({}, "Cant load plugin " + name);
        }
    }

    if (!found)
    {
        if (instrument.hasInstance())
            instrument.unloadPlugin();

        processor.userInteraction().alert({}, "Cant find plugin " + name);
        instrument.setMissing(name);
    }
}

void restoreInstruments(PluginProcessor& processor, const StateChunk& chunk)
{
    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto& instrument = processor.getLayer(layer);

        if (chunk.layerSizes[static_cast<size_t>(layer)] != 0)
        {
            loadNamedInstrument(processor, layer);
            continue;
        }

        instrument.clearMissing();

        if (instrument.hasInstance() && !instrument.isUnloadPending())
            instrument.unloadPlugin();
    }
}

/** What can't be played here must not be lost when the sound is saved again. */
void keepStatesOfMissingInstruments(PluginProcessor& processor, const StateChunk& chunk)
{
    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto& instrument = processor.getLayer(layer);
        instrument.forgetMissingState();

        if (!instrument.hasInstance())
            instrument.keepMissingState(chunk.hostedStates[static_cast<size_t>(layer)]);
    }
}

void restoreHostedStates(PluginProcessor& processor, const StateChunk& chunk)
{
    for (int layer = 0; layer < numLayers; ++layer)
    {
        const auto& state = chunk.hostedStates[static_cast<size_t>(layer)];
        const InstanceAccess::Use plugin(processor.getLayer(layer).instanceAccess());

        if (state.isEmpty() || !plugin)
            continue;

        plugin->setStateInformation(state.getData(), static_cast<int>(state.getSize()));
        const float program = processor.readParameter(layerParameter(layer, layerSlot::presetNumber));
        plugin->setCurrentProgram(static_cast<int>(program * static_cast<float>(plugin->getNumPrograms())));
    }
}

void applyParameters(PluginProcessor& processor, const StateChunk& chunk, ChangeReason reason)
{
    for (size_t i = 0; i < chunk.parameters.size(); ++i)
    {
        const int index = static_cast<int>(i);

        // Easy values mirror the instruments, whose own states have just been restored.
        if (isEasyValue(index) || !isRestored(index, reason))
            continue;

        const float value = clampUnit(chunk.parameters[i]);
        processor.writeParameter(index, value);
        processor.getParameterTable().setLinked(index, value);
    }
}
} // namespace

void saveState(PluginProcessor& processor, juce::MemoryBlock& destination)
{
    destination.reset();
    StateChunk chunk;
    chunk.currentProgram = processor.getCurrentProgram();
    chunk.numPrograms = processor.getNumPrograms();
    chunk.presetName = processor.getPresetName();
    chunk.folderName = processor.getFolderName();

    for (int layer = 0; layer < numLayers; ++layer)
    {
        chunk.layerSizes[static_cast<size_t>(layer)] = processor.getLayer(layer).getChunkSize();
        const InstanceAccess::Use plugin(processor.getLayer(layer).instanceAccess());

        if (plugin && plugin->getNumPrograms() != 0)
            processor.writeParameter(layerParameter(layer, layerSlot::presetNumber),
                                     static_cast<float>(plugin->getCurrentProgram()) /
                                         static_cast<float>(plugin->getNumPrograms()));
    }

    chunk.parameters.reserve(numHostParameters);

    for (int i = 0; i < numHostParameters; ++i)
        chunk.parameters.push_back(processor.getParameterTable().raw(i));

    for (int layer = 0; layer < numLayers; ++layer)
    {
        const InstanceAccess::Use plugin(processor.getLayer(layer).instanceAccess());

        auto& state = chunk.hostedStates[static_cast<size_t>(layer)];
        auto& declaredSize = chunk.layerSizes[static_cast<size_t>(layer)];

        if (plugin && declaredSize != 0)
        {
            plugin->getStateInformation(state);
        }
        else if (!plugin)
        {
            const auto& missing = processor.getLayer(layer).getMissingState();
            state.replaceAll(missing.getData(), missing.getSize());
            declaredSize = static_cast<int>(state.getSize());
        }
    }

    writeStateChunk(chunk, destination);
}

bool isRestored(int index, ChangeReason reason) noexcept
{
    const bool isBinding = index >= slot::controllerMap && index < slot::controllerMap + numControllers;
    return reason == ChangeReason::project || !isBinding;
}

void restoreState(PluginProcessor& processor, const StateChunk& chunk, ChangeReason reason)
{
    copyIntoTable(processor, chunk, reason);
    const bool instrumentsKnown = processor.getKnownPlugins().getNumTypes() > 0;

    if (instrumentsKnown)
    {
        restoreInstruments(processor, chunk);
        restoreHostedStates(processor, chunk);
    }

    keepStatesOfMissingInstruments(processor, chunk);
    copyIntoTable(processor, chunk, reason);
    applyParameters(processor, chunk, reason);

    if (reason != ChangeReason::preset)
        processor.requestEditorRefresh();

    auto& editor = processor.getEditorRequests();
    processor.writeParameter(slot::view, viewOf(Page::multiControls));

    if (reason != ChangeReason::preset || editor.getPage() != Page::presetManager)
        editor.setPage(Page::multiControls);

    processor.getLayers().showAll();
}

} // namespace quorel
