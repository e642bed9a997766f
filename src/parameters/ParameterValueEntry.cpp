// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ParameterValueEntry.h"

#include "parameters/FxParameterText.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterLayout.h"

#include <cmath>
#include <cstdlib>
#include <limits>

namespace quorel
{

namespace
{
enum class EntryKind
{
    none,
    decibels,
    centred,
    percent,
    plain
};

EntryKind layerEntryKind(int n)
{
    if (n == layerSlot::volume || (n >= layerSlot::sendLevel && n < layerSlot::sendLevel + numSends))
        return EntryKind::decibels;

    return n == layerSlot::pan ? EntryKind::centred : EntryKind::plain;
}

EntryKind entryKind(int index)
{
    if (index == slot::masterVolume)
        return EntryKind::decibels;
    if (isLayerParameter(index))
        return layerEntryKind(numberInLayer(index));
    if (index >= slot::multiFader && index < slot::multiFader + numMultiFaders)
        return EntryKind::percent;
    if (index >= slot::multiKnob && index < slot::multiKnob + numMultiTargets)
        return EntryKind::centred;

    return index > slot::lastLayer + 1 && index < numHostParameters ? EntryKind::plain : EntryKind::none;
}

/** The number that a text begins with, blanks and a sign of either kind allowed; 0 without one. Unlike the
    string's own reading, "+6" is 6 here, as the prompts invite to type. */
double leadingInteger(const juce::String& text)
{
    const long number = std::strtol(text.toRawUTF8(), nullptr, 10);
    return static_cast<double>(
        juce::jlimit<long>(std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), number));
}

double valueOf(EntryKind kind, const juce::String& text)
{
    switch (kind)
    {
    case EntryKind::decibels:
        return std::cbrt(std::pow(10.0, leadingInteger(text) / 20.0) * 0.25);
    case EntryKind::centred:
        return leadingInteger(text) / 200.0 + 0.5;
    case EntryKind::percent:
        return leadingInteger(text) / 100.0;
    default:
        return text.getDoubleValue();
    }
}
} // namespace

std::optional<ValueQuestion> valueQuestion(int index, const ParameterTextSources& sources)
{
    const EntryKind kind = entryKind(index);

    if (kind == EntryKind::none)
        return {};

    const float value = sources.value(index);

    switch (kind)
    {
    case EntryKind::decibels:
    {
        const bool muted = index == slot::masterVolume && sources.value(slot::masterMute) > 0.5f;
        return ValueQuestion{"-100 to +12", gainToText(muted ? 0.0f : cubicGain(value))};
    }
    case EntryKind::centred:
        return ValueQuestion{"-100 to +100", juce::String(centredPercent(value))};
    case EntryKind::percent:
        return ValueQuestion{"0 to 100", juce::String(static_cast<int>(value * 100.0f))};
    default:
        return ValueQuestion{"0 to 1", shortText(static_cast<double>(value))};
    }
}

std::optional<float> typedValue(int index, const juce::String& text)
{
    const EntryKind kind = entryKind(index);

    if (kind == EntryKind::none)
        return {};

    const double value = valueOf(kind, text);
    return value >= 0.0 && value <= 1.0 ? std::optional<float>(static_cast<float>(value)) : std::nullopt;
}

} // namespace quorel
