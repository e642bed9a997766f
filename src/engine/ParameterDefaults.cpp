// SPDX-License-Identifier: GPL-3.0-or-later
// The resets. Their order matters: a write acts at once, so a mapping written last pulls what the instrument
// holds, and an assignment written after its knob still sees the old target.
#include "engine/PluginProcessor.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"

namespace quorel
{

namespace
{
constexpr float unityFader = 0.63f;
constexpr float lowestKey = static_cast<float>(24.0 / 127.0);
constexpr float lowestVelocity = static_cast<float>(1.0 / 127.0);

/** The EQ's defaults from `base`. The master's reset leaves the on switches of bands and filters alone. */
void resetEq(ParameterAccess& parameters, int base, bool withSwitches)
{
    constexpr std::array<float, numEqBands> frequencies{0.25f, 0.5f, 0.75f};
    parameters.writeParameter(base + eqSlot::on, 0.0f);

    for (int i = 0; i < numEqBands; ++i)
    {
        const int band = base + eqSlot::bands + eqSlot::slotsPerBand * i;

        if (withSwitches)
            parameters.writeParameter(band + eqSlot::bandOn, 0.0f);

        parameters.writeParameter(band + eqSlot::bandFreq, frequencies[static_cast<size_t>(i)]);
        parameters.writeParameter(band + eqSlot::bandWidth, 0.2f);
        parameters.writeParameter(band + eqSlot::bandGain, 0.5f);
    }

    if (withSwitches)
        parameters.writeParameter(base + eqSlot::lowPassOn, 0.0f);

    parameters.writeParameter(base + eqSlot::lowPassFreq, 1.0f);

    if (withSwitches)
        parameters.writeParameter(base + eqSlot::highPassOn, 0.0f);

    parameters.writeParameter(base + eqSlot::highPassFreq, 0.0f);
}

void resetTextField(ParameterAccess& parameters, int first, const juce::String& text)
{
    for (int i = 0; i < slot::nameTextLength; ++i)
        parameters.writeParameter(first + i, textFiller);

    parameters.writeParameter(first, 0.0f);

    // The count is the text's own length, so its last character is left out; a loaded preset brings the whole
    // name.
    if (text.isNotEmpty())
        writeParamText(parameters, first, text, juce::jmin(slot::nameTextLength, text.length()));
}
} // namespace

void PluginProcessor::resetNames()
{
    resetTextField(*this, slot::presetNameText, getPresetName());
    resetTextField(*this, slot::folderNameText, getFolderName());
}

void PluginProcessor::resetLayer(int layer)
{
    layerNeedsAttention[static_cast<size_t>(layer)].store(false);
    getLayer(layer).forgetMissingState();
    const auto write = [&](int n, float value) { setParameter(layerParameter(layer, n), value); };

    for (int i = 0; i < slot::nameTextLength; ++i)
        write(layerSlot::pluginNameText + i, textFiller);

    write(layerSlot::pluginNameText, 0.0f);
    write(layerSlot::volume, unityFader);
    write(layerSlot::pan, 0.5f);
    write(layerSlot::solo, 0.0f);
    write(layerSlot::on, 1.0f);
    write(layerSlot::midiChannel, 0.0f);

    for (int n = layerSlot::blockProgramChange; n <= layerSlot::blockUserController2; ++n)
        write(n, 0.0f);

    write(layerSlot::userController1, 0.3046875f);
    write(layerSlot::userController2, 0.328125f);
    write(layerSlot::keyMin, lowestKey);
    write(layerSlot::keyMax, 1.0f);
    write(layerSlot::velocityMin, lowestVelocity);
    write(layerSlot::velocityMax, 1.0f);
    write(layerSlot::transpose, 0.5f);

    for (int zone = 0; zone < numZones; ++zone)
    {
        write(layerSlot::zoneKeys + 2 * zone, lowestKey);
        write(layerSlot::zoneKeys + 2 * zone + 1, 1.0f);
    }

    for (int zone = 0; zone < numZones; ++zone)
    {
        write(layerSlot::zoneVelocities + 2 * zone, lowestVelocity);
        write(layerSlot::zoneVelocities + 2 * zone + 1, 1.0f);
    }

    for (int zone = 0; zone < numZones; ++zone)
        write(layerSlot::zoneOn + zone, 1.0f);

    resetEq(*this, layerParameter(layer, layerSlot::eq), true);
    write(layerSlot::outputs, 0.0f);

    for (int send = 0; send < numSends; ++send)
        write(layerSlot::sendLevel + send, 0.0f);

    for (int send = 0; send < numSends; ++send)
        write(layerSlot::sendPreFader + send, 0.0f);

    write(layerSlot::midiChannel, 0.0f);
    write(layerSlot::drumPage, 0.0f);
    write(layerSlot::drumMode, 0.0f);

    for (int easy = 0; easy < numEasyParameters; ++easy)
        write(layerSlot::easyMapping + easy, encodeParamInt(easy + 1));
}

void PluginProcessor::resetAllParameters()
{
    setParameter(slot::masterVolume, unityFader);
    setParameter(slot::masterMute, 0.0f);
    setParameter(slot::view, 0.3f);
    setParameter(slot::editedOrOriginal, 0.0f);
    edited.store(false);

    for (int layer = 0; layer < numLayers; ++layer)
        setParameter(slot::freeControllerBlock + layer, 1.0f);

    resetNames();

    for (int layer = 0; layer < numLayers; ++layer)
        resetLayer(layer);

    for (int k = 0; k < numFxBlocks; ++k)
    {
        setParameter(slot::fxOn + k, 0.0f);
        setParameter(slot::fxType + k, 0.0f);
    }

    resetEq(*this, slot::masterEq, false);

    for (int k = 0; k < numFxBlocks; ++k)
    {
        setParameter(slot::fxMix + k, 1.0f);
        setParameter(slot::fxPan + k, 0.5f);
        setParameter(slot::fxVolume + k, 0.75f);
    }

    for (int fader = 0; fader < numMultiFaders; ++fader)
        setParameter(slot::multiFader + fader, 0.0f);

    for (int t = 0; t < numMultiTargets; ++t)
    {
        setParameter(slot::multiKnob + t, 0.5f);
        setParameter(slot::multiMemory + t, 0.5f);
        setParameter(slot::multiKnob + t, 0.5f);
        setParameter(slot::multiAssignment + t, 0.0f);
        multi.forget(t);
    }

    for (int fader = 0; fader < numMultiFaders; ++fader)
        writeParamText(*this, slot::multiName + slot::multiNameLength * fader,
                       "Multicontrol " + juce::String(fader + 1), slot::multiNameLength - 1);
}

} // namespace quorel
