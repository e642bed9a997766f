// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ParameterValueEntry.h"

#include "parameters/FxParameterText.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterCodings.h"

#include <cstdlib>
#include <limits>

namespace quorel
{

namespace
{
/** True where the user can type a value: in the layers and above them, and for the master volume. */
bool takesTypedValue(int index)
{
    return index == slot::masterVolume || isLayerParameter(index) ||
           (index > slot::lastLayer + 1 && index < numHostParameters);
}

/** The integer that a text begins with, after blanks and a sign of either kind; 0 without one. Unlike the
    string's own reading, it takes "+6", which the prompts invite. */
double leadingInteger(const juce::String& text)
{
    const long number = std::strtol(text.toRawUTF8(), nullptr, 10);
    return static_cast<double>(
        juce::jlimit<long>(std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), number));
}

double valueOf(Coding coding, const juce::String& text)
{
    switch (coding)
    {
    case Coding::fader:
        return faderPositionOfDecibels(leadingInteger(text));
    case Coding::centred:
        return leadingInteger(text) / 200.0 + 0.5;
    case Coding::percent:
        return leadingInteger(text) / 100.0;
    default:
        return text.getDoubleValue();
    }
}
} // namespace

std::optional<ValueQuestion> valueQuestion(int index, const ParameterTextSources& sources)
{
    if (!takesTypedValue(index))
        return {};

    const float value = sources.value(index);

    switch (parameterInfo(index).coding.kind)
    {
    case Coding::fader:
        return ValueQuestion{"-100 to +12", gainToText(faderGain(index, sources))};
    case Coding::centred:
        return ValueQuestion{"-100 to +100", juce::String(centredPercent(value))};
    case Coding::percent:
        return ValueQuestion{"0 to 100", juce::String(percentOf(value))};
    default:
        return ValueQuestion{"0 to 1", shortText(static_cast<double>(value))};
    }
}

std::optional<float> typedValue(int index, const juce::String& text)
{
    if (!takesTypedValue(index))
        return {};

    const double value = valueOf(parameterInfo(index).coding.kind, text);
    return value >= 0.0 && value <= 1.0 ? std::optional<float>(static_cast<float>(value)) : std::nullopt;
}

} // namespace quorel
