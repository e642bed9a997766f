// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "midi/GlobalMidi.h"
#include "midi/MidiMapping.h"

#include <atomic>
#include <functional>
#include <juce_audio_devices/juce_audio_devices.h>
#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Ties MIDI messages straight to one value: while `learning`, the next message becomes a mapping; later
    messages that match a mapping set the value. Messages come on a MIDI thread from a `juce::MidiInput`, or
    on the message thread from `GlobalMidi`. Bindings to host parameters don't go this way: the processor's
    controller table carries those. */
class MidiLearner : public juce::MidiInputCallback, public juce::ChangeListener
{
public:
    /** Colour, as ARGB, of a control that is being learned. */
    static constexpr juce::uint32 glowColour = 0xffc38a00;

    MidiLearner();
    ~MidiLearner() override;

    /** MIDI thread; `source` may be null. Takes the message thread's lock while learning. */
    void handleIncomingMidiMessage(juce::MidiInput* source, const juce::MidiMessage& message) override;

    void handlePartialSysexMessage(juce::MidiInput*, const juce::uint8*, int, double) override {}

    /** `midiValue`: 0 to 127, a pitch wheel up to 129. */
    virtual void setValueFromMidi(float midiValue) { juce::ignoreUnused(midiValue); }

    /** `broadcaster` is the `GlobalMidi` of the process. */
    void changeListenerCallback(juce::ChangeBroadcaster* broadcaster) override;

    /** The work of `handleIncomingMidiMessage` for a source of that name. True if the message set the value. */
    bool handleMessage(const juce::String& sourceName, const juce::MidiMessage& message);

    /** Taken only while there is no name yet. Message thread. */
    void setName(const juce::String& newName);

    const juce::String& getName() const noexcept { return name; }

    /** Message thread, or its lock held. */
    int getNumMappings() const;

    /** How "Midi Mapped (...)" reaches the screen: set by whoever has one, called on the message thread or
        with its lock held. Empty at start. Message thread. */
    static std::function<void(const juce::String&)>& displayBox();

    juce::GlowEffect glow;
    /** Shape exponent of `setValueFromMidi`; 1 is straight. */
    std::atomic<double> curve{1.0};
    std::atomic<double> maximum{1.0};
    std::atomic<double> minimum{0.0};
    std::atomic<bool> learning{false};

private:
    void learn(const juce::String& sourceName, const juce::MidiMessage& message);
    bool apply(const MidiMapping& incoming, bool compareDevices);

    juce::CriticalSection mappingLock;
    juce::OwnedArray<MidiMapping> mappings;
    double lastTimestamp = 0.0;
    juce::String name;
    juce::SharedResourcePointer<GlobalMidi> globalMidi;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(MidiLearner)
};

} // namespace quorel
