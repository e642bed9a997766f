// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundSetup.h"

#include "SoundLists.h"

#include "common/LayerPrograms.h"
#include "common/MessagePump.h"
#include "common/NearNames.h"
#include "common/Tool.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/StateChunk.h"

namespace quorel
{

namespace
{
constexpr int loadTimeoutMillis = 30000;

/** Reads a preset and what it needs; the error names the file. */
juce::Result readPreset(const juce::File& file, juce::MemoryBlock& bytes, StateChunk& chunk)
{
    const auto cannot = [&](const char* what)
    { return juce::Result::fail(file.getFullPathName() + ": " + what); };
    if (file.isDirectory() || !file.loadFileAsData(bytes))
        return cannotRead(file);

    switch (readStateChunk(bytes.getData(), bytes.getSize(), chunk))
    {
    case ChunkStatus::foreign:
        return cannot("not a preset");
    case ChunkStatus::tooShort:
        return cannot("the preset is cut off");
    case ChunkStatus::valid:
        break;
    }
    return juce::Result::ok();
}

/** Fails if a layer that has an instrument in the preset has none now. */
juce::Result checkInstruments(PluginProcessor& processor, const StateChunk& chunk, const juce::File& file)
{
    for (int layer = 0; layer < numLayers; ++layer)
        if (chunk.layerSizes[static_cast<std::size_t>(layer)] != 0 &&
            !processor.getLayer(layer).hasInstance())
            return juce::Result::fail(file.getFullPathName() + ": needs an instrument that is not here");
    return juce::Result::ok();
}

/** As a host restores its project: at once. */
juce::Result restoreFile(PluginProcessor& processor, const juce::File& file)
{
    juce::MemoryBlock bytes;
    StateChunk chunk;
    if (const auto result = readPreset(file, bytes, chunk); result.failed())
        return result;
    processor.setStateInformation(bytes.getData(), static_cast<int>(bytes.getSize()));
    return checkInstruments(processor, chunk, file);
}

/** As a player changes presets: fade out, load, settle, fade in. */
juce::Result changePreset(PluginProcessor& processor, OfflineRender& offline, const PresetChoice& choice)
{
    const auto& banks = processor.getPaths().banksFolder;
    const auto file = findPresetFile(banks, choice.folder, choice.name);
    if (file == juce::File())
        return juce::Result::fail("there is no preset \"" + choice.folder + "/" + choice.name + "\" in " +
                                  (banks == juce::File() ? juce::String("the banks folder: none is set")
                                                         : banks.getFullPathName()) +
                                  didYouMean(choice.folder + "/" + choice.name, listAllPresets(banks)));

    juce::MemoryBlock bytes;
    StateChunk chunk;
    if (const auto result = readPreset(file, bytes, chunk); result.failed())
        return result;
    const bool arrived = processor.getSoundChange().requestPreset(choice.folder, choice.name) &&
                         offline.playSoundChange(loadTimeoutMillis);
    if (!arrived)
        return juce::Result::fail(file.getFullPathName() + ": the preset does not load");
    return checkInstruments(processor, chunk, file);
}

juce::StringArray parameterNames(PluginProcessor& processor)
{
    juce::StringArray names;
    for (int index = 0; index < numHostParameters; ++index)
        names.add(processor.getParameterName(index));
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

/** Instruments that a program ended in while it opened them, and what to do about it. */
juce::String passedOver(const PluginProcessor& processor)
{
    juce::StringArray names;
    for (const auto& path : processor.getKnownPlugins().getBlacklistedFiles())
        names.add(juce::File::createFileWithoutCheckingPath(path).getFileNameWithoutExtension());
    return names.isEmpty()
               ? juce::String()
               : "; passed over, as a program ended while it opened them: " + names.joinIntoString(", ") +
                     " (\"Re-scan Plug-Ins\" on Quorel's back panel tries them again)";
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
                                  (known.isEmpty()
                                       ? juce::String("no instruments are installed: run quorel-setup")
                                       : "there are " + known.joinIntoString(", ")) +
                                  passedOver(processor));

    auto& layer = processor.getLayer(choice.layer);
    processor.chooseInstrument(choice.layer, found);
    pumpUntil([&]
              { return layer.isMissing() || (layer.hasInstance() && layer.getPluginName() == found->name); },
              loadTimeoutMillis);
    if (!layer.hasInstance() || layer.getPluginName() != found->name)
        return juce::Result::fail(
            found->name + " does not load" +
            (layer.isMissing()
                 ? juce::String()
                 : ": it is not there after " + juce::String(loadTimeoutMillis / 1000) + " seconds"));
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

juce::Result setUpSound(PluginProcessor& processor, OfflineRender& offline, const RenderOptions& options)
{
    if (options.preset.isGiven())
    {
        const auto& file = options.preset.file;
        const auto result = file != juce::File() ? restoreFile(processor, file)
                                                 : changePreset(processor, offline, options.preset);
        if (result.failed())
            return result;
    }

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
            return juce::Result::fail("unknown parameter \"" + choice.parameter + "\"" +
                                      didYouMean(choice.parameter, parameterNames(processor)) +
                                      " (see --list-parameters)");
        processor.setParameter(index, choice.value);
    }
    return juce::Result::ok();
}

juce::Result saveSound(PluginProcessor& processor, const juce::File& file)
{
    juce::MemoryBlock bytes;
    processor.getStateInformation(bytes);
    // A folder that is missing is more likely mistyped than meant to be made.
    auto result = file.getParentDirectory().isDirectory() ? replaceFile(file, bytes)
                                                          : juce::Result::fail("there is no such folder");
    return result.wasOk() ? result
                          : juce::Result::fail("cannot write " + file.getFullPathName() + " (" +
                                               result.getErrorMessage() + ")");
}

} // namespace quorel
