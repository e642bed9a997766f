// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

    /** Any thread: the next block starts a loud middle C on channel 1. */
    void startAudition() noexcept { auditionNoteOn.store(true); }

    /** Any thread: the next block ends it. */
    void endAudition() noexcept { auditionNoteOff.store(true); }

    /** Any thread: the next block silences every note on every channel. */
    void requestPanic() noexcept { panicRequested.store(true); }

    /** Audio thread: the events for the layers, valid until the next call. The audition's notes are added to
        `midi` itself, the panic's note-offs only to what is returned: there are 2064 of them. */
    const juce::MidiBuffer& collect(juce::MidiBuffer& midi);

    /** The last MIDI seen. Any thread. */
    const MidiMonitor& getMonitor() const noexcept { return monitor; }

private:
    void note(const juce::MidiMessageMetadata& event);

    ControllerMap& controllers;
    MidiMonitor monitor;
    juce::MidiBuffer forLayers;
    std::atomic<bool> auditionNoteOn{false};
    std::atomic<bool> auditionNoteOff{false};
    std::atomic<bool> panicRequested{false};
};

} // namespace quorel
