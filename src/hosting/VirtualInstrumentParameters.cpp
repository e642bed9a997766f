// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of a layer and of its hosted instrument: what a write brings with it, and the Easy mirror
// both ways.
#include "hosting/HostedParameters.h"
#include "hosting/InstrumentTable.h"
#include "hosting/VirtualInstrument.h"
#include "parameters/IntegerLines.h"
#include "parameters/MultiControls.h"
#include "parameters/ParameterCodings.h"

namespace quorel
{

namespace
{
/** Above 0 while this thread copies an Easy value to the hosted instrument or from it. Otherwise an
    instrument that reports each change back would be written again because of its own report, without end. */
thread_local int writeThroughDepth = 0;

struct WriteThroughScope
{
    WriteThroughScope() { ++writeThroughDepth; }

    ~WriteThroughScope() { --writeThroughDepth; }
};
} // namespace

void VirtualInstrument::parameterWritten(int n, float value)
{
    midiParameters.write(n, value);

    if (n == layerSlot::transpose)
        requestAllNotesOff();

    if (n >= layerSlot::easyValue && n < layerSlot::easyValue + numEasyParameters && writeThroughDepth == 0)
    {
        const InstanceAccess::Use plugin(access);

        if (!plugin)
            return;

        const int target = easyTarget(n - layerSlot::easyValue, numHostedParameters(*plugin.get()));

        if (target > 0)
        {
            const WriteThroughScope scope;
            setHostedParameter(*plugin.get(), target, value);
        }
    }
    else if (n >= layerSlot::easyMapping && n < layerSlot::easyMapping + numEasyParameters)
    {
        float hostedValue = 0.0f;
        {
            const InstanceAccess::Use plugin(access);

            if (!plugin)
                return;

            const int target = decodeParamInt(value);

            if (target <= 0 || target >= numHostedParameters(*plugin.get()))
                return;

            hostedValue = hostedParameter(*plugin.get(), target);
        }
        write(n - numEasyParameters, hostedValue);
    }
}

int VirtualInstrument::easyTarget(int easy, int numTargets) const noexcept
{
    const int target = decodeParamInt(read(layerSlot::easyMapping + easy));
    return target > 0 && target < numTargets ? target : 0;
}

void VirtualInstrument::writeEasyMapping(const InstrumentRow* row)
{
    for (int easy = 0; easy < numEasyParameters; ++easy)
    {
        // Without a row the layer keeps the plain numbering that its reset gave it.
        const int target = row != nullptr ? row->easyMapping[static_cast<size_t>(easy)] : easy + 1;
        write(layerSlot::easyMapping + easy, encodeParamInt(target));
        write(layerSlot::easyValue + easy, hostedParameter(*instance, target));
    }
}

void VirtualInstrument::resetEasyMapping()
{
    if (instance == nullptr)
        return;

    writeEasyMapping(findInstrument(pluginName));
    needsDisplayUpdate.store(true);
}

void VirtualInstrument::saveEasyMapping(juce::StringArray& lines) const
{
    lines.clear();

    if (findInstrument(pluginName) == nullptr)
        return;

    for (int easy = 0; easy < numEasyParameters; ++easy)
        lines.add(juce::String(decodeParamInt(read(layerSlot::easyMapping + easy))));
}

void VirtualInstrument::loadEasyMapping(const juce::StringArray& lines)
{
    for (int easy = 0; easy < juce::jmin(numEasyParameters, lines.size()); ++easy)
        write(layerSlot::easyMapping + easy, encodeParamInt(integerOfLine(lines[easy])));

    needsDisplayUpdate.store(true);
}

void VirtualInstrument::applyDrumPage()
{
    write(layerSlot::drumMode, drumInstrument ? 1.0f : 0.0f);
    write(layerSlot::drumPage, drumInstrument ? 0.1f : 0.0f);

    if (drumInstrument)
        zoneHeldNotes.clear();
}

juce::String VirtualInstrument::easyName(int easy)
{
    const InstanceAccess::Use plugin(access);

    if (!plugin)
        return "Easy " + juce::String(easy + 1);

    const int target = easyTarget(easy, numHostedParameters(*plugin.get()));
    return target > 0 ? hostedParameterName(*plugin.get(), target).substring(0, 15)
                      : juce::String(layerSlot::easyValue + easy);
}

juce::String VirtualInstrument::easyText(int easy)
{
    const InstanceAccess::Use plugin(access);

    if (!plugin)
        return {};

    // The other call, for the text of a given value, answers with the bare number.
    const auto& hosted = plugin->getParameters();
    const int target = easyTarget(easy, hosted.size());
    return target > 0 ? hosted[target]->getCurrentValueAsText() : juce::String();
}

void VirtualInstrument::audioProcessorParameterChanged(juce::AudioProcessor*, int index, float value)
{
    for (int easy = 0; easy < numEasyParameters; ++easy)
    {
        if (decodeParamInt(read(layerSlot::easyMapping + easy)) == index)
        {
            // The value came from the instrument and must not be written back.
            const WriteThroughScope scope;
            owner.writeParameterNotifyingHost(parameter(layerSlot::easyValue + easy), value);
            return;
        }
    }
}

void VirtualInstrument::pullEasyValues(juce::AudioPluginInstance& plugin)
{
    for (int easy = 0; easy < numEasyParameters; ++easy)
    {
        if (const int target = easyTarget(easy, numHostedParameters(plugin)); target > 0)
        {
            const WriteThroughScope scope;
            write(layerSlot::easyValue + easy, hostedParameter(plugin, target));
        }
    }
}

void VirtualInstrument::audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&)
{
    if (const InstanceAccess::Use plugin(access); plugin)
        pullEasyValues(*plugin.get());

    needsDisplayUpdate.store(true);
}

} // namespace quorel
