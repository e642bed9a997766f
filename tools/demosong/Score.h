// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

namespace quorel::demo
{

/** Resolution of the file. */
constexpr int ticksPerQuarter = 480;

/** One note; times in quarter notes. */
struct Note
{
    double start;
    double length;
    int key;
    int velocity;
};

/** One track of the song on a MIDI channel of its own. Times are quarter notes from the song's start. */
class Track
{
public:
    Track(const juce::String& name, int midiChannel);

    void play(const Note& note);

    /** Plays notes whose starts count from `from`. */
    template <typename Notes>
    void playAt(double from, const Notes& notes)
    {
        for (const Note& note : notes)
            play({from + note.start, note.length, note.key, note.velocity});
    }

    juce::MidiMessageSequence& sequence() noexcept { return events; }

private:
    const int channel;
    juce::MidiMessageSequence events;
};

/** Adds a meta event, such as a tempo, to a sequence. */
void addMeta(juce::MidiMessageSequence& sequence, double quarters, const juce::MidiMessage& message);

} // namespace quorel::demo
