// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/AudioGraph.h"
#include "engine/BlockMeter.h"
#include "engine/CustomPlayHead.h"
#include "engine/EditorRequests.h"
#include "engine/Installation.h"
#include "engine/InstrumentTraits.h"
#include "engine/LayerRack.h"
#include "engine/MidiInput.h"
#include "engine/OriginalComparison.h"
#include "engine/PresetCommands.h"
#include "engine/PresetStorage.h"
#include "engine/Session.h"
#include "engine/SoundChange.h"
#include "engine/TapTempo.h"
#include "engine/UndoHistory.h"
#include "parameters/ControllerMap.h"
#include "parameters/MultiControls.h"
#include "parameters/ParameterDisplay.h"
#include "parameters/ParameterTable.h"
#include "presets/PresetLibrary.h"

#include <atomic>
#include <functional>
#include <memory>

namespace quorel
{

/** The instrument as its host sees it, and the meeting point of its parts. Parameters are written through
    `setParameter`, from any thread; unless stated otherwise, operations are the message thread's. */
class PluginProcessor : public InstrumentTraits,
                        public juce::ChangeBroadcaster,
                        public LayerOwner,
                        private juce::Timer
{
public:
    /** `interaction` outlives the processor. */
    PluginProcessor(std::unique_ptr<UserStore> userStore, UserInteraction& interaction);
    ~PluginProcessor() override;

    /** Makes the editor; without one the host is told that there is none. Set before the host asks. */
    std::function<juce::AudioProcessorEditor*(PluginProcessor&)> editorFactory;

    //==========================================================================================================
    // juce::AudioProcessor

    using juce::AudioProcessor::getParameterName;
    using juce::AudioProcessor::getParameterText;
    using juce::AudioProcessor::processBlock;

    void prepareToPlay(double rate, int newBlockSize) override;
    void processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) override;
    juce::AudioProcessorEditor* createEditor() override;
    bool hasEditor() const override;
    const juce::String getProgramName(int program) override;
    const juce::String getParameterName(int index) override;
    const juce::String getParameterText(int index) override;
    /** What it would read at another value, 0 to 1. */
    juce::String getParameterText(int index, float value);
    /** The host's view: from the moment a sound is asked for, its values. `readParameter` gives the present ones. */
    float getParameter(int index) override;
    void setParameter(int index, float value) override;
    void setPlayHead(juce::AudioPlayHead* hostPlayHead) override;
    /** See `SoundChange::save`: any thread but the audio thread. */
    void getStateInformation(juce::MemoryBlock& destination) override;
    /** See `SoundChange::restore`: any thread but the audio thread. */
    void setStateInformation(const void* data, int size) override;

    //==========================================================================================================
    // LayerOwner

    float readParameter(int index) const noexcept override { return table.get(index); }

    void writeParameter(int index, float value) override { setParameter(index, value); }

    void writeParameterNotifyingHost(int index, float value) override { setParameterFromUi(index, value); }

    void writeFollowingParameter(int index, float value) override;

    /** What an instrument does by itself, or in its own window, is no step of the user's here. */
    void takeReportedValue(int index, float value) override;

    MultiControls& multiControls() override { return multi; }

    juce::AudioPlayHead& layerPlayHead() override { return playHead; }

    UserInteraction& userInteraction() override { return user; }

    UserStore& userStore() override { return installation.getStore(); }

    double preparedSampleRate() const noexcept override { return sampleRate.load(std::memory_order_relaxed); }

    int preparedBlockSize() const noexcept override { return blockSize.load(std::memory_order_relaxed); }

    void requestEditorRefresh() noexcept override { editorRequests.requestRefresh(); }

    //==========================================================================================================
    // Parameters

    /** What every gesture of the user and every MIDI-mapped change goes through. Tells the host at once, but for
        a write that follows from another one: of that it hears from the timer. Any thread. */
    void setParameterFromUi(int index, float value);
    /** The user takes hold of a control, and lets it go: one gesture to the host, and one step to undo. Not for
        slots that the host doesn't know. Message thread. */
    void beginUserGesture(int index);
    void endUserGesture(int index);
    /** Asks the user for a value of the parameter and writes it. A value out of range is dropped without a
        word; parameters below the layers but the master volume take none. */
    void editParameterValue(int index);
    /** Writes every default. */
    void resetAllParameters();
    /** Writes a layer's defaults; its Easy values and its program stay. `layer` is 0 to 3. */
    void resetLayer(int layer);
    /** Writes preset and folder name into their text slots. */
    void resetNames();

    //==========================================================================================================
    // The parts

    /** `layer` is 0 to 3. */
    VirtualInstrument& getLayer(int layer) { return layers[layer]; }

    /** See `LayerRack::choose`. */
    void chooseInstrument(int layer, const juce::PluginDescription* description);

    /** See `Session`; these three from any thread. */
    juce::String getPresetName() const { return session.getPresetName(); }

    juce::String getFolderName() const { return session.getFolderName(); }

    void setNames(const juce::String& preset, const juce::String& folder);

    const UserPaths& getPaths() const noexcept { return installation.getPaths(); }

    const juce::KnownPluginList& getKnownPlugins() const noexcept { return installation.getKnownPlugins(); }

    Installation& getInstallation() noexcept { return installation; }

    LayerRack& getLayers() noexcept { return layers; }

    AudioGraph& getGraph() noexcept { return *graph; }

    ParameterTable& getParameterTable() noexcept { return table; }

    const MixGains& getGains() const noexcept { return gains; }

    ControllerMap& getControllerMap() noexcept { return controllers; }

    CustomPlayHead& getTempo() noexcept { return playHead; }

    TapTempo& getTapTempo() noexcept { return tapTempo; }

    MidiInput& getMidiInput() noexcept { return midiInput; }

    const BlockMeter& getMeter() const noexcept { return meter; }

    EditorRequests& getEditorRequests() noexcept { return editorRequests; }

    Session& getSession() noexcept { return session; }

    SoundChange& getSoundChange() noexcept { return soundChange; }

    PresetStorage& getPresetStorage() noexcept { return presetStorage; }

    PresetLibrary& getPresetLibrary() noexcept { return library; }

    PresetCommands& getPresetCommands() noexcept { return presetCommands; }

    OriginalComparison& getOriginalComparison() noexcept { return comparison; }

    UndoHistory& getUndo() noexcept { return undo; }

private:
    ParameterTextSources textSources();
    void timerCallback() override;
    void applyMasterGain(juce::AudioBuffer<float>& buffer);
    void tellHost(int index);
    void parameterOfLayerWritten(int index, float value);
    void dragRangeEnd(int layer, int n, float value);

    UserInteraction& user;
    Installation installation;

    ParameterTable table;
    MixGains gains;
    EqSettings eqSettings;
    MultiControls multi{*this};
    ControllerMap controllers{*this};
    MidiInput midiInput{controllers};
    CustomPlayHead playHead;
    TapTempo tapTempo;
    LayerRack layers{*this};
    /** On the heap of its own: with four effect blocks in it, it is too large for a caller's stack. */
    std::unique_ptr<AudioGraph> graph{std::make_unique<AudioGraph>(*this, gains, eqSettings)};
    BlockMeter meter;
    std::atomic<double> sampleRate{0.0};
    std::atomic<int> blockSize{0};

    EditorRequests editorRequests{*this};
    Session session;
    SoundChange soundChange{*this};
    PresetStorage presetStorage{*this};
    PresetLibrary library;
    PresetCommands presetCommands{*this, library};
    OriginalComparison comparison{*this};
    UndoHistory undo{*this};
    /** The "ProTools" host's first state call after construction is dropped on purpose. */
    std::atomic<bool> skipNextState{false};

    JUCE_DECLARE_WEAK_REFERENCEABLE(PluginProcessor)
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(PluginProcessor)
};

} // namespace quorel
