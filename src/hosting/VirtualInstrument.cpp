// SPDX-License-Identifier: GPL-3.0-or-later
// How a layer's instrument comes and goes.
#include "hosting/VirtualInstrument.h"

#include "hosting/HostedParameters.h"
#include "hosting/InstrumentBanks.h"
#include "hosting/InstrumentTable.h"
#include "hosting/LoadNote.h"
#include "hosting/PluginFileCheck.h"
#include "midi/MidiMonitor.h"
#include "parameters/MultiControls.h"
#include "platform/UserPaths.h"

#include <utility>

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

void prepareInstance(juce::AudioPluginInstance& plugin, double sampleRate, int blockSize)
{
    plugin.setRateAndBufferSizeDetails(sampleRate, blockSize);
    plugin.prepareToPlay(sampleRate, blockSize);
}

/** Makes an instance, or says why it can't. */
std::unique_ptr<juce::AudioPluginInstance> createInstance(const juce::PluginDescription& description,
                                                          int blockSize, juce::String& error)
{
    // The list of known instruments may be older than a copy that was cut short since.
    if (!isWholePluginFile(juce::File::createFileWithoutCheckingPath(description.fileOrIdentifier)))
    {
        error = "The file is incomplete";
        return nullptr;
    }

    juce::AudioPluginFormatManager formats;
    formats.addFormat(new juce::VSTPluginFormat());
    auto made = formats.createPluginInstance(description, fallbackSampleRate, blockSize, error);
    return error.isEmpty() ? std::move(made) : nullptr;
}
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
    closeWindow();
    destroyInstance();
}

int VirtualInstrument::parameter(int n) const noexcept
{
    return layerParameter(layer, n);
}

bool VirtualInstrument::enter(LayerEvent event)
{
    const auto next = nextLayerState(state.load(), event);

    if (next)
        state.store(*next);

    return next.has_value();
}

//==============================================================================================================
// Going

void VirtualInstrument::cancelPending()
{
    ++change;
    pendingLoad.reset();
    ticksLeft = 0;
    closeWindow();
    pendingMidi.store(0);
    allNotesOffRequested.store(false);
    silencedTicks.store(0);
    stateLoss.store(StateLoss::none);
    missingPluginName.clear();
    keep(nullptr, false);
}

void VirtualInstrument::destroyInstance()
{
    access.publish(nullptr);
    // Also without an instrument: what follows is the block's memory, too.
    access.waitUntilUnused();
    easyHandover.clear();

    if (instance != nullptr)
    {
        instance->suspendProcessing(true);
        instance->releaseResources();
        instance->removeListener(this);
        instance = nullptr;
    }
}

void VirtualInstrument::unloadPlugin()
{
    const bool wasThere = instance != nullptr;
    cancelPending();
    destroyInstance();
    enter(LayerEvent::emptied);
    bankNames.clear();
    parameterNames.clear();
    pluginName.clear();
    pluginIdentifier.clear();
    layoutName.clear();

    if (!wasThere)
        return;

    owner.multiControls().clearEasyTargetsOf(layer);

    for (int easy = 0; easy < numEasyParameters; ++easy)
        write(layerSlot::easyValue + easy, 0.5f);
}

bool VirtualInstrument::requestUnload()
{
    if (isWindowShowing() && enter(LayerEvent::windowClosed))
    {
        closeWindow();
        ticksLeft = unloadTicks;
    }

    switch (state.load())
    {
    case LayerState::leaving:
        pendingLoad.reset();
        setNamed(false);
        return true;
    case LayerState::loading:
    case LayerState::playing:
        unloadPlugin();
        return false;
    default:
        return false;
    }
}

void VirtualInstrument::keepInstrument()
{
    if (enter(LayerEvent::kept))
    {
        pendingLoad.reset();
        setNamed(findInstrument(pluginName) != nullptr);
    }
}

void VirtualInstrument::setMissing(const juce::String& name)
{
    unloadPlugin();
    enter(LayerEvent::notFound);
    missingPluginName = name;
    setNamed(name.isNotEmpty());
}

void VirtualInstrument::clearMissing()
{
    if (state.load() == LayerState::missing || state.load() == LayerState::failed)
        unloadPlugin();
}

//==============================================================================================================
// Coming

void VirtualInstrument::requestLoad(const juce::PluginDescription& description)
{
    if (instance != nullptr && pluginName == description.name)
    {
        keepInstrument();
        return;
    }

    if (!requestUnload())
    {
        cancelPending();
        enter(LayerEvent::loadAsked);
        ticksLeft = loadTicks;
    }

    pendingLoad = description;
    setNamed(findInstrument(description.name) != nullptr);
}

void VirtualInstrument::cancelLoad()
{
    if (state.load() == LayerState::loading || pendingLoad)
        requestUnload();
}

void VirtualInstrument::timerCallback()
{
    for (auto& value : linkedValues)
        value.deliverPending();

    tellOfLostState();

    if (ticksLeft > 0)
    {
        --ticksLeft;
        return;
    }

    const auto next = std::exchange(pendingLoad, std::nullopt);

    switch (state.load())
    {
    case LayerState::leaving:
        unloadPlugin();

        if (next)
            requestLoad(*next);

        owner.requestEditorRefresh();
        break;
    case LayerState::loading:
        // Without a description it is being made, and the instrument runs the message loop.
        if (next)
        {
            makeInstrument(*next);
            owner.requestEditorRefresh();
        }

        break;
    case LayerState::playing:
        watchInstrument();
        break;
    default:
        break;
    }
}

bool VirtualInstrument::loadPlugin(const juce::PluginDescription& description)
{
    if (instance != nullptr && pluginName == description.name)
    {
        keepInstrument();
        return true;
    }

    return makeInstrument(description);
}

bool VirtualInstrument::makeInstrument(const juce::PluginDescription& description)
{
    enter(LayerEvent::loadBegun);
    cancelPending();
    destroyInstance();
    pluginName.clear();
    setNamed(findInstrument(description.name) != nullptr);

    const int begun = change;
    const LoadNote note(fileOfSetting(owner.userStore().read(pathSetting::key, pathSetting::pluginList)),
                        description.fileOrIdentifier);
    juce::String error;
    auto made = createInstance(
        description, owner.preparedBlockSize() > 0 ? owner.preparedBlockSize() : fallbackBlockSize, error);

    if (change != begun)
        return false;

    if (made == nullptr)
    {
        enter(LayerEvent::loadFailed);
        missingPluginName = description.name;
        owner.userInteraction().alert("Error", "Sorry, cannot load " + description.name + "\n\n" + error);
        return false;
    }

    instance = std::move(made);
    adopt(description);
    prepareAndPublish();
    enter(LayerEvent::loadDone);
    needsDisplayUpdate.store(true);
    return true;
}

void VirtualInstrument::adopt(const juce::PluginDescription& description)
{
    pluginName = description.name;
    pluginFile = juce::File::createFileWithoutCheckingPath(description.fileOrIdentifier);
    pluginIdentifier = description.createIdentifierString();
    layoutName.clear();
    drumInstrument = pluginName.startsWith("Dorvik");
    const auto* row = findInstrument(pluginName);

    if (row != nullptr)
        keepStateOf(*instance);

    owner.multiControls().clearEasyTargetsOf(layer);
    writeEasyMapping(row);
    applyDrumPage();
    readProgramsAndBanks();
    readParameterNames();
}

void VirtualInstrument::readProgramsAndBanks()
{
    currentProgram = instance->getCurrentProgram();
    programName = instance->getProgramName(currentProgram);
    bankNames.clear();
    listBanks(pluginName, owner.userStore(), bankNames);
    programNames.clear();
    programFolder = juce::File();
}

void VirtualInstrument::readParameterNames()
{
    parameterNames.clear();
    longestParameterName = 0;
    const int count = numHostedParameters(*instance);

    for (int i = 0; i < count; ++i)
    {
        auto name = hostedParameterName(*instance, i);

        if (name.trim().isEmpty())
            name = namelessParameter;

        longestParameterName = juce::jmax(longestParameterName, name.length());
        parameterNames.add(name);
    }
}

void VirtualInstrument::watchInstrument()
{
    passOnEasyValues(*instance);

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

    if (const bool silenced = isSilenced(); silenced != showsSilenced)
    {
        showsSilenced = silenced;
        needsDisplayUpdate.store(true);
    }

    if (showsSilenced)
        silencedTicks.fetch_sub(1);
}

//==============================================================================================================
// Preparing

void VirtualInstrument::prepareAndPublish()
{
    double preparedRate = -1.0;
    int preparedBlock = -1;

    for (;;)
    {
        {
            const std::lock_guard<std::mutex> guard(prepareLock);

            // Once it is published, the host's thread prepares it; so nothing may change in between.
            if (wantedRate == preparedRate && wantedBlock == preparedBlock)
            {
                // Not before the warm-up: the play head belongs to the block.
                instance->setPlayHead(&owner.layerPlayHead());
                instance->addListener(this);
                access.publish(instance.get());
                return;
            }

            preparedRate = wantedRate;
            preparedBlock = wantedBlock;
        }
        const int block = preparedBlock > 0 ? preparedBlock : fallbackBlockSize;
        prepareInstance(*instance, preparedRate > 0.0 ? preparedRate : fallbackSampleRate, block);
        reserveWideBuffer(*instance, block);
        warmUp();
    }
}

void VirtualInstrument::prepare(double sampleRate, int blockSize)
{
    std::unique_lock<std::mutex> guard(prepareLock);
    wantedRate = sampleRate;
    wantedBlock = blockSize;
    const InstanceAccess::Use plugin(access);
    guard.unlock();

    if (plugin)
    {
        prepareInstance(*plugin.get(), sampleRate, blockSize);
        reserveWideBuffer(*plugin.get(), blockSize);
    }
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
        runInstance(*instance, buffer);
    }

    hostedMidi.clear();
}

} // namespace quorel
