// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundSetup.h"

#include "common/MessagePump.h"
#include "hosting/InstrumentBanks.h"
#include "hosting/InstrumentTable.h"
#include "presets/StateChunk.h"

namespace quorel
{

namespace
{
constexpr int loadTimeoutMillis = 30000;

juce::Result loadPreset(PluginProcessor& processor, const juce::File& file)
{
    const auto cannot = [&](const char* what)
    { return juce::Result::fail(file.getFullPathName() + ": " + what); };
    juce::MemoryBlock bytes;
    if (file.isDirectory() || !file.loadFileAsData(bytes))
        return juce::Result::fail("cannot read " + file.getFullPathName());

    StateChunk chunk;
    switch (readStateChunk(bytes.getData(), bytes.getSize(), chunk))
    {
    case ChunkStatus::foreign:
        return cannot("not a preset");
    case ChunkStatus::tooShort:
        return cannot("the preset is cut off");
    case ChunkStatus::valid:
        break;
    }

    processor.setStateInformation(bytes.getData(), static_cast<int>(bytes.getSize()));
    for (int layer = 0; layer < numLayers; ++layer)
        if (processor.getLayer(layer).isMissing())
            return cannot("needs an instrument that is not here");
    return juce::Result::ok();
}

/** Programs as the layer's menu numbers them, from 0. */
juce::StringArray programsOf(VirtualInstrument& layer)
{
    const auto* row = findInstrument(layer.getPluginName());
    if (row != nullptr && row->programsByMidi)
    {
        layer.readProgramNames(layer.getBankName());
        return layer.getProgramNames();
    }
    juce::StringArray names;
    const InstanceAccess::Use plugin(layer.instanceAccess());
    for (int program = 0; plugin && program < plugin->getNumPrograms(); ++program)
        names.add(plugin->getProgramName(program));
    return names;
}

juce::Result chooseProgram(VirtualInstrument& layer, const juce::String& program)
{
    const auto programs = programsOf(layer);
    int id = programs.indexOf(program) + 1;
    if (id == 0)
        id = programs.indexOf(program, true) + 1;
    if (id == 0 && program.containsOnly("0123456789"))
        id = program.getIntValue();
    if (id < 1 || id > programs.size())
        return juce::Result::fail(layer.getPluginName() + " has no program \"" + program + "\": its " +
                                  juce::String(programs.size()) + " programs are " +
                                  programs.joinIntoString(", "));
    layer.chooseProgram(id);
    return juce::Result::ok();
}

juce::Result chooseLayer(PluginProcessor& processor, const LayerChoice& choice)
{
    juce::StringArray known;
    const juce::PluginDescription* found = nullptr;
    const auto types = processor.getKnownPlugins().getTypes();
    for (const auto& type : types)
    {
        known.add(type.name);
        if (type.name.equalsIgnoreCase(choice.instrument))
            found = &type;
    }
    if (found == nullptr)
        return juce::Result::fail("unknown instrument \"" + choice.instrument + "\": " +
                                  (known.isEmpty() ? juce::String("no instruments are installed")
                                                   : "there are " + known.joinIntoString(", ")));

    auto& layer = processor.getLayer(choice.layer);
    processor.chooseInstrument(choice.layer, found);
    pumpUntil([&]
              { return layer.isMissing() || (layer.hasInstance() && layer.getPluginName() == found->name); },
              loadTimeoutMillis);
    if (!layer.hasInstance() || layer.getPluginName() != found->name)
        return juce::Result::fail(found->name + " does not load");
    return choice.program.isEmpty() ? juce::Result::ok() : chooseProgram(layer, choice.program);
}

void chooseEffect(PluginProcessor& processor, const EffectChoice& choice)
{
    const int k = choice.block;
    processor.setParameter(slot::fxOn + k, 1.0f);
    // The engine reads trunc(value x 32): quotients of 32 are exact.
    processor.setParameter(slot::fxType + k, static_cast<float>(choice.type) / 32.0f);
    for (std::size_t j = 0; j < choice.values.size(); ++j)
        processor.setParameter(fxParameter(k, static_cast<int>(j)), choice.values[j]);
    if (choice.mix.has_value())
        processor.setParameter(slot::fxMix + k, *choice.mix);
    if (choice.pan.has_value())
        processor.setParameter(slot::fxPan + k, *choice.pan);
    if (choice.level.has_value())
        processor.setParameter(slot::fxVolume + k, *choice.level);
}

void chooseSend(PluginProcessor& processor, const SendChoice& choice)
{
    processor.setParameter(layerParameter(choice.layer, layerSlot::sendPreFader + choice.send),
                           choice.isPreFader ? 1.0f : 0.0f);
    processor.setParameter(layerParameter(choice.layer, layerSlot::sendLevel + choice.send), choice.level);
}
} // namespace

int findParameter(PluginProcessor& processor, const juce::String& nameOrIndex)
{
    if (nameOrIndex.containsOnly("0123456789"))
    {
        const int index = nameOrIndex.length() <= 4 ? nameOrIndex.getIntValue() : numHostParameters;
        return index < numHostParameters ? index : -1;
    }
    int similar = -1;
    for (int index = 0; index < numHostParameters; ++index)
    {
        const auto name = processor.getParameterName(index);
        if (name == nameOrIndex)
            return index;
        if (similar < 0 && name.equalsIgnoreCase(nameOrIndex))
            similar = index;
    }
    return similar;
}

juce::Result setUpSound(PluginProcessor& processor, const RenderOptions& options)
{
    if (options.preset != juce::File())
        if (const auto result = loadPreset(processor, options.preset); result.failed())
            return result;

    for (const auto& choice : options.layers)
        if (const auto result = chooseLayer(processor, choice); result.failed())
            return result;

    for (const auto& choice : options.effects)
        chooseEffect(processor, choice);
    for (const auto& choice : options.sends)
        chooseSend(processor, choice);

    // In order: a name can depend on an earlier parameter, as those of an effect do on its type.
    for (const auto& choice : options.parameters)
    {
        const int index = findParameter(processor, choice.parameter);
        if (index < 0)
            return juce::Result::fail("unknown parameter \"" + choice.parameter + "\"");
        processor.setParameter(index, choice.value);
    }
    return juce::Result::ok();
}

juce::Result saveSound(PluginProcessor& processor, const juce::File& file)
{
    juce::MemoryBlock bytes;
    processor.getStateInformation(bytes);
    if (file.isDirectory() || !file.replaceWithData(bytes.getData(), bytes.getSize()))
        return juce::Result::fail("cannot write " + file.getFullPathName());
    return juce::Result::ok();
}

} // namespace quorel
