// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/MultiControlMenu.h"

#include "engine/PluginProcessor.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"

namespace quorel
{

namespace
{
constexpr std::array<const char*, 6> mixerTargetNames{"Volume",   "Pan",      "FX1 Send",
                                                      "FX2 Send", "FX3 Send", "FX4 Send"};
constexpr int firstEasyEntry = static_cast<int>(mixerTargetNames.size());
constexpr int nameCount = slot::multiNameLength - 1;
constexpr const char* nothing = "---";

juce::String entryText(int entry)
{
    return entry < firstEasyEntry ? juce::String(mixerTargetNames[static_cast<size_t>(entry)])
                                  : "Easy Parameter " + juce::String(entry - firstEasyEntry + 1);
}

juce::String layerText(int layer)
{
    return "Layer " + juce::String(layer + 1);
}

/** Name of the hosted parameter behind an Easy value of a layer; "---" where it leads nowhere. */
juce::String hostedName(PluginProcessor& processor, int layer, int easy)
{
    const auto& names = processor.getLayer(layer).getParameterNames();
    const int target =
        decodeParamInt(processor.readParameter(layerParameter(layer, layerSlot::easyMapping + easy)));
    return target > 0 && target < names.size() ? names[target] : juce::String(nothing);
}

int listNumberOf(PluginProcessor& processor, int t)
{
    return juce::jmax(0, decodeParamInt(processor.readParameter(slot::multiAssignment + t)));
}
} // namespace

MenuEntries multiTargetMenu(PluginProcessor& processor, int t)
{
    const int chosen = listNumberOf(processor, t);
    MenuEntries menu;
    int id = 1;

    for (int layer = 0; layer < numLayers; ++layer)
    {
        MenuEntries rows;

        for (int entry = 0; entry < MultiControls::targetsPerLayer; ++entry, ++id)
        {
            auto text = entryText(entry);

            if (entry >= firstEasyEntry)
                text += " : " + hostedName(processor, layer, entry - firstEasyEntry);

            rows.push_back(MenuEntry::command(id, text, id == chosen));
        }

        menu.push_back(MenuEntry::rows(layerText(layer), std::move(rows)));
    }

    menu.push_back(MenuEntry::command(noMultiTargetId, "none", chosen == 0));
    return menu;
}

void chooseMultiTarget(PluginProcessor& processor, int t, int id)
{
    if (t < 0 || t >= numMultiTargets || id < 1 || id > noMultiTargetId)
        return;

    processor.setParameterFromUi(slot::multiAssignment + t,
                                 id == noMultiTargetId ? 0.0f : encodeParamInt(id));
}

MultiTargetText multiTargetText(PluginProcessor& processor, int t)
{
    const int number = listNumberOf(processor, t);

    if (number == 0)
        return {nothing, {}};

    // A damaged preset may hold numbers past the list.
    const int layer = juce::jmin((number - 1) / MultiControls::targetsPerLayer, numLayers - 1);
    const int entry = (number - 1) % MultiControls::targetsPerLayer;
    MultiTargetText text{layerText(layer) + " : " + entryText(entry), {}};

    if (entry >= firstEasyEntry && processor.getLayer(layer).hasInstance())
        text.nameLine = hostedName(processor, layer, entry - firstEasyEntry);

    return text;
}

juce::String multiControlName(PluginProcessor& processor, int group)
{
    return readParamText(processor, slot::multiName + slot::multiNameLength * group, nameCount);
}

void setMultiControlName(PluginProcessor& processor, int group, const juce::String& name)
{
    juce::String storable;

    for (const auto character : name.substring(0, nameCount - 1))
        storable += juce::String::charToString(character >= ' ' && character < 127 ? character : '_');

    const UndoHistory::Recording recording(processor);
    writeParamText(processor, slot::multiName + slot::multiNameLength * group, storable, nameCount);
}

} // namespace quorel
