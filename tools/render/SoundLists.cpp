// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundLists.h"

#include "common/LayerPrograms.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterDisplay.h"
#include "platform/FileNames.h"
#include "presets/PresetFiles.h"

#include <iostream>

namespace quorel
{

namespace
{
/** What a parameter reads at a value of its own, beside the others as they are. Easy values ask their instrument,
    which knows its present value alone. */
juce::String textAt(PluginProcessor& processor, int index, float value)
{
    const ParameterTextSources sources{[&](int other)
                                       { return other == index ? value : processor.getParameter(other); },
                                       [](int, int) { return juce::String(); }};
    return parameterText(index, sources);
}

bool hasName(int index)
{
    const auto naming = parameterInfo(index).name.naming;
    return naming != Naming::none && naming != Naming::number;
}
} // namespace

juce::Result listPresetNames(const juce::File& banksFolder)
{
    const auto names = listAllPresets(banksFolder);
    for (const auto& name : names)
        std::cout << name << '\n';
    std::cout << std::flush;
    if (banksFolder.isDirectory())
    {
        auto result = checkListable(banksFolder);
        for (const auto& folder : listPresetFolders(banksFolder))
            if (result.wasOk())
                result = checkListable(childNamed(banksFolder, folder));
        if (result.failed())
            return result;
    }
    if (!names.isEmpty())
        return juce::Result::ok();
    return juce::Result::fail(banksFolder == juce::File()
                                  ? juce::String("there are no presets: run quorel-setup")
                                  : "there are no presets in " + banksFolder.getFullPathName());
}

juce::Result listPrograms(PluginProcessor& processor)
{
    bool found = false;
    for (int i = 0; i < numLayers; ++i)
    {
        auto& layer = processor.getLayer(i);
        if (!layer.hasInstance())
            continue;
        found = true;
        std::cout << "Layer " << i + 1 << ": " << layer.getPluginName() << '\n';
        const auto programs = programsOf(layer);
        for (int program = 0; program < programs.size(); ++program)
            std::cout << juce::String(program + 1).paddedLeft(' ', 5) << "  " << programs[program] << '\n';
    }
    std::cout << std::flush;
    return found ? juce::Result::ok()
                 : juce::Result::fail(
                       "no layer has an instrument to list programs of: give --layer or --preset");
}

void listParameters(PluginProcessor& processor)
{
    for (int index = 0; index < numHostParameters; ++index)
    {
        if (!hasName(index))
            continue;
        const auto value = processor.getParameter(index);
        std::cout << juce::String(index).paddedLeft(' ', 4) << "  "
                  << processor.getParameterName(index).paddedRight(' ', 32) << "  "
                  << juce::String(static_cast<double>(value), 4);
        if (const auto text = processor.getParameterText(index); text.isNotEmpty())
            std::cout << "  " << text;
        const auto low = textAt(processor, index, 0.0f);
        const auto high = textAt(processor, index, 1.0f);
        if (low.isNotEmpty() && high.isNotEmpty() && low != high)
            std::cout << "  (" << low << " to " << high << ')';
        std::cout << '\n';
    }
    std::cout << std::flush;
}

} // namespace quorel
