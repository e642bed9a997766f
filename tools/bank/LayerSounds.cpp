// SPDX-License-Identifier: GPL-3.0-or-later
#include "LayerSounds.h"

#include "LineReading.h"
#include "ParameterWords.h"

#include "common/LayerPrograms.h"
#include "common/MessagePump.h"
#include "hosting/HostedParameters.h"
#include "parameters/ParameterCodings.h"

#include <algorithm>

namespace quorel::bank
{

namespace
{
constexpr int loadTimeoutMillis = 30000;

juce::String bankWithoutEnding(const juce::String& bank)
{
    return bank.upToLastOccurrenceOf(".fxb", false, true);
}

void chooseBank(SoundWriter& sound, int layer, const juce::String& bank, const TextLine& line)
{
    auto& slot = sound.processor.getLayer(layer);
    if (slot.getBankName() == bank)
        return;
    juce::StringArray names;
    for (const auto& name : slot.getBankNames())
        names.add(bankWithoutEnding(name));
    const int index = names.indexOf(bank);
    if (index < 0)
        fail(line,
             slot.getPluginName() + " has no bank \"" + bank + "\": there are " + names.joinIntoString(", "));
    slot.chooseBank(index + 1);
    sound.settle();
    if (slot.getBankName() != bank)
        fail(line, slot.getPluginName() + " does not take the bank \"" + bank + "\"");
}

void chooseProgram(SoundWriter& sound, int layer, const juce::String& program, const TextLine& line)
{
    auto& slot = sound.processor.getLayer(layer);
    const auto names = programsOf(slot);
    const int index = names.indexOf(program);
    if (index < 0)
        fail(line, "the bank has no program \"" + program + "\": there are " + names.joinIntoString(", "));
    slot.chooseProgram(index + 1);
    sound.settle();

    const InstanceAccess::Use plugin(slot.instanceAccess());
    if (!plugin || plugin->getProgramName(plugin->getCurrentProgram()) != program)
        fail(line, slot.getPluginName() + " does not take the program \"" + program + "\"");
}

int hostedParameterCalled(SoundWriter& sound, int layer, const juce::String& name, const TextLine& line)
{
    auto& slot = sound.processor.getLayer(layer);
    const int index = slot.getParameterNames().indexOf(name, true);
    // The first parameter of an instrument can't be mapped.
    if (index <= 0)
        fail(line, slot.getPluginName() + " has no parameter \"" + name + "\"");
    return index;
}

void setHosted(SoundWriter& sound, int layer, const TextLine& line)
{
    const int index =
        hostedParameterCalled(sound, layer, line.key.fromFirstOccurrenceOf(" ", false, false), line);
    const float value = need(percentValue(line.value), line, "0 to 100 %");
    const InstanceAccess::Use plugin(sound.processor.getLayer(layer).instanceAccess());
    if (plugin)
        setHostedParameter(*plugin.get(), index, value);
}

void mapEasy(SoundWriter& sound, int layer, const TextLine& line)
{
    const int easy = numberedFrom(line.key, "Easy", numEasyParameters);
    const int target =
        line.value.equalsIgnoreCase("none") ? 0 : hostedParameterCalled(sound, layer, line.value, line);
    sound.set(layerParameter(layer, layerSlot::easyMapping + easy), encodeParamInt(target));
}
} // namespace

void loadInstruments(SoundWriter& sound, const std::vector<TextSection>& text)
{
    const auto types = sound.processor.getKnownPlugins().getTypes();
    std::array<const TextLine*, numLayers> wanted{};
    for (const auto& section : text)
    {
        const int layer = numberedFrom(section.name, "Layer", numLayers);
        if (layer < 0)
            continue;
        if (section.lines.empty() || !is(section.lines.front(), "Instrument"))
            throw TextError(section.number, "a layer starts with its Instrument");
        const auto& line = section.lines.front();
        const auto* found =
            std::find_if(types.begin(), types.end(),
                         [&](const auto& type) { return type.name.equalsIgnoreCase(line.value); });
        if (found == types.end())
            fail(line, "no instrument \"" + line.value + "\"");
        sound.processor.chooseInstrument(layer, found);
        wanted[static_cast<std::size_t>(layer)] = &line;
    }

    for (int layer = 0; layer < numLayers; ++layer)
    {
        const auto* line = wanted[static_cast<std::size_t>(layer)];
        if (line == nullptr)
            continue;
        auto& slot = sound.processor.getLayer(layer);
        pumpUntil([&] { return slot.hasInstance() || slot.isMissing(); }, loadTimeoutMillis);
        if (!slot.hasInstance())
            fail(*line, line->value + " does not load");
    }
    sound.settle();
}

void chooseSounds(SoundWriter& sound, int layer, const TextSection& section)
{
    // In this order, whatever the order of the text: a program replaces all parameters, and a mapping reads
    // one.
    for (const auto& line : section.lines)
    {
        if (!is(line, "Program"))
            continue;
        if (!line.value.contains(" / "))
            fail(line, "a program is given as Bank / Program");
        chooseBank(sound, layer, line.value.upToFirstOccurrenceOf(" / ", false, false).trim(), line);
        chooseProgram(sound, layer, line.value.fromFirstOccurrenceOf(" / ", false, false).trim(), line);
    }
    for (const auto& line : section.lines)
        if (line.key.startsWithIgnoreCase("Parameter "))
            setHosted(sound, layer, line);
    for (const auto& line : section.lines)
        if (numberedFrom(line.key, "Easy", numEasyParameters) >= 0)
            mapEasy(sound, layer, line);
    // Writing a mapping, even the same one, makes it read its value from the instrument.
    for (int easy = 0; easy < numEasyParameters; ++easy)
    {
        const int mapping = layerParameter(layer, layerSlot::easyMapping + easy);
        sound.set(mapping, sound.processor.getParameter(mapping));
    }
}

bool isSoundLine(const TextLine& line)
{
    return is(line, "Instrument") || is(line, "Program") || line.key.startsWithIgnoreCase("Parameter ") ||
           numberedFrom(line.key, "Easy", numEasyParameters) >= 0;
}

} // namespace quorel::bank
