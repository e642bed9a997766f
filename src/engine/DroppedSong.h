// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <array>
#include <atomic>
#include <bitset>
#include <vector>

namespace quorel
{

/** A MIDI file that the preview key plays, once from its start to its end, in the file's own tempo: its notes with
    what belongs to the playing of them, pitch wheel, aftertouch, modulation wheel and sustain pedal. Programs and
    other controllers stay out, as they would change the sound. */
class DroppedSong
{
public:
    /** Reads a Standard MIDI File in place of the one before, which stops. Fails, saying why, and keeps that one, for
        files that are no such file, are larger than 2 MB, or have no note in their first hour. Message thread. */
    juce::Result load(const juce::File& file);

    /** Without a song the preview key has its note. Message thread, as the two below. */
    void forget();

    bool isLoaded() const noexcept { return name.isNotEmpty(); }

    /** The file's name; empty for none. */
    const juce::String& getName() const noexcept { return name; }

    /** Starts the song, or stops it. Any thread. */
    void startOrStop() noexcept;

    /** Until the last note is over. Any thread. */
    bool isPlaying() const noexcept { return state.load() != State::silent; }

    /** Adds what belongs into the next `numSamples` to a block's events, at most 256 of them. Audio thread: takes no
        memory as long as `events` has room for these. */
    void addBlock(juce::MidiBuffer& events, int numSamples, double sampleRate) noexcept;

private:
    enum class State
    {
        silent,
        starting,
        playing,
        stopping
    };

    struct Event
    {
        double seconds = 0.0;
        std::array<juce::uint8, 3> bytes{};
        int numBytes = 0;
    };

    static juce::Result read(const juce::File& file, std::vector<Event>& events);
    void replace(std::vector<Event> events, const juce::String& newName);
    void add(juce::MidiBuffer& events, const Event& event, int sample) noexcept;
    /** True when nothing sounds any more. */
    bool release(juce::MidiBuffer& events) noexcept;

    juce::String name;
    std::atomic<State> state{State::silent};
    /** Held for the moment of exchanging `song`; the audio thread only tries it. */
    juce::SpinLock songLock;
    std::vector<Event> song;

    // The audio thread's.
    size_t next = 0;
    double position = 0.0;
    int addedInBlock = 0;
    std::array<std::bitset<128>, 16> heldNotes;
    std::bitset<16> touchedChannels;
};

} // namespace quorel
