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
    const auto name =
        readParamText(processor, layerParameter(layer, layerSlot::pluginNameText), slot::nameTextLength);
    bool found = false;

    for (const auto& description : processor.getKnownPlugins().getTypes())
    {
        if (description.name != name)
            continue;

        found = true;

        if (!instrument.loadPlugin(description))
            processor.userInteraction().alert({}, "Cant load plugin " + name);
    }

    if (!found)
    {
        processor.userInteraction().alert({}, "Cant find plugin " + name);
        instrument.setMissing(name);
    }
}

void restoreInstruments(PluginProcessor& processor, const StateChunk& chunk)
{
    const bool instrumentsKnown = processor.getKnownPlugins().getNumTypes() > 0;

    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto& instrument = processor.getLayer(layer);
        const bool isNamed = chunk.layerSizes[static_cast<size_t>(layer)] != 0;

        if (isNamed && instrumentsKnown)
            loadNamedInstrument(processor, layer);
        else if (isNamed && !instrument.hasInstance())
            // Kept without a word: where nothing at all is installed, the user knows.
            instrument.setMissing({});
        else if (!isNamed && instrument.getState() == LayerState::leaving)
            instrument.cancelLoad();
        else if (!isNamed && (instrumentsKnown || !instrument.hasInstance()))
            instrument.unloadPlugin();
    }
}

/** What can't be played here is kept, so that it isn't lost when the sound is saved again. */
void restoreHostedStates(PluginProcessor& processor, const StateChunk& chunk, ChangeReason reason)
{
    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto& instrument = processor.getLayer(layer);
        const auto& state = chunk.hostedStates[static_cast<size_t>(layer)];

        // A state that is taken again may be heard.
        if (reason == ChangeReason::undo && instrument.hasInstance() && instrument.stateToSave() == state)
            continue;

        instrument.giveState(state, processor.readParameter(layerParameter(layer, layerSlot::presetNumber)));
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

        processor.writeParameter(index, clampUnit(chunk.parameters[i]));
        processor.getParameterTable().setLinked(index);
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
        auto& instrument = processor.getLayer(layer);

        if (const auto program = instrument.programToSave())
            processor.writeParameter(layerParameter(layer, layerSlot::presetNumber), *program);

        auto& state = chunk.hostedStates[static_cast<size_t>(layer)];
        state = instrument.stateToSave();
        chunk.layerSizes[static_cast<size_t>(layer)] = static_cast<int>(state.getSize());
    }

    chunk.parameters.reserve(numHostParameters);

    for (int i = 0; i < numHostParameters; ++i)
        chunk.parameters.push_back(processor.getParameterTable().raw(i));

    writeStateChunk(chunk, destination);
}

bool isRestored(int index, ChangeReason reason) noexcept
{
    const bool isBinding = index >= slot::controllerMap && index < slot::controllerMap + numControllers;
    return (reason == ChangeReason::project || !isBinding) &&
           !(reason == ChangeReason::undo && index == slot::view);
}

void restoreState(PluginProcessor& processor, const StateChunk& chunk, ChangeReason reason)
{
    copyIntoTable(processor, chunk, reason);
    restoreInstruments(processor, chunk);
    restoreHostedStates(processor, chunk, reason);
    copyIntoTable(processor, chunk, reason);
    applyParameters(processor, chunk, reason);

    if (reason != ChangeReason::preset)
        processor.requestEditorRefresh();

    processor.getLayers().showAll();

    if (reason == ChangeReason::undo)
        return;

    auto& editor = processor.getEditorRequests();
    processor.writeParameter(slot::view, viewOf(Page::multiControls));

    if (reason != ChangeReason::preset || editor.getPage() != Page::presetManager)
        editor.setPage(Page::multiControls);
}

} // namespace quorel
