// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <array>
#include <atomic>
#include <cstdint>

namespace quorel
{

/** The last note and the last controller seen, and the notes that are held, for the editor's display. Read from
    any thread. */
class MidiMonitor
{
public:
    /** Audio thread. Channel 1 to 16. */
    void noteOn(int channel, int note, int velocity) noexcept;
    /** Audio thread. A note is held until the first note-off on any channel. */
    void noteOff(int note) noexcept;
    /** Audio thread. */
    void allNotesOff() noexcept;
    /** Audio thread. */
    void controller(int number, int value) noexcept;

    /** Bit `note % 64` of word `note / 64`. */
    std::uint64_t heldNotes(int word) const noexcept
    {
        return held[static_cast<std::size_t>(word)].load(std::memory_order_relaxed);
    }

    int lastNoteNumber() const noexcept { return noteNumber.load(std::memory_order_relaxed); }

    int lastNoteChannel() const noexcept { return noteChannel.load(std::memory_order_relaxed); }

    int lastNoteVelocity() const noexcept { return noteVelocity.load(std::memory_order_relaxed); }

    int lastControllerNumber() const noexcept { return controllerNumber.load(std::memory_order_relaxed); }

    int lastControllerValue() const noexcept { return controllerValue.load(std::memory_order_relaxed); }

private:
    std::atomic<int> noteNumber{0};
    std::atomic<int> noteChannel{0};
    std::atomic<int> noteVelocity{0};
    std::atomic<int> controllerNumber{0};
    std::atomic<int> controllerValue{0};
    std::array<std::atomic<std::uint64_t>, 2> held{};
};

/** Bytes kept ready for a block's MIDI: a denser block makes the buffers grow once. */
constexpr size_t midiBufferCapacity = 32768;

/** Copies without giving back the memory that `destination` holds, as an assignment would. */
void copyEvents(const juce::MidiBuffer& source, juce::MidiBuffer& destination);

/** Adds, at sample 0 and for each channel from 1 to `lastChannel`, an all-notes-off and the note-offs of all
 *    notes. */
void addSilencingEvents(juce::MidiBuffer& destination, int lastChannel = 16);

} // namespace quorel
