// SPDX-License-Identifier: GPL-3.0-or-later
#include "RenderOptions.h"

#include "parameters/ParameterLayout.h"
#include "presets/PresetFiles.h"

namespace quorel
{

juce::Result parsePresetChoice(const juce::String& text, PresetChoice& choice)
{
    choice = {};
    const auto file = juce::File::getCurrentWorkingDirectory().getChildFile(text);
    if (file.existsAsFile() || juce::File::isAbsolutePath(text) || text.endsWithIgnoreCase(presetFileEnding))
    {
        choice.file = file;
        return juce::Result::ok();
    }
    choice.folder = text.upToFirstOccurrenceOf("/", false, false);
    choice.name = text.fromFirstOccurrenceOf("/", false, false);
    const bool isPreset =
        choice.folder.isNotEmpty() && choice.name.isNotEmpty() && !choice.name.containsChar('/');
    return isPreset ? juce::Result::ok()
                    : juce::Result::fail("a preset is given as FOLDER/NAME or as a file, not as \"" + text +
                                         "\", which is neither");
}

juce::Result parseLayerChoice(const juce::String& text, LayerChoice& choice)
{
    const auto number = text.upToFirstOccurrenceOf("=", false, false).trim();
    const auto rest = text.fromFirstOccurrenceOf("=", false, false);
    choice.layer = number.getIntValue() - 1;
    choice.instrument = rest.upToFirstOccurrenceOf(":", false, false).trim();
    choice.program = rest.fromFirstOccurrenceOf(":", false, false).trim();
    if (number.length() != 1 || choice.layer < 0 || choice.layer >= numLayers || choice.instrument.isEmpty())
        return juce::Result::fail(
            "a layer is given as N=INSTRUMENT or N=INSTRUMENT:PROGRAM with N from 1 to " +
            juce::String(numLayers) + ", not as \"" + text + "\"");
    return juce::Result::ok();
}

juce::Result parseParameterChoice(const juce::String& text, ParameterChoice& choice)
{
    choice.parameter = text.upToLastOccurrenceOf("=", false, false).trim();
    const auto value = parseUnitValue(text.fromLastOccurrenceOf("=", false, false));
    if (!text.containsChar('=') || choice.parameter.isEmpty() || !value.has_value())
        return juce::Result::fail("a parameter is given as NAME=VALUE with a value from 0 to 1, not as \"" +
                                  text + "\"");
    choice.value = *value;
    return juce::Result::ok();
}

} // namespace quorel
