// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ParameterNames.h"

#include "effects/FxTypes.h"
#include "parameters/ParameterCatalogue.h"

#include <string>

namespace quorel
{

namespace
{
/** `prefix` and the name's text with its '#' replaced. */
juce::String textOf(const ParameterName& name, std::string prefix)
{
    size_t numbersPut = 0;

    for (const char* c = name.text; *c != 0; ++c)
    {
        if (*c == '#')
            prefix += std::to_string(name.numbers[numbersPut++]);
        else
            prefix += *c;
    }

    return prefix;
}

juce::String effectLabel(int index, const ParameterNameSources& sources)
{
    const int j = (index - slot::fxParameters) / numFxBlocks;
    return fxParameterLabel(sources.fxType(index % numFxBlocks) * numFxParameters + j);
}
} // namespace

juce::String parameterName(int index, const ParameterNameSources& sources)
{
    if (index < 0 || index >= numHostParameters)
        return {};

    const auto& name = parameterInfo(index).name;
    const bool inLayer = isLayerParameter(index);
    const int number = inLayer ? numberInLayer(index) : index;
    const auto prefix = inLayer ? "Layer" + std::to_string(layerOf(index) + 1) + " " : std::string();

    switch (name.naming)
    {
    case Naming::none:
        break;
    case Naming::number:
        return prefix + std::to_string(number);
    case Naming::text:
        return textOf(name, prefix);
    case Naming::easyTarget:
        return juce::String(prefix) + sources.easyName(layerOf(index), number - layerSlot::easyValue);
    case Naming::effectLabel:
        return effectLabel(index, sources);
    }

    return {};
}

} // namespace quorel
