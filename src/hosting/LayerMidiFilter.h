// SPDX-License-Identifier: GPL-3.0-or-later
// What a layer lets through of the MIDI that the whole plug-in hears. The filter is a pure function of the
// layer's settings, the notes held in its drum zones, and the block's events.
#pragma once

#include "parameters/ParameterLayout.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <juce_audio_basics/juce_audio_basics.h>

namespace quorel
{

/** Keys and velocities of a drum zone, both ends inclusive, 0 to 127. */
struct ZoneRange
{
    int keyMin = 24;
    int keyMax = 127;
    int velocityMin = 1;
    int velocityMax = 127;
};

/** The settings of one layer in plain numbers, as one block uses them. They start as those of a layer that
    was reset. */
struct LayerMidiSettings
{
    /** 1 to 16; 0 lets all channels and system messages through. Other channels stop system messages. */
    int midiChannel = 0;
    bool blockProgramChange = false;
    bool blockBankSelect = false;
    bool blockPitchWheel = false;
    bool blockModWheel = false;
    /** Polyphonic aftertouch alone; channel pressure is never blocked. */
    bool blockAfterTouch = false;
    bool blockSustain = false;
    bool blockUserController1 = false;
    bool blockUserController2 = false;
    /** Controller numbers; 128 fits none. */
    int userController1 = 39;
    int userController2 = 42;
    /** Semitones, -24 to 24. */
    int transpose = 0;
    int keyMin = 24;
    int keyMax = 127;
    int velocityMin = 1;
    int velocityMax = 127;
    std::array<ZoneRange, numZones> zones;

    // The rest isn't kept in `LayerMidiParameters`: whoever calls the filter reads it from the parameter
    // table for every block.
    std::array<bool, numZones> zoneOn{true, true, true, true, true, true, true, true};
    bool drumMode = false;
    /** Stops all controllers but 0, 1, 2, 4, 64 and 123. */
    bool freeControllerBlock = false;
};

/** The decoded settings, one word each, which parameter writes on any thread hand to the audio thread.
    Nothing orders one word against another: a block may see a range of which only one end has moved. */
class LayerMidiParameters
{
public:
    LayerMidiParameters() noexcept;

    /** Decodes `value` (0 to 1) of number `n` within the layer: 236, 243 to 252, 260 to 264 and 270 to 301.
        Other numbers do nothing. It is for the caller to keep a range's ends in order and to silence the
        layer after a transpose. Any thread. */
    void write(int n, float value) noexcept;

    /** All settings but zone switches, drum mode and free controllers, which are as in a new
        `LayerMidiSettings`. Any thread. */
    LayerMidiSettings snapshot() const noexcept;

private:
    static constexpr int firstNumber = layerSlot::midiChannel;
    static constexpr int numNumbers = layerSlot::zoneOn - firstNumber;

    std::atomic<int>& word(int n) noexcept;
    int read(int n) const noexcept;

    std::array<std::atomic<int>, numNumbers> words{};
};

/** The input notes that are down in each drum zone. Never allocates. Audio thread, or another while that is
    kept out. */
class ZoneHeldNotes
{
public:
    /** True where no note is held. `zone` 0 to 7. */
    bool isEmpty(int zone) const noexcept;
    /** `note` 0 to 127; a note already held stays held once. */
    void add(int zone, int note) noexcept;
    void remove(int zone, int note) noexcept;
    void clear() noexcept;

private:
    struct NoteSet
    {
        std::array<std::uint64_t, 2> bits{};
    };

    std::array<NoteSet, numZones> zones;
};

/** Appends to `out` what the layer lets through of `in`, in order and at the same sample positions.

    With `silenceFirst` the whole of `in` is dropped. Instead, at sample 0, each note from 0 to 127 gets a
    note-off and, after it, an all-notes-off, on the layer's channel (1 if it hears all), and the zones forget
    their notes. This is for changes after which the note-off of a held note would no longer match it, such as
    a transpose.

    In drum mode no note passes as itself: each zone whose key range holds it plays the zone's own target
    note, from when the first key goes down until the last comes up. Zones go by their own ranges alone: the
    layer's channel, key and velocity ranges and block switches don't stop them.

    Messages that are cut short or hold a data byte above 127 are dropped. Allocates only if `out` has to
    grow. Audio thread. */
void filterLayerMidi(const LayerMidiSettings& settings, ZoneHeldNotes& held, bool silenceFirst,
                     const juce::MidiBuffer& in, juce::MidiBuffer& out);

} // namespace quorel
