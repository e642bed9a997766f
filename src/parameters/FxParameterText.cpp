// SPDX-License-Identifier: GPL-3.0-or-later
// Each rule follows the mapping of the type's update function; products are taken in float as there, so that text
// and sound change over at the same position of a knob.
#include "parameters/FxParameterText.h"

#include "effects/EffectMath.h"
#include "effects/SyncTables.h"

#include <charconv>
#include <cmath>

namespace quorel
{

namespace
{
double powerOfTwo(float exponent)
{
    return std::exp2(static_cast<double>(exponent));
}

juce::String choiceText(float v, const FxTextRule& rule)
{
    const auto span = static_cast<float>(static_cast<double>(rule.numLabels) - 0.01);
    return rule.labels[discreteChoice(v, span)];
}

juce::String percentText(float v)
{
    return fixedText(static_cast<double>(v * 100.0f), 0) + " %";
}

juce::String signedPercentText(float v)
{
    return signedFixedText(static_cast<double>(v * 200.0f - 100.0f), 0) + " %";
}

juce::String centredPercentText(float v)
{
    return fixedText(static_cast<double>(v * 200.0f - 100.0f), 0) + " %";
}

juce::String frequencyText(float v)
{
    const double hz = powerOfTwo(v * 10.0f) * 20.0;
    return hz < 1000.0 ? fixedText(hz, 0) + " Hz" : fixedText(hz / 1000.0, 1) + " kHz";
}

juce::String bassFrequencyText(float v)
{
    return fixedText(powerOfTwo(v * 6.0f) * 10.0, 0) + " hz";
}

/** Free speed of an LFO: at most 13.75 Hz. */
juce::String rateText(float v)
{
    if (v < 0.0001f)
        return "off";

    return fixedText(powerOfTwo(v * 10.0f) * 55.0 / 4096.0, 2) + " hz";
}

juce::String syncedDelayText(float v)
{
    return delaySyncTable[static_cast<size_t>(discreteChoice(v, 14.99f))].label;
}

juce::String delayText(float v)
{
    return fixedText(powerOfTwo(v * 12.0f), 0) + " ms";
}

juce::String noteText(float v)
{
    return lfoSyncTable[static_cast<size_t>(lfoSyncIndex(v))].label;
}

juce::String modulationDelayText(float v)
{
    return fixedText(static_cast<double>(v * 50.0f), 1) + " ms";
}

juce::String boostText(float v)
{
    return signedFixedText(static_cast<double>(v * 40.0f - 20.0f), 0) + " db";
}

juce::String decibelText(float v, int lowest, int highest)
{
    const float x = v * static_cast<float>(highest - lowest) + static_cast<float>(lowest);
    return (x > 0.0f ? "+" : "") + fixedText(static_cast<double>(x), 1) + " dB";
}

juce::String heldRateText(float v)
{
    return juce::String(44100 / static_cast<int>(powerOfTwo(v * 5.0f)));
}

juce::String preDelayText(float v)
{
    return fixedText((powerOfTwo(v * 10.0f) - 1.0) * 0.5, 1) + " ms";
}

juce::String roomSizeText(float v)
{
    return fixedText(static_cast<double>(std::floor(v * 30.75f + 1.0f) * 0.25f), 2) + " m";
}

juce::String reverbLengthText(float v)
{
    return juce::String(static_cast<int>(powerOfTwo(v * 8.0f - 6.0f) * 100.0)) + " %";
}

juce::String timeText(float v)
{
    return fixedText(powerOfTwo(v * 14.0f), 0) + " ms";
}

juce::String envelopeText(float v)
{
    if (v < 0.001f)
        return "Off";

    const double ms = std::exp2(static_cast<double>(v) * std::log2(256.5)) - 0.5;
    return fixedText(ms, ms < 100.0 ? 2 : 0) + " ms";
}

juce::String ratioText(float v)
{
    if (v <= 0.0f)
        return "None";

    return v >= 1.0f ? juce::String("Limiter") : "Ratio " + fixedText(powerOfTwo(v * 7.0f), 0) + ":1";
}

juce::String ruleText(const FxTextRule& rule, float v, const FxParameterValues& block)
{
    switch (rule.kind)
    {
    case FxText::none:
        return "-";
    case FxText::choice:
        return choiceText(v, rule);
    case FxText::halves:
        return rule.labels[v < 0.5f ? 0 : 1];
    case FxText::percent:
        return percentText(v);
    case FxText::signedPercent:
        return signedPercentText(v);
    case FxText::centredPercent:
        return centredPercentText(v);
    case FxText::hertz:
        return frequencyText(v);
    case FxText::bassHertz:
        return bassFrequencyText(v);
    case FxText::lfoRate:
        return rateText(v);
    case FxText::lfoNote:
        return noteText(v);
    case FxText::lfoSpeed:
        return block[static_cast<size_t>(rule.a)] >= 0.5f ? noteText(v) : rateText(v);
    case FxText::autoPanSpeed:
        return block[1] * 4.0f >= 0.5f ? noteText(v) : rateText(v);
    case FxText::delayNote:
        return syncedDelayText(v);
    case FxText::delay:
        return block[static_cast<size_t>(rule.a)] > 0.5f ? syncedDelayText(v) : delayText(v);
    case FxText::upTo50Ms:
        return modulationDelayText(v);
    case FxText::stages:
        return juce::String(1 + discreteChoice(v, 7.99f));
    case FxText::boost:
        return boostText(v);
    case FxText::decibels:
        return decibelText(v, rule.a, rule.b);
    case FxText::bits:
        return juce::String(16 - discreteChoice(v, 15.99f));
    case FxText::heldRate:
        return heldRateText(v);
    case FxText::preDelay:
        return preDelayText(v);
    case FxText::roomSize:
        return roomSizeText(v);
    case FxText::reverbLength:
        return reverbLengthText(v);
    case FxText::time:
        return timeText(v);
    case FxText::envelope:
        return envelopeText(v);
    case FxText::ratio:
        return ratioText(v);
    }

    return "-";
}

/** Neither streams nor printf: both take the decimal point from a locale that the host may set at any time. */
juce::String numberText(double value, std::chars_format format, int precision)
{
    // Enough for every finite double in fixed notation.
    std::array<char, 512> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, precision);
    return juce::String(buffer.data(), static_cast<size_t>(result.ptr - buffer.data()));
}
} // namespace

juce::String fixedText(double value, int decimals)
{
    return numberText(value, std::chars_format::fixed, decimals);
}

juce::String signedFixedText(double value, int decimals)
{
    const auto digits = fixedText(value, decimals);
    return digits.startsWithChar('-') ? digits : "+" + digits;
}

juce::String shortText(double value)
{
    return numberText(value, std::chars_format::general, 6);
}

juce::String fxParameterText(int type, int j, const FxParameterValues& values)
{
    if (type < 0 || type >= fxTypeCount || j < 0 || j >= fxParameterCount)
        return "-";

    const auto slot = static_cast<size_t>(j);
    return ruleText(fxTypes[static_cast<size_t>(type)].parameters[slot].text, clampUnit(values[slot]),
                    values);
}

} // namespace quorel
