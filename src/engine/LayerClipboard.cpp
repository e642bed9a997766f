// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LayerClipboard.h"

#include "engine/ChangeGuard.h"
#include "engine/MultiTargetMove.h"
#include "hosting/HostedParameters.h"
#include "hosting/HostedState.h"
#include "hosting/InstrumentTable.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterText.h"

#include <optional>

namespace quorel
{

namespace
{
constexpr int firstNumber = layerSlot::pluginNameText;
/** The last slot of the fourth layer belongs to none. */
constexpr int numNumbers = slot::lastLayer - layerParameter(numLayers - 1, firstNumber) + 1;

struct LayerContents
{
    /** Of the layer's numbers from `firstNumber`, as they are stored. */
    std::array<float, static_cast<size_t>(numNumbers)> values{};
    /** Empty for none. */
    juce::String instrument;
    juce::MemoryBlock state;
    juce::String layout;

    float& value(int n) { return values[static_cast<size_t>(n - firstNumber)]; }
};

std::optional<LayerContents>& copied()
{
    static std::optional<LayerContents> contents;
    return contents;
}

constexpr bool isEasyValue(int n) noexcept
{
    return isWithin(n, layerSlot::easyValue, numEasyParameters);
}

constexpr bool isEasyMapping(int n) noexcept
{
    return isWithin(n, layerSlot::easyMapping, numEasyParameters);
}

juce::MemoryBlock stateOf(VirtualInstrument& instrument)
{
    // A sound keeps the states of the family's instruments alone.
    if (instrument.getState() != LayerState::playing || findInstrument(instrument.getPluginName()) != nullptr)
        return instrument.stateToSave();

    const InstanceAccess::Use plugin(instrument.instanceAccess());
    const juce::ScopedLock lock(instrumentLock(*plugin.get()));
    return readHostedState(*plugin.get());
}

LayerContents contentsOf(PluginProcessor& processor, int layer)
{
    auto& instrument = processor.getLayer(layer);
    LayerContents contents;
    contents.instrument =
        readParamText(processor, layerParameter(layer, layerSlot::pluginNameText), slot::nameTextLength);
    contents.state = stateOf(instrument);
    contents.layout = instrument.layoutName;

    for (int n = firstNumber; n < firstNumber + numNumbers; ++n)
        contents.value(n) = processor.getParameterTable().raw(layerParameter(layer, n));

    if (const auto program = instrument.programToSave())
        contents.value(layerSlot::presetNumber) = *program;

    return contents;
}

void storeRaw(PluginProcessor& processor, int layer, LayerContents& contents)
{
    for (int n = firstNumber; n < firstNumber + numNumbers; ++n)
        processor.getParameterTable().setRaw(layerParameter(layer, n), contents.value(n));
}

/** With all that follows from the values. The host hears of them soon after. */
void applyValues(PluginProcessor& processor, int layer, LayerContents& contents)
{
    auto& table = processor.getParameterTable();
    storeRaw(processor, layer, contents);

    for (int n = firstNumber; n < firstNumber + numNumbers; ++n)
    {
        const int index = layerParameter(layer, n);

        // The instrument has been given the Easy values with its state, and is asked for them with the mapping.
        if (isEasyValue(n))
            table.markUntold(index);
        else
            processor.writeFollowingParameter(index, contents.value(n));

        processor.multiControls().rebase(index, processor.readParameter(index));
    }
}

void bringInstrument(PluginProcessor& processor, int layer, const LayerContents& contents)
{
    auto& instrument = processor.getLayer(layer);

    if (contents.instrument.isEmpty())
    {
        instrument.unloadPlugin();
        return;
    }

    for (const auto& description : processor.getKnownPlugins().getTypes())
        if (description.name == contents.instrument)
        {
            // Of what can't be loaded the user has been told.
            instrument.loadPlugin(description);
            return;
        }

    instrument.setMissing(contents.instrument);
}

void put(PluginProcessor& processor, int layer, LayerContents contents)
{
    auto& instrument = processor.getLayer(layer);
    bringInstrument(processor, layer, contents);
    // Before the state is given: writes to the mapping ask the instrument for the values that it then has.
    storeRaw(processor, layer, contents);
    instrument.giveState(contents.state, contents.value(layerSlot::presetNumber));
    applyValues(processor, layer, contents);
    instrument.layoutName = contents.layout;
    instrument.needsDisplayUpdate.store(true);
}

void finish(PluginProcessor& processor)
{
    processor.getSession().markEdited();
    processor.requestEditorRefresh();
}

bool replace(PluginProcessor& processor, int layer, const LayerContents& contents)
{
    processor.getUndo().beforeSoundChange("paste layer");
    processor.multiControls().clearEasyTargetsOf(layer);
    put(processor, layer, contents);
    finish(processor);
    return true;
}
} // namespace

void copyLayer(PluginProcessor& processor, int layer)
{
    copied() = contentsOf(processor, layer);
}

bool hasCopiedLayer() noexcept
{
    return copied().has_value();
}

bool pasteLayer(PluginProcessor& processor, int layer)
{
    return hasCopiedLayer() && !refusesForChange(processor) && replace(processor, layer, *copied());
}

bool copyLayerTo(PluginProcessor& processor, int from, int to)
{
    return !refusesForChange(processor) && replace(processor, to, contentsOf(processor, from));
}

bool swapLayers(PluginProcessor& processor, int first, int second)
{
    if (refusesForChange(processor))
        return false;

    processor.getUndo().beforeSoundChange("swap layers");

    {
        const MultiTargetMove knobs(processor,
                                    [=](int parameter)
                                    {
                                        const int layer = layerOf(parameter);
                                        return layer == first
                                                   ? layerParameter(second, numberInLayer(parameter))
                                               : layer == second
                                                   ? layerParameter(first, numberInLayer(parameter))
                                                   : parameter;
                                    });
        auto ofFirst = contentsOf(processor, first);
        put(processor, first, contentsOf(processor, second));
        put(processor, second, std::move(ofFirst));
    }

    finish(processor);
    return true;
}

bool resetLayerSettings(PluginProcessor& processor, int layer)
{
    if (refusesForChange(processor))
        return false;

    processor.getUndo().beforeSoundChange("reset layer");
    auto& instrument = processor.getLayer(layer);
    auto contents = contentsOf(processor, layer);

    for (int n = layerSlot::volume; n < firstNumber + numNumbers; ++n)
    {
        const auto& info = parameterInfo(layerParameter(layer, n));
        const bool ofInstrument = isEasyMapping(n) || n == layerSlot::drumMode || n == layerSlot::drumPage;

        if (!info.isKeptByReset && !ofInstrument)
            contents.value(n) = info.defaultValue;
    }

    processor.multiControls().clearEasyTargetsOf(layer);
    applyValues(processor, layer, contents);
    instrument.resetEasyMapping();
    finish(processor);
    return true;
}

} // namespace quorel
