// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ParameterDisplay.h"

#include "parameters/FxParameterText.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterCodings.h"

#include <cmath>

namespace quorel
{

namespace
{
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

juce::String frequencyText(float value)
{
    return juce::String(static_cast<int>(std::exp2(value * 10.0f) * 20.0f)) + " hz";
}

/** Two sides, of which one always reads 100: "100D/40W". At the centre both do. */
juce::String crossfadeText(float value, const char* first, const char* second)
{
    const juce::String faded =
        fixedText(static_cast<double>((value >= 0.5f ? 1.0f - value : value) * 200.0f), 0);
    return value >= 0.5f ? faded + first + "/100" + second
                         : juce::String("100") + first + "/" + faded + second;
}

juce::String effectText(int index, const ParameterTextSources& sources)
{
    const int block = index % numFxBlocks;
    FxParameterValues values{};

    for (int j = 0; j < numFxParameters; ++j)
        values[static_cast<size_t>(j)] = sources.value(fxParameter(block, j));

    return fxParameterText(fxTypeFromParameter(sources.value(slot::fxType + block)),
                           (index - slot::fxParameters) / numFxBlocks, values);
}

juce::String textByRule(const ParameterInfo& info, int index, const ParameterTextSources& sources)
{
    const float value = sources.value(index);
    const auto integer = [&] { return juce::String(paramToInt(value, info.coding.low, info.coding.high)); };

    switch (info.text)
    {
    case TextRule::none:
        return {};
    case TextRule::onOff:
        return value > 0.0f ? "On" : "Off";
    case TextRule::decibels:
        return gainToText(faderGain(index, sources)) + " db";
    case TextRule::hertz:
        return frequencyText(value);
    case TextRule::percent:
        return juce::String(percentOf(value)) + " %";
    case TextRule::centred:
        return juce::String(centredPercent(value));
    case TextRule::centredPercent:
        return juce::String(centredPercent(value)) + " %";
    case TextRule::integer:
        return integer();
    case TextRule::integerDecibels:
        return integer() + " db";
    case TextRule::steps:
        return juce::String(static_cast<int>(value * static_cast<float>(info.coding.high)));
    case TextRule::midiChannel:
        // Not truncated as the channel is: between two channels the text shows where the value stands.
        return shortText(static_cast<double>(value) * info.coding.high);
    case TextRule::view:
        return viewText(value);
    case TextRule::compared:
        return value > 0.0f ? "Edited" : "Original";
    case TextRule::effectType:
        return fxTypes[static_cast<size_t>(fxTypeFromParameter(value))].name;
    case TextRule::dryWet:
        return crossfadeText(value, "D", "W");
    case TextRule::leftRight:
        return crossfadeText(value, "L", "R");
    case TextRule::effect:
        return effectText(index, sources);
    case TextRule::easyTarget:
        return sources.easyText(layerOf(index), numberInLayer(index) - layerSlot::easyValue);
    }

    return {};
}
} // namespace

juce::String parameterText(int index, const ParameterTextSources& sources)
{
    if (index < 0 || index >= numHostParameters)
        return {};

    const auto& info = parameterInfo(index);
    return info.text == TextRule::none ? juce::String() : textByRule(info, index, sources);
}

float faderGain(int index, const ParameterTextSources& sources)
{
    const bool muted = index == slot::masterVolume && sources.value(slot::masterMute) > 0.5f;
    return muted ? 0.0f : cubicGain(sources.value(index));
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

int percentOf(float value) noexcept
{
    return static_cast<int>(value * 100.0f);
}

int centredPercent(float value) noexcept
{
    return static_cast<int>((value - 0.5f) * 200.0f);
}

} // namespace quorel
