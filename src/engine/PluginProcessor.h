// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/AudioGraph.h"
#include "engine/BlockMeter.h"
#include "engine/CustomPlayHead.h"
#include "engine/OriginalComparison.h"
#include "engine/PresetCommands.h"
#include "engine/PresetTransition.h"
#include "engine/TapTempo.h"
#include "hosting/LayerOwner.h"
#include "hosting/PluginScanner.h"
#include "hosting/VirtualInstrument.h"
#include "midi/MidiMonitor.h"
#include "parameters/ControllerMap.h"
#include "parameters/EqSettings.h"
#include "parameters/MixGains.h"
#include "parameters/MultiControls.h"
#include "parameters/ParameterDisplay.h"
#include "parameters/ParameterTable.h"
#include "platform/UserInteraction.h"
#include "platform/UserPaths.h"
#include "platform/UserStore.h"
#include "presets/PresetLibrary.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>

namespace quorel
{

/** The instrument as its host sees it, and the meeting point of everything that it is made of.

    What is where: `table` holds the parameters, `gains` and `eqSettings` what the block derives from them,
   `layers` the hosted instruments, `graph` the block's audio, `transition` the state of a preset change. A
   write to a parameter goes through `setParameter`, from any thread. Where not stated otherwise, operations
   are the message thread's. */
class PluginProcessor : public juce::AudioProcessor,
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

    const juce::String getName() const override { return "Quorel"; }

    void prepareToPlay(double rate, int newBlockSize) override;

    void releaseResources() override {}

    using juce::AudioProcessor::processBlock;
    using juce::AudioProcessor::processBlockBypassed;
    void processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) override;

    void processBlockBypassed(juce::AudioBuffer<float>&, juce::MidiBuffer&) override {}

    bool isBusesLayoutSupported(const BusesLayout& layouts) const override;

    const juce::String getInputChannelName(int channel) const override { return juce::String(channel + 1); }

    const juce::String getOutputChannelName(int channel) const override { return juce::String(channel + 1); }

    bool isInputChannelStereoPair(int) const override { return true; }

    bool isOutputChannelStereoPair(int) const override { return true; }

    bool silenceInProducesSilenceOut() const override { return false; }

    double getTailLengthSeconds() const override { return 0.0; }

    bool acceptsMidi() const override { return true; }

    bool producesMidi() const override { return false; }

    void reset() override {}

    juce::AudioProcessorEditor* createEditor() override
    {
        return editorFactory ? editorFactory(*this) : nullptr;
    }

    bool hasEditor() const override { return editorFactory != nullptr; }

    using juce::AudioProcessor::getParameterName;
    using juce::AudioProcessor::getParameterText;

    int getNumParameters() override { return numHostParameters; }

    const juce::String getParameterName(int index) override;

    float getParameter(int index) override { return table.get(index); }

    const juce::String getParameterText(int index) override;
    void setParameter(int index, float value) override;

    bool isMetaParameter(int) const override { return true; }

    int getNumPrograms() override { return 1; }

    int getCurrentProgram() override { return 0; }

    void setCurrentProgram(int) override {}

    const juce::String getProgramName(int) override { return getPresetName(); }

    void changeProgramName(int, const juce::String&) override {}

    /** Any thread but the audio thread: the work itself is done on the message thread. */
    void getStateInformation(juce::MemoryBlock& destination) override;
    /** Any thread but the audio thread. Returns when the sound is restored, or at once where a hosted
       instrument's window has to go away first: the restore then follows 2.5 seconds later. */
    void setStateInformation(const void* data, int size) override;

    void setPlayHead(juce::AudioPlayHead* hostPlayHead) override { playHead.setHostPlayHead(hostPlayHead); }

    /** For tools; audio thread. See `AudioGraph::setSendInput`. */
    void setSendInput(const juce::AudioBuffer<float>* input) noexcept { graph->setSendInput(input); }

    //==========================================================================================================
    // Parameters

    float readParameter(int index) const noexcept override { return table.get(index); }

    void writeParameter(int index, float value) override { setParameter(index, value); }

    void writeParameterNotifyingHost(int index, float value) override { setParameterFromUi(index, value); }

    /** What every gesture of the user and every MIDI-mapped change goes through. Any thread. */
    void setParameterFromUi(int index, float value);

    /** Asks the user for a value of the parameter and writes it. A value out of range is dropped without a
        word; parameters below the layers but the master volume take none. */
    void editParameterValue(int index);

    /** Writes every default. */
    void resetAllParameters();
    /** Writes a layer's defaults; its Easy values and its program stay. `layer` is 0 to 3. */
    void resetLayer(int layer);
    /** Writes preset and folder name into their text slots. */
    void resetNames();

    ParameterTable& getParameterTable() noexcept { return table; }

    const MixGains& getGains() const noexcept { return gains; }

    ControllerMap& getControllerMap() noexcept { return controllers; }

    MultiControls& multiControls() override { return multi; }

    /** File name of the controller table in use, ending included; empty for none. Message thread. */
    juce::String ecsName;

    //==========================================================================================================
    // Layers and instruments

    /** `layer` is 0 to 3. */
    VirtualInstrument& getLayer(int layer) { return *layers[static_cast<size_t>(layer)]; }

    /** The plug-in menu's choice: resets the layer, then loads the instrument in three timer ticks, or
       empties the layer for null. Choosing what is loaded already keeps it and its state. */
    void chooseInstrument(int layer, const juce::PluginDescription* description);

    const juce::KnownPluginList& getKnownPlugins() const noexcept { return knownPlugins; }

    /** Searches the plug-in folder anew. */
    void scanPlugins(bool showProgress);
    /** Takes another plug-in folder, stores it for the user, and scans it. */
    void changePluginFolder(const juce::File& folder);

    const juce::String& getScanStatus() const noexcept { return scanner.scanStatus(); }

    const UserPaths& getPaths() const noexcept { return paths; }

    juce::AudioPlayHead& layerPlayHead() override { return playHead; }

    UserInteraction& userInteraction() override { return user; }

    UserStore& userStore() override { return *store; }

    double preparedSampleRate() const noexcept override { return sampleRate.load(std::memory_order_relaxed); }

    int preparedBlockSize() const noexcept override { return blockSize.load(std::memory_order_relaxed); }

    void requestEditorRefresh() noexcept override { refreshEditor.store(true); }

    //==========================================================================================================
    // Presets

    /** Starts the road to the preset of these names: fade, load, settle, fade. False, and nothing happens,
       while another change is under way. Without running audio the fade never ends and nothing is loaded. */
    bool requestPresetLoad(const juce::String& folder, const juce::String& preset);

    /** Loads the current preset's file at once. On failure the user is told and all parameters are at their
     * defaults. */
    bool loadPresetFile();

    /** Saves under `name`, or under the current name if that is empty. Asks before it replaces a file, unless
        `overwrite` is set. False if the user said no or the file could not be written; an old file is then
       whole. */
    bool savePreset(const juce::String& name, bool overwrite);

    /** Empties all layers and makes the defaults the new preset `name` of the current folder. False where
       that file can't be written: the sound then goes on as it was. */
    bool createEmptyPreset(const juce::String& name);

    /** Unloads all instruments at once and forgets missing ones; their windows close. */
    void closeInstruments();

    /** Restores a sound that is compared with another: the preset's names and the MIDI bindings stay. */
    void restoreForComparison(const juce::MemoryBlock& bytes);

    /** A preset is on its way, or a restore waits for a window to go away. */
    bool isSoundChanging() const noexcept
    {
        return transition.presetBusy.load() || transition.chunkRestoreTicks.load() >= 0;
    }

    /** Lists, selection, index, results. */
    PresetLibrary& getPresetLibrary() noexcept { return library; }

    /** What the user does with presets and folders. */
    PresetCommands& getPresetCommands() noexcept { return presetCommands; }

    /** Edited or original sound. */
    OriginalComparison& getOriginalComparison() noexcept { return comparison; }

    /** Any thread. */
    juce::String getPresetName() const;
    /** Any thread. */
    juce::String getFolderName() const;
    void setNames(const juce::String& preset, const juce::String& folder);

    PresetTransition& getTransition() noexcept { return transition; }

    bool isPresetLoadInProgress() const noexcept { return presetLoadInProgress; }

    const juce::MemoryBlock& getOriginalState() const noexcept { return comparison.getOriginalState(); }

    //==========================================================================================================
    // What the editor reads and asks for

    CustomPlayHead& getTempo() noexcept { return playHead; }

    TapTempo& getTapTempo() noexcept { return tapTempo; }

    const BlockMeter& getMeter() const noexcept { return meter; }

    const MidiMonitor& getMidiMonitor() const noexcept { return midiMonitor; }

    float getCurrentView() const noexcept { return currentView.load(std::memory_order_relaxed); }

    void setCurrentView(float view) noexcept { currentView.store(view, std::memory_order_relaxed); }

    /** One-shot requests of the audition button. Any thread. */
    std::atomic<bool> auditionNoteOn{false};
    std::atomic<bool> auditionNoteOff{false};
    /** The next block silences every note on every channel. Any thread. */
    std::atomic<bool> panicRequested{false};
    /** The sound differs from the preset as loaded. */
    std::atomic<bool> edited{false};
    /** One-shot mark of an edit; `OriginalComparison` takes it. */
    std::atomic<bool> editedChanged{false};
    std::atomic<bool> refreshEditor{false};
    std::array<std::atomic<bool>, numLayers> layerNeedsAttention{};

private:
    ParameterTextSources textSources();
    void timerCallback() override;
    void parameterOfLayerWritten(int index, float value);
    void dragRangeEnd(int layer, int n, float value);
    void collectMidi(juce::MidiBuffer& midi);
    bool requestUnloadOfAllLayers();
    void takeState(const void* data, size_t size, bool forComparison);
    void restorePendingChunk();
    void writeControllerTable(const std::array<float, numControllers>& bindings);
    std::array<float, numControllers> readControllerTable() const;
    void createDefaultPreset();

    UserInteraction& user;
    std::unique_ptr<UserStore> store;
    UserPaths paths;

    ParameterTable table;
    MixGains gains;
    EqSettings eqSettings;
    MultiControls multi{*this};
    ControllerMap controllers{*this};
    CustomPlayHead playHead;
    TapTempo tapTempo;
    std::array<std::unique_ptr<VirtualInstrument>, numLayers> layers;
    /** On the heap of its own: with four effect blocks in it, it is too large for a caller's stack. */
    std::unique_ptr<AudioGraph> graph{std::make_unique<AudioGraph>(*this, gains, eqSettings)};

    juce::KnownPluginList knownPlugins;
    PluginScanner scanner{knownPlugins};

    PresetTransition transition;
    bool presetLoadInProgress = false;
    mutable juce::CriticalSection nameLock;
    juce::String presetName;
    juce::String folderName;
    juce::MemoryBlock pendingChunk;
    bool pendingIsComparison = false;
    PresetLibrary library;
    PresetCommands presetCommands{*this, library};
    OriginalComparison comparison{*this};
    /** The "ProTools" host's first state call after construction is dropped on purpose. */
    std::atomic<bool> skipNextState{false};

    std::atomic<double> sampleRate{0.0};
    std::atomic<int> blockSize{0};
    std::atomic<float> currentView{0.3f};
    BlockMeter meter;
    MidiMonitor midiMonitor;
    juce::MidiBuffer blockMidi;

    JUCE_DECLARE_WEAK_REFERENCEABLE(PluginProcessor)
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(PluginProcessor)
};

} // namespace quorel
