// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of a layer and of its hosted instrument: what a write brings with it, and the Easy mirror
// both ways; banks and programs.
#include "hosting/HostedParameters.h"
#include "hosting/InstrumentBanks.h"
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
    midiWords.refresh([&] { midiParameters.write(n, read(n)); });

    if (n == layerSlot::transpose)
        requestAllNotesOff();

    const bool isValue = n >= layerSlot::easyValue && n < layerSlot::easyValue + numEasyParameters;
    const bool isMapping = n >= layerSlot::easyMapping && n < layerSlot::easyMapping + numEasyParameters;

    if (!isMapping && (!isValue || writeThroughDepth > 0))
        return;

    const InstanceAccess::Use plugin(access);

    if (!plugin)
        return;

    const int easy = n - (isValue ? layerSlot::easyValue : layerSlot::easyMapping);
    const int target = easyTarget(easy, numHostedParameters(*plugin.get()));

    if (target == 0)
        return;

    if (isValue)
        easyHandover.write(easy, target, value);
    else
        easyHandover.pull(easy);

    passOnEasyValues(*plugin.get());
}

void VirtualInstrument::passOnEasyValues(juce::AudioPluginInstance& plugin)
{
    // Whoever finds the lock taken leaves it to its holder, who looks again, or to the next block or tick.
    while (easyHandover.isPending())
    {
        const juce::ScopedTryLock lock(instrumentLock(plugin));

        if (!lock.isLocked())
            return;

        // Neither what goes to the instrument nor what comes from it is to go back.
        const WriteThroughScope scope;

        // Writes first: one made after a new mapping must not be undone by that mapping's pull.
        for (int easy = 0; easy < numEasyParameters; ++easy)
        {
            const auto waiting = easyHandover.takeWrite(easy);

            if (waiting.target == 0)
                continue;

            setHostedParameter(plugin, waiting.target, waiting.value);

            // A pull on another thread has overtaken the write in the table.
            if (read(layerSlot::easyValue + easy) != waiting.value)
                easyHandover.pull(easy);
        }

        const auto pulls = easyHandover.takePulls();

        for (int easy = 0; easy < numEasyParameters; ++easy)
            if ((pulls >> easy & 1u) != 0)
                if (const int target = easyTarget(easy, numHostedParameters(plugin)); target > 0)
                    write(layerSlot::easyValue + easy, hostedParameter(plugin, target));
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
    // Unmapped Easy controls carry 0.
    if (index <= 0)
        return;

    for (int easy = 0; easy < numEasyParameters; ++easy)
    {
        if (decodeParamInt(read(layerSlot::easyMapping + easy)) == index)
        {
            // The value came from the instrument and must not be written back.
            const WriteThroughScope scope;
            owner.takeReportedValue(parameter(layerSlot::easyValue + easy), value);
            return;
        }
    }
}

void VirtualInstrument::audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&)
{
    if (const InstanceAccess::Use plugin(access); plugin)
    {
        for (int easy = 0; easy < numEasyParameters; ++easy)
            easyHandover.pull(easy);

        passOnEasyValues(*plugin.get());
    }

    needsDisplayUpdate.store(true);
}

//==============================================================================================================
// Banks and programs

void VirtualInstrument::chooseProgram(int id)
{
    if (instance == nullptr || id < 1)
        return;

    owner.multiControls().clearEasyTargetsOf(layer);

    if (const auto* row = findInstrument(pluginName); row != nullptr && row->programsByMidi)
        sendMidi(programSelectMessage(id));
    else
        instance->setCurrentProgram(id - 1);
}

void VirtualInstrument::chooseBank(int id)
{
    if (instance != nullptr && id >= 1)
        sendMidi(bankSelectMessage(id));
}

juce::String VirtualInstrument::getBankName()
{
    return instance != nullptr ? quorel::getBankName(*instance, pluginName) : juce::String();
}

void VirtualInstrument::readProgramNames(const juce::String& bankName)
{
    // The editor asks at every turn of a page.
    const auto folder = bankFolder(pluginName, bankName, owner.userStore());
    const auto time = folder.getLastModificationTime();

    if (folder != juce::File() && folder == programFolder && time == programFolderTime)
        return;

    quorel::readProgramNames(pluginName, bankName, owner.userStore(), programNames);
    programFolder = folder;
    programFolderTime = time;
}

} // namespace quorel
