// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/InstanceAccess.h"
#include "hosting/InstrumentFamily.h"
#include "hosting/InstrumentMidiAdaptor.h"
#include "hosting/InstrumentWindow.h"
#include "hosting/LayerMidiFilter.h"
#include "hosting/LayerOwner.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <atomic>
#include <memory>

namespace quorel
{

/** One layer's slot for a hosted instrument. Four live as long as the processor, with or without a plug-in in
    them.

    Loading and unloading happen on the message thread alone; requests that have to wait count 50 ms ticks.
    `loading` and `unloadPending` keep the audio thread out while an instrument comes or goes, and
    `InstanceAccess` keeps the instrument alive until nobody is inside it. */
class VirtualInstrument : public juce::AudioProcessorListener,
                          public juce::ChangeBroadcaster,
                          private juce::Timer
{
public:
    /** `layerIndex` is 0 to 3. */
    VirtualInstrument(LayerOwner& layerOwner, int layerIndex);
    ~VirtualInstrument() override;

    int getLayerIndex() const noexcept { return layer; }

    //==========================================================================================================
    // Coming and going: message thread.

    /** Loads at once. True if the instrument is there afterwards, even if it was there already. On failure
        the layer is empty, the instrument counts as missing, and the user is told. */
    bool loadPlugin(const juce::PluginDescription& description);

    /** Loads in three ticks, which count once any unload under way is done. */
    void requestLoad(const juce::PluginDescription& description);

    /** Drops a requested load that hasn't run yet. */
    void cancelLoad();

    /** Unloads at once; if the instrument's window is open, closes it and unloads ten ticks later. True if
        the unload is still to come. */
    bool requestUnload();

    /** Destroys the instrument, clears the multi-control targets that point at the layer's Easy values, and
        sets these to 0.5. */
    void unloadPlugin();

    bool isUnloadPending() const noexcept { return unloadPending.load(); }

    /** The owned window of the hosted instrument; null for none. */
    void setWindow(std::unique_ptr<InstrumentWindow> newWindow) { window = std::move(newWindow); }

    InstrumentWindow* getWindow() const noexcept { return window.get(); }

    bool isWindowShowing() const { return window != nullptr && window->isShowing(); }

    void closeWindow() { window = nullptr; }

    //==========================================================================================================
    // Running.

    /** Filters the events and lets the instrument put its sound into `buffer`, which comes cleared and with
        at least two channels. Silent while an instrument comes or goes; the events of such a block are lost.
        Audio thread. */
    void processBlock(juce::AudioBuffer<float>& buffer, const juce::MidiBuffer& incoming);

    /** Prepares the hosted instrument. Host thread, while no block runs. */
    void prepare(double sampleRate, int blockSize);

    /** Follows a write to the layer's number `n`, 200 to 399. Any thread, the audio thread included; but Easy
        values and mappings call the instrument, and wait for its lock while another thread is inside it. */
    void parameterWritten(int n, float value);

    /** Scoped use of the hosted instrument from any thread. */
    InstanceAccess& instanceAccess() noexcept { return access; }

    bool hasInstance() const noexcept { return access.hasInstance(); }

    /** Sends a message of at most three bytes at the start of the next block, past the filter. A second one
        before that block replaces the first. Message thread. */
    void sendMidi(const juce::MidiMessage& message) noexcept;

    void requestAllNotesOff() noexcept { allNotesOffRequested.store(true); }

    //==========================================================================================================
    // Easy parameters, banks and programs: message thread, except `easyName` and `easyText`.

    /** Writes the instrument's default mapping into the Easy mappings, and the values there into the Easy
        values. */
    void resetEasyMapping();

    /** Replaces `lines` by the twelve hosted parameter numbers of the Easy mapping. None for an instrument
        outside the table. */
    void saveEasyMapping(juce::StringArray& lines) const;
    /** Maps the Easy controls to the hosted parameter numbers in the first twelve lines; each takes over the
        value of its new parameter. A line that isn't a number unmaps its control. */
    void loadEasyMapping(const juce::StringArray& lines);

    /** Name of the hosted parameter behind Easy parameter `easy` (0 to 11), cut to 15 characters. Without an
        instrument "Easy 1" and so on; for a mapping that leads nowhere the number within the layer. Any
        thread. */
    juce::String easyName(int easy);

    /** How the instrument writes the value behind Easy parameter `easy` (0 to 11). Empty without an
        instrument or a target. Any thread. */
    juce::String easyText(int easy);

    /** Chooses entry `id` (from 1) of the program menu, by MIDI or in the instrument's own list, as the table
        says. */
    void chooseProgram(int id);
    /** Chooses entry `id` (from 1) of the bank menu. */
    void chooseBank(int id);
    /** Name of the instrument's current bank; empty if it publishes none. */
    juce::String getBankName();
    /** Fills `programNames` with the programs of a bank that keeps them as files. */
    void readProgramNames(const juce::String& bankName);

    const juce::String& getPluginName() const noexcept { return pluginName; }

    const juce::File& getPluginFile() const noexcept { return pluginFile; }

    const juce::String& getPluginIdentifier() const noexcept { return pluginIdentifier; }

    bool isMissing() const noexcept { return pluginMissing; }

    const juce::String& getMissingPluginName() const noexcept { return missingPluginName; }

    void setMissing(const juce::String& name);
    void clearMissing();

    /** Keeps the state of an instrument that a sound asks for and that isn't installed here, so that saving
        the sound doesn't lose it. A load or the layer's reset forgets it. */
    void keepMissingState(const juce::MemoryBlock& state)
    {
        missingState.replaceAll(state.getData(), state.getSize());
    }

    void forgetMissingState() { missingState.reset(); }

    /** Empty for none. */
    const juce::MemoryBlock& getMissingState() const noexcept { return missingState; }

    /** Bytes that this layer declares in a state chunk: the size that the state had at load. */
    int getChunkSize() const noexcept { return chunkSize; }

    bool isDrumInstrument() const noexcept { return drumInstrument; }

    const juce::StringArray& getBankNames() const noexcept { return bankNames; }

    const juce::StringArray& getProgramNames() const noexcept { return programNames; }

    const juce::StringArray& getParameterNames() const noexcept { return parameterNames; }

    int getLongestParameterName() const noexcept { return longestParameterName; }

    /** File name of the layout in force; empty for the default mapping. */
    juce::String layoutName;

    /** Tells the editor to read this layer again. Any thread. */
    std::atomic<bool> needsDisplayUpdate{false};

    void audioProcessorParameterChanged(juce::AudioProcessor* processor, int index, float value) override;
    void audioProcessorChanged(juce::AudioProcessor* processor, const ChangeDetails& details) override;

    /** Ten values that the adaptor forwards to hosted parameters 0 to 9. Message thread. */
    MidiLinkedValueObject& linkedValue(int i) { return linkedValues[static_cast<size_t>(i)]; }

private:
    void timerCallback() override;
    int parameter(int n) const noexcept;

    float read(int n) const noexcept { return owner.readParameter(parameter(n)); }

    void write(int n, float value) { owner.writeParameter(parameter(n), value); }

    int easyTarget(int easy, int numTargets) const noexcept;
    /** With null for an instrument outside the table. */
    void writeEasyMapping(const InstrumentRow* row);
    void pullEasyValues(juce::AudioPluginInstance& plugin);
    void applyDrumPage();
    void prepareInstance(double sampleRate, int blockSize);
    /** Fills `instance`, or returns why it can't. */
    juce::String createInstance(const juce::PluginDescription& description, int blockSize);
    void giveUpLoading(const juce::String& name, const juce::String& error);
    void adopt(const juce::PluginDescription& description);
    int measureState();
    void readProgramsAndBanks();
    void readParameterNames();
    void watchProgram();
    void warmUp();
    void suspendAndRelease();
    void destroyInstance();
    LayerMidiSettings currentMidiSettings() const noexcept;
    void renderInstance(juce::AudioPluginInstance& plugin, juce::AudioBuffer<float>& buffer);

    LayerOwner& owner;
    const int layer;

    std::array<MidiLinkedValueObject, 10> linkedValues;
    InstrumentMidiAdaptor adaptor;

    std::unique_ptr<juce::AudioPluginInstance> instance;
    InstanceAccess access;
    std::unique_ptr<InstrumentWindow> window;

    juce::String pluginName;
    juce::File pluginFile;
    juce::String pluginIdentifier{"instrument"};
    juce::PluginDescription pendingDescription;
    juce::String missingPluginName;
    bool pluginMissing = false;
    juce::MemoryBlock missingState;
    bool drumInstrument = false;

    /** Timer ticks, -1 when idle. */
    int unloadCountdown = -1;
    int loadCountdown = -1;
    bool unloadDeferred = false;
    std::atomic<bool> unloadPending{false};
    std::atomic<bool> loading{false};

    int chunkSize = 0;
    int currentProgram = 0;
    juce::String programName;

    /** A message of up to three bytes and its length in the top byte; 0 for none. */
    std::atomic<juce::uint32> pendingMidi{0};
    std::atomic<bool> allNotesOffRequested{false};
    LayerMidiParameters midiParameters;
    ZoneHeldNotes zoneHeldNotes;

    juce::StringArray bankNames;
    juce::StringArray programNames;
    juce::StringArray parameterNames;
    int longestParameterName = 0;

    /** Audio thread's own memory. */
    juce::MidiBuffer layerMidi;
    /** What the instrument is handed; JUCE's instance swaps its contents for those of a buffer of its own. */
    juce::MidiBuffer hostedMidi;
    juce::AudioBuffer<float> wideBuffer;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(VirtualInstrument)
};

} // namespace quorel
