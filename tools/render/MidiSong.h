// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TempoMap.h"

#include <juce_audio_basics/juce_audio_basics.h>
#include <optional>

namespace quorel
{

/** A Standard MIDI File as a host would play it: all tracks in one list by time, the tempo map beside it. */
class MidiSong
{
public:
    /** Reads a file of type 0 or 1. `fixedTempo`, in quarter notes a minute and above 0, replaces the file's
        tempi. An error names the file and what is wrong with it. */
    static juce::Result read(const juce::File& file, std::optional<double> fixedTempo, MidiSong& song);

    /** The same for a file's bytes; errors without a file's name. */
    static juce::Result read(juce::InputStream& stream, std::optional<double> fixedTempo, MidiSong& song);

    /** No events and no length, at a tempo in quarter notes a minute, 120 without one. */
    static MidiSong silence(std::optional<double> fixedTempo);

    struct Event
    {
        double seconds;
        juce::MidiMessage message;
    };

    /** Channel and system messages in playing order; never empty after a successful read. Notes and pedals
        that the file leaves down are released at the end. */
    const std::vector<Event>& events() const noexcept { return eventList; }

    const TempoMap& tempoMap() const noexcept { return tempos; }

    /** End of the last track, at least the last event. */
    double lengthSeconds() const noexcept { return length; }

private:
    void releaseWhatIsHeld();

    std::vector<Event> eventList;
    TempoMap tempos;
    double length = 0.0;
};

} // namespace quorel
