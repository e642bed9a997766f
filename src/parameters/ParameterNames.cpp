// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ParameterNames.h"

#include "effects/FxTypes.h"
#include "parameters/ParameterLayout.h"

#include <array>

namespace quorel
{

namespace
{
struct NamedNumber
{
    int n;
    const char* name;
};

constexpr std::array<NamedNumber, 43> layerNames{{
    {232, "Volume"},
    {233, "Pan"},
    {234, "Solo"},
    {235, "On/Off"},
    {236, "Midi Channel"},
    {237, "Outputs"},
    {238, "FX1 Send"},
    {239, "FX2 Send"},
    {240, "FX3 Send"},
    {241, "FX4 Send"},
    {242, "Preset Number"},
    {243, "ProgramChange"},
    {244, "BankSelect"},
    {245, "PitchWheel"},
    {246, "ModWheel"},
    {247, "AfterTouch"},
    {248, "Sustain Pedal"},
    {249, "User Controller 1"},
    {250, "User Controller 2"},
    {251, "Midi CC 1"},
    {252, "Midi CC 2"},
    {260, "Keyboard Range Min"},
    {261, "Keyboard Range Max"},
    {262, "Velocity Range Min"},
    {263, "Velocity Range Max"},
    {264, "Transpose"},
    {380, "EQ On / Off"},
    {381, "EQ Band 1 On / Off"},
    {382, "EQ Band 1 Freq"},
    {383, "EQ Band 1 BW"},
    {384, "EQ Band 1 Gain"},
    {385, "EQ Band 2 On / Off"},
    {386, "EQ Band 2 Freq"},
    {387, "EQ Band 2 BW"},
    {388, "EQ Band 2 Gain"},
    {389, "EQ Band 3 On / Off"},
    {390, "EQ Band 3 Freq"},
    {391, "EQ Band 3 BW"},
    {392, "EQ Band 3 Gain"},
    {393, "EQ LP Filter On / Off"},
    {394, "EQ LP Filter Freq"},
    {395, "EQ HP Filter On / Off"},
    {396, "EQ HP Filter Freq"},
}};

juce::String globalName(int index)
{
    switch (index)
    {
    case 0:
        return {};
    case slot::masterVolume:
        return "Master Volume";
    case slot::view:
        return "View";
    case slot::editedOrOriginal:
        return "Edited/Original preset";
    default:
        break;
    }

    if (index >= slot::freeControllerBlock && index < slot::freeControllerBlock + numLayers)
        return "Block free midi controllers layer " + juce::String(index - slot::freeControllerBlock + 1);

    return juce::String(index);
}

juce::String fxName(int index, const ParameterNameSources& sources)
{
    const int block = index % numFxBlocks;
    const auto prefix = "FX" + juce::String(block + 1);

    if (index < slot::fxType)
        return prefix + "On / Off";
    if (index < slot::fxVolume)
        return prefix + " Type";
    if (index < slot::fxMix)
        return prefix + " Volume";
    if (index < slot::fxPan)
        return prefix + " Mix";
    if (index < slot::fxParameters)
        return prefix + " Pan";

    return fxParameterLabel(sources.fxType(block) * numFxParameters +
                            (index - slot::fxParameters) / numFxBlocks);
}
} // namespace

juce::String layerParameterName(int n)
{
    for (const auto& entry : layerNames)
        if (entry.n == n)
            return entry.name;

    return juce::String(n);
}

juce::String parameterName(int index, const ParameterNameSources& sources)
{
    if (index < 0 || index >= numHostParameters)
        return {};

    if (index < slot::firstLayer)
        return globalName(index);

    if (isLayerParameter(index))
    {
        const int layer = layerOf(index);
        const int n = numberInLayer(index);
        const int easy = n - layerSlot::easyValue;

        if (easy >= 0 && easy < numEasyParameters)
            return "Layer" + juce::String(layer + 1) + " " + sources.easyName(layer, easy);

        return "Layer" + juce::String(layer + 1) + " " + layerParameterName(n);
    }

    if (index >= slot::fxOn && index < fxParameter(0, numFxParameters))
        return fxName(index, sources);

    if (index >= slot::multiFader && index < slot::multiFader + numMultiFaders)
        return "Multi Fader " + juce::String(index - slot::multiFader + 1);

    if (index >= slot::multiKnob && index < slot::multiKnob + numMultiTargets)
    {
        const int target = index - slot::multiKnob;
        return "Multi Knob " + juce::String(target / 4 + 1) + "/" + juce::String(target % 4 + 1);
    }

    return {};
}

} // namespace quorel
