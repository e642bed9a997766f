// SPDX-License-Identifier: GPL-3.0-or-later
// The resets. What they write is the catalogue's; their order is their own, and it matters: a write acts at
// once, so a mapping written last pulls what the instrument holds, and an assignment written after its knob
// still sees the old target.
#include "engine/PluginProcessor.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterText.h"

namespace quorel
{

namespace
{
struct Run
{
    int first;
    int count;
};

/** Order within a layer, by numbers. The channel comes twice. */
constexpr std::array<Run, 9> layerOrder{{
    {layerSlot::volume, layerSlot::midiChannel - layerSlot::volume + 1},
    {layerSlot::blockProgramChange, layerSlot::userController2 - layerSlot::blockProgramChange + 1},
    {layerSlot::keyMin, layerSlot::transpose - layerSlot::keyMin + 1},
    {layerSlot::zoneKeys, layerSlot::easyValue - layerSlot::zoneKeys},
    {layerSlot::eq, layerSlot::eqEnd - layerSlot::eq + 1},
    {layerSlot::outputs, 1 + numSends},
    {layerSlot::sendPreFader, numSends},
    {layerSlot::midiChannel, 1},
    {layerSlot::drumPage, 2},
}};

/** Writes the defaults of `count` slots, but for those that a reset keeps. */
void writeDefaults(ParameterAccess& parameters, int first, int count = 1)
{
    for (int index = first; index < first + count; ++index)
        if (!parameterInfo(index).isKeptByReset)
            parameters.writeParameter(index, parameterDefault(index));
}

/** Spaces in all slots, in the first one too; then that one's default, which ends the text. */
void resetText(ParameterAccess& parameters, int first)
{
    for (int i = 0; i < slot::nameTextLength; ++i)
        parameters.writeParameter(first + i, textFiller);

    writeDefaults(parameters, first);
}

/** The count is the name's own length, so its last character is left out; a loaded preset brings the whole
    name. */
void resetToName(ParameterAccess& parameters, int first, const juce::String& name)
{
    resetText(parameters, first);

    if (name.isNotEmpty())
        writeParamText(parameters, first, name, juce::jmin(slot::nameTextLength, name.length()));
}
} // namespace

void PluginProcessor::resetNames()
{
    resetToName(*this, slot::presetNameText, getPresetName());
    resetToName(*this, slot::folderNameText, getFolderName());
}

void PluginProcessor::resetLayer(int layer)
{
    getLayer(layer).clearMissing();
    resetText(*this, layerParameter(layer, layerSlot::pluginNameText));

    for (const auto& run : layerOrder)
        writeDefaults(*this, layerParameter(layer, run.first), run.count);

    writeDefaults(*this, layerParameter(layer, layerSlot::easyMapping), numEasyParameters);
}

void PluginProcessor::resetAllParameters()
{
    for (const int index : {slot::masterVolume, slot::masterMute, slot::view, slot::editedOrOriginal})
        writeDefaults(*this, index);

    session.markSaved();
    writeDefaults(*this, slot::freeControllerBlock, numLayers);
    resetNames();

    for (int layer = 0; layer < numLayers; ++layer)
        resetLayer(layer);

    for (int k = 0; k < numFxBlocks; ++k)
        for (const int first : {slot::fxOn, slot::fxType})
            writeDefaults(*this, first + k);

    writeDefaults(*this, slot::masterEq, slot::masterEqEnd - slot::masterEq + 1);

    for (int k = 0; k < numFxBlocks; ++k)
        for (const int first : {slot::fxMix, slot::fxPan, slot::fxVolume})
            writeDefaults(*this, first + k);

    writeDefaults(*this, slot::multiFader, numMultiFaders);

    for (int t = 0; t < numMultiTargets; ++t)
    {
        // The knob twice: with a damaged assignment its first write may move any parameter, itself included.
        for (const int first : {slot::multiKnob, slot::multiMemory, slot::multiKnob, slot::multiAssignment})
            writeDefaults(*this, first + t);

        multi.forget(t);
    }

    writeDefaults(*this, slot::multiName, numMultiFaders * slot::multiNameLength);
}

} // namespace quorel
