// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/VirtualInstrument.h"

#include "hosting/HostRate.h"
#include "hosting/HostedParameters.h"
#include "hosting/InstrumentBanks.h"
#include "hosting/InstrumentTable.h"
#include "hosting/PluginFileCheck.h"
#include "midi/MidiMonitor.h"
#include "parameters/MultiControls.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"

namespace quorel
{

namespace
{
constexpr int tickMilliseconds = 50;
constexpr int loadTicks = 3;
constexpr int unloadTicks = 10;
constexpr double fallbackSampleRate = 44100.0;
constexpr int fallbackBlockSize = 512;
constexpr int warmUpSamples = 32;
/** 516 events: twice what a silenced layer is sent, and few enough for instruments with small queues. */
constexpr int warmUpChannels = 4;
} // namespace

VirtualInstrument::VirtualInstrument(LayerOwner& layerOwner, int layerIndex)
    : owner(layerOwner)
    , layer(layerIndex)
    , adaptor(access, linkedValues)
{
    layerMidi.ensureSize(midiBufferCapacity);
    startTimer(tickMilliseconds);
}

VirtualInstrument::~VirtualInstrument()
{
    stopTimer();
    removeAllChangeListeners();

    if (instance != nullptr)
    {
        closeWindow();
        unloadPending.store(true);
        suspendAndRelease();
        destroyInstance();
    }
}

int VirtualInstrument::parameter(int n) const noexcept
{
    return layerParameter(layer, n);
}

//==============================================================================================================
// Coming and going

bool VirtualInstrument::requestUnload()
{
    if (unloadPending.exchange(true))
        return unloadDeferred;

    if (isWindowShowing())
    {
        closeWindow();
        unloadCountdown = unloadTicks;
        unloadDeferred = true;
        return true;
    }

    unloadPlugin();
    return false;
}

void VirtualInstrument::requestLoad(const juce::PluginDescription& description)
{
    pendingDescription = description;
    loadCountdown = loadTicks;
}

void VirtualInstrument::cancelLoad()
{
    if (loadCountdown >= 0)
    {
        loadCountdown = -1;
        loading.store(false);
    }
}

void VirtualInstrument::timerCallback()
{
    for (auto& value : linkedValues)
        value.deliverPending();

    // One step a tick: a load waits until an unload is through.
    if (unloadCountdown > 0)
    {
        --unloadCountdown;
    }
    else if (unloadCountdown == 0)
    {
        unloadCountdown = -1;
        unloadPending.store(true);
        unloadPlugin();
        unloadDeferred = false;
        owner.requestEditorRefresh();
    }
    else if (loadCountdown > 0)
    {
        loading.store(true);
        --loadCountdown;
    }
    else if (loadCountdown == 0)
    {
        loadCountdown = -1;
        loadPlugin(pendingDescription);
        owner.requestEditorRefresh();
    }
    else if (!unloadPending.load() && !loading.load() && instance != nullptr)
    {
        watchProgram();
    }
}

void VirtualInstrument::watchProgram()
{
    if (const int program = instance->getCurrentProgram(); program != currentProgram)
    {
        currentProgram = program;
        needsDisplayUpdate.store(true);
    }

    if (const auto name = instance->getProgramName(currentProgram); name != programName)
    {
        programName = name;
        needsDisplayUpdate.store(true);
    }
}

void VirtualInstrument::suspendAndRelease()
{
    access.waitUntilUnused();
    instance->suspendProcessing(true);
    instance->releaseResources();
    instance->removeListener(this);
}

void VirtualInstrument::destroyInstance()
{
    access.publish(nullptr);
    access.waitUntilUnused();
    instance = nullptr;
}

void VirtualInstrument::unloadPlugin()
{
    if (instance != nullptr)
    {
        closeWindow();
        unloadPending.store(true);
        bankNames.clear();
        parameterNames.clear();
        suspendAndRelease();
        chunkSize = 0;
        pluginName.clear();
        destroyInstance();
        owner.multiControls().clearEasyTargetsOf(layer);

        for (int easy = 0; easy < numEasyParameters; ++easy)
            write(layerSlot::easyValue + easy, 0.5f);
    }

    pluginName.clear();
    pluginIdentifier.clear();
    layoutName.clear();
    unloadPending.store(false);
}

void VirtualInstrument::setMissing(const juce::String& name)
{
    missingPluginName = name;
    pluginMissing = true;
}

void VirtualInstrument::clearMissing()
{
    missingPluginName.clear();
    pluginMissing = false;
}

juce::String VirtualInstrument::createInstance(const juce::PluginDescription& description, int blockSize)
{
    // The list of known instruments may be older than a copy that was cut short since.
    if (!isWholePluginFile(juce::File::createFileWithoutCheckingPath(description.fileOrIdentifier)))
        return "The file is incomplete";

    juce::AudioPluginFormatManager formats;
    formats.addFormat(new juce::VSTPluginFormat());
    juce::String error;
    instance = formats.createPluginInstance(description, fallbackSampleRate, blockSize, error);
    return error;
}

bool VirtualInstrument::loadPlugin(const juce::PluginDescription& description)
{
    loading.store(true);

    if (pluginName == description.name)
    {
        loading.store(false);
        return true;
    }

    if (instance != nullptr)
    {
        closeWindow();
        suspendAndRelease();
        destroyInstance();
    }

    const int blockSize = owner.preparedBlockSize() > 0 ? owner.preparedBlockSize() : fallbackBlockSize;
    const auto error = createInstance(description, blockSize);

    if (instance == nullptr || error.isNotEmpty())
    {
        giveUpLoading(description.name, error);
        return false;
    }

    adopt(description);
    chunkSize = measureState();
    owner.multiControls().clearEasyTargetsOf(layer);
    writeEasyMapping(findInstrument(pluginName));
    applyDrumPage();

    const double rate = owner.preparedSampleRate() > 0.0 ? owner.preparedSampleRate() : fallbackSampleRate;
    prepareInstance(rate, blockSize);

    if (HostRate::sampleRate() > 0.0)
        prepareInstance(HostRate::sampleRate(), HostRate::blockSize());

    instance->setPlayHead(&owner.layerPlayHead());
    pluginIdentifier = description.createIdentifierString();
    instance->addListener(this);
    readProgramsAndBanks();
    readParameterNames();

    warmUp();
    access.publish(instance.get());
    loading.store(false);
    needsDisplayUpdate.store(true);
    return true;
}

void VirtualInstrument::giveUpLoading(const juce::String& name, const juce::String& error)
{
    instance = nullptr;
    setMissing(name);
    chunkSize = 0;
    pluginName.clear();
    loading.store(false);
    owner.userInteraction().alert("Error", "Sorry, cannot load " + name + "\n\n" + error);
}

void VirtualInstrument::adopt(const juce::PluginDescription& description)
{
    clearMissing();
    forgetMissingState();
    pluginName = description.name;
    pluginFile = juce::File::createFileWithoutCheckingPath(description.fileOrIdentifier);
    layoutName.clear();
    drumInstrument = pluginName.startsWith("Dorvik");
}

int VirtualInstrument::measureState()
{
    const auto* row = findInstrument(pluginName);

    if (row == nullptr)
        return 0;

    const int numPrograms = instance->getNumPrograms();
    juce::MemoryBlock state;
    instance->getStateInformation(state);

    // One that reports no state is allowed, for each program, a word for each parameter and eight more.
    return state.getSize() > 0 ? static_cast<int>(state.getSize())
                               : (row->parametersPerProgram + 8) * numPrograms * 4;
}

void VirtualInstrument::readProgramsAndBanks()
{
    currentProgram = instance->getCurrentProgram();
    programName = instance->getProgramName(currentProgram);
    bankNames.clear();
    listBanks(pluginName, owner.userStore(), bankNames);
    programNames.clear();
}

void VirtualInstrument::prepareInstance(double sampleRate, int blockSize)
{
    instance->setRateAndBufferSizeDetails(sampleRate, blockSize);
    instance->prepareToPlay(sampleRate, blockSize);
}

void VirtualInstrument::warmUp()
{
    // JUCE's instance swaps its MIDI buffer with the one it is handed, and grows its list of events on
    // demand. Two blocks of events that make no sound bring both buffers and the list to their full size
    // here, so that no later block has to take memory.
    juce::AudioBuffer<float> buffer(
        juce::jmax(2, instance->getTotalNumInputChannels(), instance->getTotalNumOutputChannels()),
        warmUpSamples);

    for (int round = 0; round < 2; ++round)
    {
        hostedMidi.ensureSize(midiBufferCapacity);
        addSilencingEvents(hostedMidi, warmUpChannels);
        buffer.clear();
        instance->processBlock(buffer, hostedMidi);
    }

    hostedMidi.clear();
}

void VirtualInstrument::prepare(double sampleRate, int blockSize)
{
    const InstanceAccess::Use plugin(access);

    if (plugin)
    {
        plugin->setRateAndBufferSizeDetails(sampleRate, blockSize);
        plugin->prepareToPlay(sampleRate, blockSize);
    }
}

void VirtualInstrument::readParameterNames()
{
    parameterNames.clear();
    longestParameterName = 0;
    const int count = numHostedParameters(*instance);

    for (int i = 0; i < count; ++i)
    {
        auto name = hostedParameterName(*instance, i);

        if (name.isEmpty())
            name = "---";

        longestParameterName = juce::jmax(longestParameterName, name.length());
        parameterNames.add(name);
    }
}

//==============================================================================================================
// Running

void VirtualInstrument::sendMidi(const juce::MidiMessage& message) noexcept
{
    const auto* bytes = message.getRawData();
    const auto size = static_cast<juce::uint32>(juce::jlimit(0, 3, message.getRawDataSize()));
    juce::uint32 packed = size << 24;

    for (juce::uint32 i = 0; i < size; ++i)
        packed |= static_cast<juce::uint32>(bytes[i]) << (8 * i);

    pendingMidi.store(packed);
}

LayerMidiSettings VirtualInstrument::currentMidiSettings() const noexcept
{
    auto settings = midiParameters.snapshot();
    settings.drumMode = read(layerSlot::drumMode) == 1.0f;
    settings.freeControllerBlock = owner.readParameter(slot::freeControllerBlock + layer) != 0.0f;

    for (int zone = 0; zone < numZones; ++zone)
        settings.zoneOn[static_cast<size_t>(zone)] = read(layerSlot::zoneOn + zone) != 0.0f;

    return settings;
}

void VirtualInstrument::processBlock(juce::AudioBuffer<float>& buffer, const juce::MidiBuffer& incoming)
{
    const InstanceAccess::Use plugin(access);

    if (loading.load() || unloadPending.load())
        return;

    layerMidi.clear();
    const bool silenceFirst = allNotesOffRequested.exchange(false);
    filterLayerMidi(currentMidiSettings(), zoneHeldNotes, silenceFirst, incoming, layerMidi);

    if (const auto packed = pendingMidi.exchange(0); packed != 0)
    {
        const juce::uint8 bytes[3] = {static_cast<juce::uint8>(packed & 0xff),
                                      static_cast<juce::uint8>((packed >> 8) & 0xff),
                                      static_cast<juce::uint8>((packed >> 16) & 0xff)};
        layerMidi.addEvent(bytes, static_cast<int>(packed >> 24), 0);
    }

    if (plugin)
        renderInstance(*plugin.get(), buffer);
}

void VirtualInstrument::renderInstance(juce::AudioPluginInstance& plugin, juce::AudioBuffer<float>& buffer)
{
    // JUCE's VST2 instance leaves it to its host to heed this lock and the suspended flag. Whoever holds the
    // lock is about to stop the instrument, so it isn't worth waiting for.
    const juce::ScopedTryLock tryLock(plugin.getCallbackLock());

    if (!tryLock.isLocked() || plugin.isSuspended())
        return;

    const int outputs = plugin.getTotalNumOutputChannels();
    const int needed = juce::jmax(2, plugin.getTotalNumInputChannels(), outputs);
    const int samples = buffer.getNumSamples();
    copyEvents(layerMidi, hostedMidi);

    if (needed <= buffer.getNumChannels())
    {
        plugin.processBlock(buffer, hostedMidi);
    }
    else
    {
        wideBuffer.setSize(needed, samples, false, false, true);
        wideBuffer.clear();
        plugin.processBlock(wideBuffer, hostedMidi);

        for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
            buffer.copyFrom(channel, 0, wideBuffer, channel, 0, samples);
    }

    // A mono instrument sounds on both sides.
    if (outputs == 1)
        buffer.copyFrom(1, 0, buffer, 0, 0, samples);
    else if (outputs == 0)
        buffer.clear();
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
    quorel::readProgramNames(pluginName, bankName, owner.userStore(), programNames);
}

} // namespace quorel
