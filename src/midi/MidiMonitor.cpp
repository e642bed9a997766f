// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi/MidiMonitor.h"

namespace quorel
{

namespace
{
constexpr auto relaxed = std::memory_order_relaxed;

constexpr std::uint64_t bitOf(int note) noexcept
{
    return std::uint64_t{1} << (note % 64);
}
} // namespace

void copyEvents(const juce::MidiBuffer& source, juce::MidiBuffer& destination)
{
    // JUCE's own assignment makes a fresh array. The bytes are copied whole: events stay in their order.
    destination.data.clearQuick();
    destination.data.addArray(source.data.begin(), source.data.size());
}

void addSilencingEvents(juce::MidiBuffer& destination, int lastChannel)
{
    for (int channel = 1; channel <= lastChannel; ++channel)
    {
        destination.addEvent(juce::MidiMessage::allNotesOff(channel), 0);

        for (int note = 0; note < 128; ++note)
            destination.addEvent(juce::MidiMessage::noteOff(channel, note), 0);
    }
}

void MidiMonitor::noteOn(int channel, int note, int velocity) noexcept
{
    noteVelocity.store(velocity, relaxed);
    noteNumber.store(note, relaxed);
    noteChannel.store(channel, relaxed);
    held[static_cast<size_t>(note / 64)].fetch_or(bitOf(note), relaxed);
}

void MidiMonitor::noteOff(int note) noexcept
{
    held[static_cast<size_t>(note / 64)].fetch_and(~bitOf(note), relaxed);
}

void MidiMonitor::allNotesOff() noexcept
{
    for (auto& word : held)
        word.store(0, relaxed);
}

void MidiMonitor::controller(int number, int value) noexcept
{
    controllerNumber.store(number, relaxed);
    controllerValue.store(value, relaxed);
}

} // namespace quorel
