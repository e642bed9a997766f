// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PluginProcessor.h"

#include "hosting/HostRate.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterNames.h"
#include "parameters/ParameterValueEntry.h"
#include "presets/PresetFiles.h"

#include <utility>

namespace quorel
{

namespace
{
/** The processor whose parameter this thread is writing; null for none. */
thread_local const PluginProcessor* writingThread = nullptr;

struct WriteScope
{
    explicit WriteScope(const PluginProcessor* processor)
        : outer(std::exchange(writingThread, processor))
    {
    }

    ~WriteScope() { writingThread = outer; }

    const PluginProcessor* const outer;
};
} // namespace

PluginProcessor::PluginProcessor(std::unique_ptr<UserStore> userStore, UserInteraction& interaction)
    : user(interaction)
    , installation(std::move(userStore), interaction)
{
    graph->setLayers(layers.forGraph());
    skipNextState.store(juce::String(juce::PluginHostType().getHostDescription()) == "ProTools");
    session.setNames(defaultPresetName, defaultFolderName);
    installation.loadOrScan();
    presetStorage.createDefault();
    resetAllParameters();
    table.clearDirty();
    session.restoreMark(false);
    juce::MemoryBlock original;
    getStateInformation(original);
    comparison.soundLoaded(original);
    library.marks = PresetMarks(presetMarksFile(getPaths()));
    presetCommands.refreshIndex();
    startTimer(SoundChange::timerMilliseconds);
}

PluginProcessor::~PluginProcessor()
{
    stopTimer();
    layers.destroy();
}

void PluginProcessor::prepareToPlay(double rate, int newBlockSize)
{
    setRateAndBufferSizeDetails(rate, newBlockSize);
    HostRate::store(rate);
    sampleRate.store(rate, std::memory_order_relaxed);
    blockSize.store(newBlockSize, std::memory_order_relaxed);
    layers.prepare(rate, newBlockSize);
    graph->initialise(rate);
    graph->reserve(2, newBlockSize);
}

void PluginProcessor::processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi)
{
    const double start = juce::Time::getMillisecondCounterHiRes();
    auto& fade = soundChange.getFade();

    // Some hosts render on the message thread: what controllers move there is no step of the user's.
    const UndoHistory::Pause pause;

    if (!fade.advanceBlock(buffer.getNumSamples(), preparedSampleRate()))
        return;

    buffer.clear();
    meter.setBlock(buffer.getNumSamples(), buffer.getNumChannels());
    playHead.updateFromHost();
    const auto& layerMidi = midiInput.collect(midi, buffer.getNumSamples(), preparedSampleRate());
    graph->render(buffer, layerMidi, static_cast<float>(playHead.bpm()));
    applyMasterGain(buffer);
    meter.addPeaks(buffer.getMagnitude(0, 0, buffer.getNumSamples()),
                   buffer.getMagnitude(1, 0, buffer.getNumSamples()));
    midi.clear();
    meter.addBlockTime(juce::Time::getMillisecondCounterHiRes() - start);
}

void PluginProcessor::applyMasterGain(juce::AudioBuffer<float>& buffer)
{
    const auto& fade = soundChange.getFade();
    const float after = gains.masterGain() * fade.gain();

    if (fade.gainBefore() == fade.gain())
        buffer.applyGain(after);
    else
        buffer.applyGainRamp(0, buffer.getNumSamples(), gains.masterGain() * fade.gainBefore(), after);
}

void PluginProcessor::timerCallback()
{
    table.deliverPending();
    table.takeUntold([this](int index) { tellHost(index); });
    playHead.deliverPending();
    comparison.update();

    if (soundChange.tick())
        meter.tick(preparedSampleRate());
}

juce::AudioProcessorEditor* PluginProcessor::createEditor()
{
    return editorFactory ? editorFactory(*this) : nullptr;
}

bool PluginProcessor::hasEditor() const
{
    return editorFactory != nullptr;
}

const juce::String PluginProcessor::getProgramName(int)
{
    return getPresetName();
}

void PluginProcessor::setPlayHead(juce::AudioPlayHead* hostPlayHead)
{
    playHead.setHostPlayHead(hostPlayHead);
}

void PluginProcessor::getStateInformation(juce::MemoryBlock& destination)
{
    soundChange.save(destination);
}

void PluginProcessor::setStateInformation(const void* data, int size)
{
    if (!skipNextState.exchange(false))
        soundChange.restore(data, static_cast<size_t>(juce::jmax(0, size)));
}

void PluginProcessor::setNames(const juce::String& preset, const juce::String& folder)
{
    session.setNames(preset, folder);
}

void PluginProcessor::chooseInstrument(int layer, const juce::PluginDescription* description)
{
    layers.choose(layer, description);
}

//==============================================================================================================
// Parameters

float PluginProcessor::getParameter(int index)
{
    const auto awaited = soundChange.awaitedValue(index);
    return awaited ? *awaited : table.get(index);
}

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

juce::String PluginProcessor::getParameterText(int index, float value)
{
    auto sources = textSources();
    sources.value = [&, present = sources.value](int i) { return i == index ? value : present(i); };
    return parameterText(index, sources);
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

    const WriteScope scope(this);
    const float value = clampUnit(newValue);
    const float oldValue = table.exchange(index, value);

    if (UndoHistory::isRecording(*this))
        undo.parameterWritten(index, oldValue, value);

    table.tellLinked(index);

    if (index == slot::masterVolume || index == slot::masterMute)
        gains.refreshMaster(*this);
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
        gains.refreshLayer(*this, layer);
    else if (n >= layerSlot::sendLevel && n < layerSlot::sendLevel + numSends)
        gains.refreshSend(*this, n - layerSlot::sendLevel, layer);
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

void PluginProcessor::beginUserGesture(int index)
{
    undo.beginDrag();
    beginParameterChangeGesture(index);
}

void PluginProcessor::endUserGesture(int index)
{
    endParameterChangeGesture(index);
    undo.endDrag();
}

void PluginProcessor::setParameterFromUi(int index, float value)
{
    if (writingThread == this)
    {
        writeFollowingParameter(index, value);
    }
    else
    {
        const UndoHistory::Recording recording(*this);
        setParameter(index, value);
        tellHost(index);
    }

    // Notes that sound when a layer is switched off would hang until it is on again.
    if (isLayerParameter(index) && numberInLayer(index) == layerSlot::on && value == 0.0f)
        getLayer(layerOf(index)).requestAllNotesOff();

    if (index > slot::view)
        session.markEdited();
}

void PluginProcessor::writeFollowingParameter(int index, float value)
{
    // Where the first write is the host's own, JUCE's VST client takes the next change that it hears of for the
    // host's, and passes on that one's echo in its place.
    setParameter(index, value);
    table.markUntold(index);
}

void PluginProcessor::takeReportedValue(int index, float value)
{
    const UndoHistory::Pause pause;
    setParameterFromUi(index, value);
}

void PluginProcessor::tellHost(int index)
{
    const float told = table.get(index);
    sendParamChangeMessageToListeners(index, told);

    // Another thread may have written and told meanwhile, before this one came to tell: never end on the older.
    if (table.get(index) != told)
        table.markUntold(index);
}

} // namespace quorel
