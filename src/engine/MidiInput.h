// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/DroppedSong.h"
#include "midi/MidiMonitor.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <atomic>

namespace quorel
{

class ControllerMap;

/** The first stop of a block's events: they are noted for the display, let controllers move the parameters
    they are tied to, and are joined by what the user asked for with a button. */
class MidiInput
{
public:
    explicit MidiInput(ControllerMap& controllerMap);

    /** The preview key goes down: the next block starts a loud middle C on channel 1, or, once a MIDI file was
        dropped, starts or stops that. Message thread. */
    void startAudition();

    /** The key comes up: the next block ends the note. Message thread. */
    void endAudition();

    DroppedSong& getSong() noexcept { return song; }

    /** Any thread: the next block silences every note on every channel. */
    void requestPanic() noexcept { panicRequested.store(true); }

    /** Audio thread: the events for the layers, valid until the next call. The audition's notes are added to
        `midi` itself, the panic's note-offs only to what is returned: there are 2064 of them. So are the song's. */
    const juce::MidiBuffer& collect(juce::MidiBuffer& midi, int numSamples, double sampleRate);

    /** The last MIDI seen. Any thread. */
    const MidiMonitor& getMonitor() const noexcept { return monitor; }

private:
    void note(const juce::MidiMessageMetadata& event);

    ControllerMap& controllers;
    MidiMonitor monitor;
    juce::MidiBuffer forLayers;
    DroppedSong song;
    /** The message thread's. */
    bool auditionHeld = false;
    std::atomic<bool> auditionNoteOn{false};
    std::atomic<bool> auditionNoteOff{false};
    std::atomic<bool> panicRequested{false};
};

} // namespace quorel
