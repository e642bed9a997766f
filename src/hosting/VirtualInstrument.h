// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/EasyHandover.h"
#include "hosting/InstanceAccess.h"
#include "hosting/InstrumentFamily.h"
#include "hosting/InstrumentMidiAdaptor.h"
#include "hosting/InstrumentWindow.h"
#include "hosting/LayerMidiFilter.h"
#include "hosting/LayerOwner.h"
#include "hosting/LayerState.h"
#include "parameters/DerivedWords.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

namespace quorel
{

/** One layer's slot for a hosted instrument. Four live as long as the processor, with or without a plug-in in
    them.

    Loading and unloading happen on the message thread alone, along the transitions of `LayerState`; what has
    to wait counts 50 ms ticks. The state keeps the audio thread out while an instrument comes or goes, and
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
    // Coming and going: message thread, but for the state.

    /** Any thread. */
    LayerState getState() const noexcept { return state.load(); }

    /** Loads at once. True if the instrument is there afterwards; one of the same name stays as it is, even
        if it was about to leave. On failure the layer has no instrument and the user is told. */
    bool loadPlugin(const juce::PluginDescription& description);

    /** Loads in three ticks, which count once an instrument that has to leave is gone; replaces an older
        request. */
    void requestLoad(const juce::PluginDescription& description);

    /** Drops a requested load that hasn't run yet. */
    void cancelLoad();

    /** Empties the layer at once or, if the instrument's window is open, closes that and empties it ten ticks
        later. True if it is still to come. A missing instrument stays missing. */
    bool requestUnload();

    /** Empties the layer, with all that is on its way to it: loads, countdowns, a message, all-notes-off, the
        window, kept bytes. An instrument is destroyed; the multi-control targets that point at the layer's
        Easy values are cleared, and these set to 0.5. */
    void unloadPlugin();

    /** An instrument that is about to leave stays after all; what was to follow it is dropped. */
    void keepInstrument();

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

    /** Follows a write to the layer's number `n`, 200 to 399. Any thread, the audio thread included: an Easy
        value or mapping reaches the instrument at once if no other thread is inside it, else at the next
        block or tick. */
    void parameterWritten(int n, float value);

    /** Scoped use of the hosted instrument from any thread. */
    InstanceAccess& instanceAccess() noexcept { return access; }

    bool hasInstance() const noexcept { return access.hasInstance(); }

    /** The instrument's sound was silenced within the last second, because it wasn't finite or beyond +60 dB,
        or the instrument threw. Any thread. */
    bool isSilenced() const noexcept { return silencedTicks.load() > 0; }

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

    //==========================================================================================================
    // The instrument's own state.

    /** What a saved sound is to hold of this layer's instrument: its state; its last good one if it gives
        none, of which the user is told once a load; the kept one where it is missing or has failed. Where the
        sound names an instrument that has none of these, some bytes that are no state, as without any nobody
        would load it again. Empty without an instrument, and for one outside the table. Any thread but the
        audio thread; waits for nothing but the instrument. */
    juce::MemoryBlock stateToSave();

    /** The instrument's program as a saved sound keeps it: number / count. None without an instrument or
        programs. Any thread but the audio thread. */
    std::optional<float> programToSave();

    /** Gives the instrument a state, and the program nearest to `program`. The state of one that is missing or
        has failed is kept for `stateToSave`. False for bytes that aren't the whole of a state: the instrument
        stays as it is. Message thread. */
    bool giveState(const juce::MemoryBlock& bytes, float program);

    /** Empties the layer and notes that an instrument of this name isn't installed. An empty name is kept like
        any other, and not shown. Message thread, as the next two. */
    void setMissing(const juce::String& name);
    /** Forgets a missing or failed instrument, with its state. */
    void clearMissing();

    /** The layer's instrument is missing or has failed, and has a name to show. */
    bool isMissing() const noexcept { return missingPluginName.isNotEmpty(); }

    const juce::String& getMissingPluginName() const noexcept { return missingPluginName; }

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
    void passOnEasyValues(juce::AudioPluginInstance& plugin);
    void applyDrumPage();

    bool enter(LayerEvent event);
    void cancelPending();
    void destroyInstance();
    bool makeInstrument(const juce::PluginDescription& description);
    void adopt(const juce::PluginDescription& description);
    void prepareAndPublish();
    void warmUp();
    void readProgramsAndBanks();
    void readParameterNames();
    void watchInstrument();

    LayerMidiSettings currentMidiSettings() const noexcept;
    void renderInstance(juce::AudioPluginInstance& plugin, juce::AudioBuffer<float>& buffer);
    /** Plays `hostedMidi` into the buffer. False if the instrument throws. */
    bool runInstance(juce::AudioPluginInstance& plugin, juce::AudioBuffer<float>& buffer) noexcept;
    void reserveWideBuffer(const juce::AudioPluginInstance& plugin, int samples);

    using SharedState = std::shared_ptr<const juce::MemoryBlock>;

    void keep(SharedState bytes, bool named);
    void setNamed(bool named);
    bool keepStateOf(juce::AudioPluginInstance& plugin);
    void tellOfLostState();

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
    juce::String missingPluginName;
    bool drumInstrument = false;

    std::atomic<LayerState> state{LayerState::empty};
    /** Of `loading` and `leaving`: ticks that are still to pass. */
    int ticksLeft = 0;
    /** Of `loading`, until it runs, and of `leaving`, if one waits behind: the instrument asked for. */
    std::optional<juce::PluginDescription> pendingLoad;
    /** Counts what is made and emptied, so that a load sees that it was overtaken while its instrument ran
        the message loop. */
    int change = 0;

    /** For what saves on other threads read. Never held during a call to an instrument, and not the audio
        thread's. */
    std::mutex keptLock;
    /** The instrument's last good state or, where it is missing or failed, what the sound had for it. */
    SharedState kept;
    /** A name in the sound has to find its way back, with bytes or without. */
    bool isNamed = false;

    enum class StateLoss
    {
        none,
        untold,
        told
    };
    /** The instrument gave no state when one was to be saved. */
    std::atomic<StateLoss> stateLoss{StateLoss::none};

    /** For what the host has prepared the layer with last, 0 before, and for publishing an instrument: from
        then on it is the host's thread that prepares it. Not the audio thread's. */
    std::mutex prepareLock;
    double wantedRate = 0.0;
    int wantedBlock = 0;

    int currentProgram = 0;
    juce::String programName;

    /** A message of up to three bytes and its length in the top byte; 0 for none. */
    std::atomic<juce::uint32> pendingMidi{0};
    std::atomic<bool> allNotesOffRequested{false};
    EasyHandover easyHandover;
    /** Until a silenced instrument isn't shown as such any more; and whether the editor has been told. */
    std::atomic<int> silencedTicks{0};
    bool showsSilenced = false;
    LayerMidiParameters midiParameters;
    DerivedWords midiWords;
    ZoneHeldNotes zoneHeldNotes;

    juce::StringArray bankNames;
    juce::StringArray programNames;
    /** Where these names are from, and when it last changed. */
    juce::File programFolder;
    juce::Time programFolderTime;
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
