// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ParameterDisplay.h"

#include "parameters/FxParameterText.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterLayout.h"

#include <cmath>

namespace quorel
{

namespace
{
constexpr bool isWithin(int number, int first, int count) noexcept
{
    return number >= first && number < first + count;
}

juce::String onOffText(float value)
{
    return value > 0.0f ? "On" : "Off";
}

juce::String faderText(float value)
{
    return gainToText(cubicGain(value)) + " db";
}

juce::String viewText(float value)
{
    switch (static_cast<int>(value * 10.0f))
    {
    case 0:
        return "Layers";
    case 1:
        return "Master FX/EQ";
    case 2:
        return "Preset Manager";
    default:
        return {};
    }
}

juce::String globalText(int index, const ParameterTextSources& sources)
{
    switch (index)
    {
    case slot::masterVolume:
        // As the master plays: a muted one is silent wherever its fader stands.
        return faderText(sources.value(slot::masterMute) > 0.5f ? 0.0f : sources.value(index));
    case slot::view:
        return viewText(sources.value(index));
    case slot::editedOrOriginal:
        return sources.value(index) > 0.0f ? "Edited" : "Original";
    default:
        return {};
    }
}

juce::String eqText(int offset, float value)
{
    if (offset == eqSlot::on || offset == eqSlot::lowPassOn || offset == eqSlot::highPassOn)
        return onOffText(value);

    const bool isFilterFrequency = offset == eqSlot::lowPassFreq || offset == eqSlot::highPassFreq;
    const int inBand = isFilterFrequency ? eqSlot::bandFreq : (offset - eqSlot::bands) % eqSlot::slotsPerBand;

    switch (inBand)
    {
    case eqSlot::bandOn:
        return onOffText(value);
    case eqSlot::bandFreq:
        return juce::String(static_cast<int>(std::exp2(value * 10.0f) * 20.0f)) + " hz";
    case eqSlot::bandWidth:
        return juce::String(static_cast<int>(value * 100.0f)) + " %";
    default:
        return juce::String(paramToInt(value, -20, 20)) + " db";
    }
}

juce::String layerText(int layer, int n, const ParameterTextSources& sources)
{
    const float value = sources.value(layerParameter(layer, n));

    if (n == layerSlot::volume || isWithin(n, layerSlot::sendLevel, numSends))
        return faderText(value);
    if (n == layerSlot::pan)
        return juce::String(centredPercent(value));
    if (n == layerSlot::solo || n == layerSlot::on)
        return onOffText(value);
    // Not truncated as the channel is: between two channels the text shows where the value stands.
    if (n == layerSlot::midiChannel)
        return shortText(static_cast<double>(value) * 16.0);
    if (n >= layerSlot::blockProgramChange && n <= layerSlot::blockUserController2)
        return onOffText(value);
    if (n == layerSlot::userController1 || n == layerSlot::userController2)
        return juce::String(static_cast<int>(value * 128.0f));
    if (n == layerSlot::transpose)
        return juce::String(paramToInt(value, -24, 24));
    if (isWithin(n, layerSlot::easyValue, numEasyParameters))
        return sources.easyText(layer, n - layerSlot::easyValue);
    if (n >= layerSlot::eq && n <= layerSlot::eqEnd)
        return eqText(n - layerSlot::eq, value);

    return {};
}

/** Two sides of which one keeps its 100: "100D/40W". The centre shows both at 100. */
juce::String crossfadeText(float value, const char* first, const char* second)
{
    const juce::String faded =
        fixedText(static_cast<double>((value >= 0.5f ? 1.0f - value : value) * 200.0f), 0);
    return value >= 0.5f ? faded + first + "/100" + second
                         : juce::String("100") + first + "/" + faded + second;
}

juce::String fxText(int index, const ParameterTextSources& sources)
{
    const int block = index % numFxBlocks;
    const float value = sources.value(index);

    if (index < slot::fxType)
        return onOffText(value);
    if (index < slot::fxVolume)
        return fxTypes[static_cast<size_t>(fxTypeFromParameter(value))].name;
    if (index < slot::fxMix)
        return juce::String(paramToInt(value, -60, 20)) + " db";
    if (index < slot::fxPan)
        return crossfadeText(value, "D", "W");
    if (index < slot::fxParameters)
        return crossfadeText(value, "L", "R");

    FxParameterValues values{};

    for (int j = 0; j < numFxParameters; ++j)
        values[static_cast<size_t>(j)] = sources.value(fxParameter(block, j));

    return fxParameterText(fxTypeFromParameter(sources.value(slot::fxType + block)),
                           (index - slot::fxParameters) / numFxBlocks, values);
}
} // namespace

juce::String parameterText(int index, const ParameterTextSources& sources)
{
    if (index < 0 || index >= numHostParameters)
        return {};

    if (index < slot::firstLayer)
        return globalText(index, sources);

    if (isLayerParameter(index))
        return layerText(layerOf(index), numberInLayer(index), sources);

    if (index >= slot::fxOn && index < fxParameter(0, numFxParameters))
        return fxText(index, sources);

    if (isWithin(index, slot::multiFader, numMultiFaders))
        return juce::String(static_cast<int>(sources.value(index) * 100.0f)) + " %";

    if (isWithin(index, slot::multiKnob, numMultiTargets))
        return juce::String(centredPercent(sources.value(index))) + " %";

    return {};
}

juce::String gainToText(float linearGain)
{
    const float decibels = linearGain > 0.00001f ? 20.0f * std::log10(linearGain) : -100.0f;

    // The floor lies at the limit itself, so silence reads "-100".
    if (decibels < -100.0f)
        return "-inf";

    const juce::String number(static_cast<int>(decibels));
    return decibels >= 1.0f ? "+" + number : number;
}

int centredPercent(float value) noexcept
{
    return static_cast<int>((value - 0.5f) * 200.0f);
}

} // namespace quorel
