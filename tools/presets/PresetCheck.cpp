// SPDX-License-Identifier: GPL-3.0-or-later
#include "PresetCheck.h"

#include "hosting/InstrumentTable.h"
#include "hosting/PluginScanner.h"
#include "parameters/ParameterLayout.h"
#include "parameters/ParameterNames.h"
#include "parameters/ParameterText.h"
#include "presets/PresetDocument.h"
#include "presets/PresetFiles.h"
#include "presets/PresetNotes.h"

#include <algorithm>
#include <cmath>

namespace quorel
{

namespace
{
class Findings
{
public:
    void error(const juce::String& text) { found.push_back({Finding::Weight::error, text}); }

    void note(const juce::String& text) { found.push_back({Finding::Weight::note, text}); }

    std::vector<Finding> takeSorted()
    {
        std::stable_partition(found.begin(), found.end(),
                              [](const Finding& f) { return f.weight == Finding::Weight::error; });
        return std::move(found);
    }

private:
    std::vector<Finding> found;
};

/** A chunk's parameters, as the functions for texts read them. */
class ChunkParameters final : public ParameterAccess
{
public:
    explicit ChunkParameters(const StateChunk& stateChunk)
        : chunk(stateChunk)
    {
    }

    float readParameter(int index) const noexcept override
    {
        const auto i = static_cast<std::size_t>(index);
        return i < chunk.parameters.size() ? chunk.parameters[i] : 0.0f;
    }

    void writeParameter(int, float) override {}

    void writeParameterNotifyingHost(int, float) override {}

private:
    const StateChunk& chunk;
};

juce::String layerTitle(int layer)
{
    return "layer " + juce::String(layer + 1);
}

void checkParameters(const StateChunk& chunk, Findings& findings)
{
    constexpr int mostToName = 4;
    int bad = 0;
    juce::StringArray named;
    for (std::size_t i = 0; i < chunk.parameters.size(); ++i)
    {
        const float value = chunk.parameters[i];
        if (value >= 0.0f && value <= 1.0f)
            continue;
        if (++bad <= mostToName)
            named.add(juce::String(static_cast<int>(i)) + " is " +
                      (std::isfinite(value) ? juce::String(value) : juce::String("no number")));
    }
    if (bad == 0)
        return;
    auto text = juce::String(bad) + (bad == 1 ? " parameter lies" : " parameters lie") +
                " outside 0 to 1: " + named.joinIntoString(", ");
    if (bad > mostToName)
        text += ", ...";
    findings.error(text);
}

void checkStates(const StateChunk& chunk, const juce::MemoryBlock& bytes, Findings& findings)
{
    std::size_t offset = 0;
    if (const auto problem = whatStatesLack(chunk, bytes.getSize(), offset); problem.isNotEmpty())
    {
        findings.error(problem);
        return;
    }
    if (const auto foreign = numForeignBytes(bytes); foreign > 0)
        findings.error(
            juce::String(static_cast<juce::int64>(foreign)) +
            " bytes lie behind the end: an instrument's state is longer than declared, or the file was "
            "added to");
}

void checkInstruments(const StateChunk& chunk, const InstalledInstruments& installed, Findings& findings)
{
    for (int layer = 0; layer < numLayers; ++layer)
    {
        const bool hasState = chunk.layerSizes[static_cast<std::size_t>(layer)] != 0;
        const auto name = instrumentOfLayer(chunk, layer);
        if (hasState && name.isEmpty())
            findings.error(layerTitle(layer) + " has a state but names no instrument");
        else if (!hasState && name.isNotEmpty())
            findings.error(layerTitle(layer) + " names " + name + " but has no state, and will be empty");
        else if (hasState && findInstrument(name) == nullptr)
            findings.note(layerTitle(layer) + " needs an unknown instrument, " + name);
        else if (hasState && installed.isKnown && !installed.names.contains(name))
            findings.note(layerTitle(layer) + " needs " + name + ", which isn't installed");
    }
}

bool isStoredAs(const juce::String& stored, const juce::String& name)
{
    return chunkName(stored) == chunkName(name);
}

void checkNames(const StateChunk& chunk, const juce::File& file, Findings& findings)
{
    const auto folder = file.getParentDirectory().getFileName();
    const auto name = file.getFileNameWithoutExtension();
    if (!isStoredAs(chunk.presetName, name))
        findings.note("the name inside is \"" + printable(chunk.presetName) + "\"");
    if (!isStoredAs(chunk.folderName, folder))
        findings.note("the folder inside is \"" + printable(chunk.folderName) + "\"");
}

/** Whether the lists show the file and loading finds it. */
void checkPlace(const juce::File& file, Findings& findings)
{
    const auto folder = file.getParentDirectory();
    if (file.getFileExtension() != presetFileEnding)
        findings.error(juce::String("isn't listed: the ending must be ") + presetFileEnding);
    else if (findPresetFile(folder.getParentDirectory(), folder.getFileName(),
                            file.getFileNameWithoutExtension()) != file)
        findings.error("isn't found by its name");
}
} // namespace

InstalledInstruments readInstalledInstruments(const juce::File& pluginListFile)
{
    juce::KnownPluginList list;
    InstalledInstruments installed;
    installed.isKnown = pluginListFile.existsAsFile() && readPluginList(pluginListFile, list);
    for (const auto& type : list.getTypes())
        installed.names.addIfNotAlreadyThere(type.name);
    return installed;
}

juce::String instrumentOfLayer(const StateChunk& chunk, int layer)
{
    return printable(readParamText(ChunkParameters(chunk), layerParameter(layer, layerSlot::pluginNameText),
                                   slot::nameTextLength));
}

juce::String printable(const juce::String& text)
{
    juce::String clean;
    for (auto p = text.getCharPointer(); !p.isEmpty();)
    {
        const auto character = p.getAndAdvance();
        const bool isControl = character < 0x20 || (character >= 0x7f && character < 0xa0);
        clean += isControl ? static_cast<juce::juce_wchar>('?') : character;
    }
    return clean;
}

std::vector<Finding> checkPreset(const juce::File& file, bool isInBanks,
                                 const InstalledInstruments& installed)
{
    Findings findings;
    if (isInBanks && !file.isDirectory())
        checkPlace(file, findings);

    juce::MemoryBlock bytes;
    if (const auto result = readPresetBytes(file, bytes); result.failed())
    {
        findings.error(
            result.getErrorMessage().fromFirstOccurrenceOf(file.getFullPathName() + ": ", false, false));
        return findings.takeSorted();
    }
    StateChunk chunk;
    if (const auto problem = whyNotAPreset(bytes, chunk); problem.isNotEmpty())
    {
        findings.error(problem);
        return findings.takeSorted();
    }
    checkParameters(chunk, findings);
    checkStates(chunk, bytes, findings);
    checkInstruments(chunk, installed, findings);
    if (isInBanks)
        checkNames(chunk, file, findings);
    return findings.takeSorted();
}

} // namespace quorel
