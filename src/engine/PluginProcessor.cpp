// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PluginProcessor.h"

#include "engine/StateRestore.h"
#include "hosting/HostRate.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterNames.h"
#include "parameters/ParameterText.h"
#include "parameters/ParameterValueEntry.h"
#include "platform/FileOperations.h"
#include "platform/MessageThread.h"
#include "presets/PresetFiles.h"
#include "presets/StateChunk.h"

#include <utility>

namespace quorel
{

PluginProcessor::PluginProcessor(std::unique_ptr<UserStore> userStore, UserInteraction& interaction)
    : juce::AudioProcessor(BusesProperties()
                               .withInput("Input", juce::AudioChannelSet::stereo())
                               .withOutput("Output", juce::AudioChannelSet::stereo()))
    , user(interaction)
    , store(std::move(userStore))
{
    blockMidi.ensureSize(midiBufferCapacity);
    AudioGraph::Layers graphLayers{};

    for (int layer = 0; layer < numLayers; ++layer)
    {
        const auto i = static_cast<size_t>(layer);
        layers[i] = std::make_unique<VirtualInstrument>(*this, layer);
        graphLayers[i] = layers[i].get();
    }

    graph->setLayers(graphLayers);
    skipNextState.store(juce::String(juce::PluginHostType().getHostDescription()) == "ProTools");
    setNames(defaultPresetName, defaultFolderName);
    paths = readPaths(*store);
    scanner.loadOrScan(paths.pluginFolder, paths.pluginListFile, user);
    createDefaultPreset();
    resetAllParameters();
    table.clearDirty();
    edited.store(false);
    editedChanged.store(false);
    juce::MemoryBlock original;
    getStateInformation(original);
    comparison.presetLoaded(original);
    presetCommands.refreshIndex();
    startTimer(PresetTransition::timerMilliseconds);
}

PluginProcessor::~PluginProcessor()
{
    stopTimer();

    for (size_t layer = layers.size(); layer-- > 0;)
        layers[layer] = nullptr;
}

bool PluginProcessor::isBusesLayoutSupported(const BusesLayout& layouts) const
{
    return layouts.getMainInputChannelSet() == juce::AudioChannelSet::stereo() &&
           layouts.getMainOutputChannelSet() == juce::AudioChannelSet::stereo();
}

void PluginProcessor::prepareToPlay(double rate, int newBlockSize)
{
    setRateAndBufferSizeDetails(rate, newBlockSize);
    HostRate::store(rate, newBlockSize);
    sampleRate.store(rate, std::memory_order_relaxed);
    blockSize.store(newBlockSize, std::memory_order_relaxed);

    for (auto& layer : layers)
        layer->prepare(rate, newBlockSize);

    graph->initialise(rate);
    graph->reserve(2, newBlockSize);
}

//==============================================================================================================
// The block

void PluginProcessor::processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi)
{
    const double start = juce::Time::getMillisecondCounterHiRes();

    if (!transition.advanceBlock())
        return;

    buffer.clear();
    meter.setBlock(buffer.getNumSamples(), buffer.getNumChannels());
    playHead.updateFromHost();
    collectMidi(midi);
    graph->render(buffer, blockMidi, static_cast<float>(playHead.bpm()));
    buffer.applyGain(gains.masterGain() * transition.fadeGain.load());
    meter.addPeaks(buffer.getMagnitude(0, 0, buffer.getNumSamples()),
                   buffer.getMagnitude(1, 0, buffer.getNumSamples()));
    midi.clear();
    meter.addBlockTime(juce::Time::getMillisecondCounterHiRes() - start);
}

void PluginProcessor::collectMidi(juce::MidiBuffer& midi)
{
    constexpr int auditionNote = 60;

    if (auditionNoteOn.exchange(false))
        midi.addEvent(juce::MidiMessage::noteOn(1, auditionNote, static_cast<juce::uint8>(127)), 0);

    if (auditionNoteOff.exchange(false))
        midi.addEvent(juce::MidiMessage::noteOff(1, auditionNote), 0);

    midiMonitor.setBlock(midi);

    for (const auto event : midi)
    {
        if (event.numBytes < 3)
            continue;

        const int status = event.data[0] & 0xf0;
        const int first = juce::jmin<int>(event.data[1], 127);
        const int second = juce::jmin<int>(event.data[2], 127);

        if (status == 0x90 && second > 0)
        {
            midiMonitor.noteOn((event.data[0] & 0x0f) + 1, first, second);
        }
        else if (status == 0xb0)
        {
            midiMonitor.controller(first, second);
            controllers.controllerReceived(first, second);
        }
    }

    copyEvents(midi, blockMidi);

    if (panicRequested.exchange(false))
        addSilencingEvents(blockMidi);
}

//==============================================================================================================
// Parameters

const juce::String PluginProcessor::getParameterName(int index)
{
    ParameterNameSources sources;
    sources.fxType = [this](int block) { return fxTypeFromParameter(table.get(slot::fxType + block)); };
    sources.easyName = [this](int layer, int easy) { return getLayer(layer).easyName(easy); };
    return parameterName(index, sources);
}

const juce::String PluginProcessor::getParameterText(int index)
{
    return parameterText(index, textSources());
}

ParameterTextSources PluginProcessor::textSources()
{
    return {[this](int index) { return table.get(index); },
            [this](int layer, int easy) { return getLayer(layer).easyText(easy); }};
}

void PluginProcessor::editParameterValue(int index)
{
    const auto question = valueQuestion(index, textSources());

    if (!question)
        return;

    const float oldValue = table.get(index);
    const juce::WeakReference<PluginProcessor> self(this);
    const auto text = user.askText("Set new value", question->prompt, question->current);

    // The host may have closed the plug-in behind the open question.
    if (self == nullptr || text.isEmpty())
        return;

    if (const auto value = typedValue(index, text); value && *value != oldValue)
        setParameterFromUi(index, *value);
}

void PluginProcessor::setParameter(int index, float newValue)
{
    if (!ParameterTable::isSlot(index))
        return;

    const float value = clampUnit(newValue);
    const float oldValue = table.get(index);
    table.setRaw(index, value);
    table.tellLinked(index, value);

    if (index == slot::masterVolume || index == slot::masterMute)
        gains.setMaster(table.get(slot::masterVolume), table.get(slot::masterMute));
    else if (index >= slot::masterEq && index <= slot::masterEqEnd)
        eqSettings[masterEqUnit].refresh(*this, slot::masterEq);
    else if (index >= slot::multiAssignment && index < slot::multiKnob + numMultiTargets)
        multi.changed(index, oldValue, value);
    else if (isLayerParameter(index))
        parameterOfLayerWritten(index, value);

    table.markDirty(index);
}

void PluginProcessor::parameterOfLayerWritten(int index, float value)
{
    const int layer = layerOf(index);
    const int n = numberInLayer(index);

    if (n == layerSlot::volume || n == layerSlot::pan)
        gains.setLayer(layer, table.get(layerParameter(layer, layerSlot::volume)),
                       table.get(layerParameter(layer, layerSlot::pan)));
    else if (n >= layerSlot::sendLevel && n < layerSlot::sendLevel + numSends)
        gains.setSend(n - layerSlot::sendLevel, layer, value);
    else if (n >= layerSlot::eq && n <= layerSlot::eqEnd)
        eqSettings[static_cast<size_t>(layer)].refresh(*this, eqBase(layer));

    getLayer(layer).parameterWritten(n, value);
    dragRangeEnd(layer, n, value);
}

void PluginProcessor::dragRangeEnd(int layer, int n, float value)
{
    const bool inLayerRange = n >= layerSlot::keyMin && n <= layerSlot::velocityMax;
    const bool inZoneRange = n >= layerSlot::zoneKeys && n < layerSlot::zoneOn;

    if (!inLayerRange && !inZoneRange)
        return;

    // Ranges are stored in pairs, the lower end at the even number: the end just written takes the other
    // along.
    const bool isLowerEnd = n % 2 == 0;
    const int otherEnd = layerParameter(layer, isLowerEnd ? n + 1 : n - 1);
    const float other = table.get(otherEnd);

    if (isLowerEnd ? value > other : other > value)
        setParameterFromUi(otherEnd, value);
}

void PluginProcessor::setParameterFromUi(int index, float value)
{
    setParameterNotifyingHost(index, value);

    if (index > slot::view)
    {
        edited.store(true);
        editedChanged.store(true);
    }
}

//==============================================================================================================
// Layers and instruments

void PluginProcessor::chooseInstrument(int layer, const juce::PluginDescription* description)
{
    resetLayer(layer);
    auto& instrument = getLayer(layer);

    if (description == nullptr)
    {
        instrument.clearMissing();
        instrument.cancelLoad();

        if (instrument.hasInstance())
        {
            instrument.requestUnload();
            setParameter(layerParameter(layer, layerSlot::pluginNameText), 0.0f);
        }
    }
    else if (!instrument.hasInstance() || instrument.getPluginName() != description->name)
    {
        if (instrument.hasInstance())
            instrument.requestUnload();

        instrument.requestLoad(*description);
        writeParamText(*this, layerParameter(layer, layerSlot::pluginNameText), description->name,
                       slot::nameTextLength);
    }
    else
    {
        // The reset has emptied the name of an instrument that stays.
        instrument.cancelLoad();
        writeParamText(*this, layerParameter(layer, layerSlot::pluginNameText), description->name,
                       slot::nameTextLength);
    }

    requestEditorRefresh();
}

void PluginProcessor::scanPlugins(bool showProgress)
{
    scanner.scanPlugins(paths.pluginFolder, paths.pluginListFile, showProgress, user);
}

void PluginProcessor::changePluginFolder(const juce::File& folder)
{
    const auto path = juce::File::addTrailingSeparator(cutAtOstrand(folder.getFullPathName()));

    if (!writePluginFolder(*store, path))
        user.alert("Error", "The plug-in folder could not be stored: " + path);

    paths.pluginFolder =
        fileOfSetting(cutAtOstrand(store->read(pathSetting::key, pathSetting::pluginFolder)));
    scanPlugins(true);
}

//==============================================================================================================
// State and presets

juce::String PluginProcessor::getPresetName() const
{
    const juce::ScopedLock scopedLock(nameLock);
    return presetName;
}

juce::String PluginProcessor::getFolderName() const
{
    const juce::ScopedLock scopedLock(nameLock);
    return folderName;
}

void PluginProcessor::setNames(const juce::String& preset, const juce::String& folder)
{
    const juce::ScopedLock scopedLock(nameLock);
    presetName = preset;
    folderName = folder;
}

void PluginProcessor::getStateInformation(juce::MemoryBlock& destination)
{
    runOnMessageThread([&] { saveState(*this, destination); });
}

void PluginProcessor::setStateInformation(const void* data, int size)
{
    if (skipNextState.exchange(false))
        return;

    runOnMessageThread([&] { takeState(data, static_cast<size_t>(juce::jmax(0, size)), false); });
}

void PluginProcessor::restoreForComparison(const juce::MemoryBlock& bytes)
{
    takeState(bytes.getData(), bytes.getSize(), true);
}

void PluginProcessor::takeState(const void* data, size_t size, bool forComparison)
{
    // Bytes that can't be restored must not cost the user the sound that plays.
    StateChunk chunk;
    const auto status = readStateChunk(data, size, chunk);

    if (status == ChunkStatus::foreign)
        return;

    pendingChunk = juce::MemoryBlock(data, size);
    pendingIsComparison = forComparison;

    if (status == ChunkStatus::valid && requestUnloadOfAllLayers())
        transition.chunkRestoreTicks.store(PresetTransition::windowTicks);
    else
        restorePendingChunk();
}

bool PluginProcessor::requestUnloadOfAllLayers()
{
    bool windowWasOpen = false;

    for (auto& layer : layers)
    {
        layer->cancelLoad();

        if (layer->hasInstance())
            windowWasOpen = layer->requestUnload() || windowWasOpen;
    }

    if (windowWasOpen)
        transition.longerFadeWait.store(true);

    return windowWasOpen;
}

void PluginProcessor::restorePendingChunk()
{
    const juce::MemoryBlock chunk = std::move(pendingChunk);
    pendingChunk.reset();

    if (!std::exchange(pendingIsComparison, false))
    {
        restoreState(*this, chunk.getData(), chunk.getSize());
        // A project brings names of its own.
        presetCommands.refreshLists();
        return;
    }

    const auto preset = getPresetName();
    const auto folder = getFolderName();
    const auto bindings = readControllerTable();
    const bool wasEdited = edited.load();
    restoreState(*this, chunk.getData(), chunk.getSize());
    setNames(preset, folder);
    writeControllerTable(bindings);
    // Instruments report the values that they are given, as if somebody had turned their knobs.
    edited.store(wasEdited);
    editedChanged.store(false);
}

std::array<float, numControllers> PluginProcessor::readControllerTable() const
{
    std::array<float, numControllers> bindings{};

    for (int i = 0; i < numControllers; ++i)
        bindings[static_cast<size_t>(i)] = table.get(slot::controllerMap + i);

    return bindings;
}

void PluginProcessor::writeControllerTable(const std::array<float, numControllers>& bindings)
{
    for (int i = 0; i < numControllers; ++i)
        setParameter(slot::controllerMap + i, bindings[static_cast<size_t>(i)]);
}

bool PluginProcessor::requestPresetLoad(const juce::String& folder, const juce::String& preset)
{
    if (!transition.request())
        return false;

    setNames(preset, folder);

    // The instruments play on until the fade has reached silence; their windows go now, and are given their
    // time after the fade.
    for (auto& layer : layers)
    {
        layer->cancelLoad();

        if (layer->isWindowShowing())
        {
            layer->closeWindow();
            transition.longerFadeWait.store(true);
        }
    }

    return true;
}

bool PluginProcessor::loadPresetFile()
{
    presetLoadInProgress = true;
    const auto bindings = readControllerTable();
    resetAllParameters();
    juce::MemoryBlock bytes;
    const auto file = findPresetFile(paths.banksFolder, getFolderName(), getPresetName());
    const bool found = file != juce::File() && readWholeFile(file, bytes);

    if (found)
    {
        comparison.presetLoaded(bytes);
        setStateInformation(bytes.getData(), static_cast<int>(bytes.getSize()));
        edited.store(false);
        graph->requestReset();
    }
    else
    {
        user.alert({}, "Could not load Presert file: " + getFolderName() + "/" + getPresetName());
    }

    // A preset never changes the MIDI bindings, whatever its file holds.
    writeControllerTable(bindings);
    presetLoadInProgress = false;
    return found;
}

bool PluginProcessor::savePreset(const juce::String& name, bool overwrite)
{
    const auto preset = name.isNotEmpty() ? name : getPresetName();
    const auto folder = getFolderName();
    const auto file = presetFileFor(paths.banksFolder, folder, preset);

    if (file.existsAsFile() && !overwrite)
    {
        const juce::WeakReference<PluginProcessor> self(this);

        if (!user.confirm({}, "preset " + preset + " already exists. Replace ?") || self == nullptr)
            return false;
    }

    const auto oldName = getPresetName();
    setNames(preset, folder);
    juce::MemoryBlock bytes;
    getStateInformation(bytes);

    if (!replaceFile(file, bytes))
    {
        setNames(oldName, folder);
        user.alert({}, "Could not save Presert file: " + folder + "/" + preset);
        return false;
    }

    edited.store(false);
    comparison.presetSaved(bytes);
    library.markIndexStale();
    presetCommands.refreshLists();
    requestEditorRefresh();
    return true;
}

bool PluginProcessor::createEmptyPreset(const juce::String& name)
{
    const auto file = presetFileFor(paths.banksFolder, getFolderName(), name);
    juce::MemoryBlock bytes;
    getStateInformation(bytes);

    // The sound that plays is given up only once there is room for a file of its size.
    if (!replaceFile(file, bytes))
        return false;

    closeInstruments();
    setNames(name, getFolderName());
    resetAllParameters();
    savePreset({}, true);
    resetNames();

    // The manager's page stays; from every other one the multi-controls come to the front.
    constexpr float managerView = 0.2f;

    if (getCurrentView() != managerView)
        setCurrentView(0.3f);

    setParameter(slot::view, getCurrentView());
    return true;
}

void PluginProcessor::closeInstruments()
{
    for (auto& layer : layers)
    {
        layer->cancelLoad();
        layer->closeWindow();
        layer->clearMissing();

        if (layer->hasInstance())
            layer->unloadPlugin();

        layer->needsDisplayUpdate.store(true);
    }
}

void PluginProcessor::createDefaultPreset()
{
    if (paths.banksFolder == juce::File() || !paths.banksFolder.createDirectory())
        return;

    const auto file = presetFileFor(paths.banksFolder, defaultFolderName, defaultPresetName);

    if (file.existsAsFile() || !file.getParentDirectory().createDirectory())
        return;

    resetAllParameters();
    savePreset({}, true);
}

//==============================================================================================================
// The timer: its order is fixed, and a countdown that runs ends the tick

void PluginProcessor::timerCallback()
{
    using Countdown = PresetTransition::Countdown;
    table.deliverPending();
    playHead.deliverPending();
    comparison.update();

    if (const auto state = PresetTransition::tick(transition.loadDelay); state != Countdown::idle)
    {
        if (state == Countdown::elapsed)
            transition.loadRequested.store(true);

        return;
    }

    if (const auto state = PresetTransition::tick(transition.chunkRestoreTicks); state != Countdown::idle)
    {
        if (state == Countdown::elapsed)
            restorePendingChunk();

        return;
    }

    if (transition.settleDelay.load() > 0 && transition.settleDelay.fetch_sub(1) == 1)
    {
        transition.settleDelay.store(-1);
        transition.fadeInActive.store(true);
        transition.faded.store(false);
        transition.displayHold.store(false);
        requestEditorRefresh();
        updateHostDisplay();
    }

    if (transition.loadRequested.exchange(false))
    {
        closeInstruments();
        loadPresetFile();
        presetCommands.refreshLists();
        setParameter(slot::view, getCurrentView());
        transition.fadeOutActive.store(false);
        transition.settleDelay.store(PresetTransition::settleTicks);
    }

    meter.tick(preparedSampleRate());
}

} // namespace quorel
