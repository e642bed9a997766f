// SPDX-License-Identifier: GPL-3.0-or-later
#include "Score.h"

#include <cmath>

namespace quorel::demo
{

namespace
{
double ticks(double quarters)
{
    return std::round(quarters * ticksPerQuarter);
}
} // namespace

Track::Track(const juce::String& name, int midiChannel)
    : channel(midiChannel)
{
    addMeta(events, 0.0, juce::MidiMessage::textMetaEvent(3, name));
}

void Track::play(const Note& note)
{
    const auto velocity = static_cast<juce::uint8>(note.velocity);
    auto on = juce::MidiMessage::noteOn(channel, note.key, velocity);
    auto off = juce::MidiMessage::noteOff(channel, note.key);
    on.setTimeStamp(ticks(note.start));
    // A tick short, so that a repeated key is released before it is struck again.
    off.setTimeStamp(ticks(note.start + note.length) - 1.0);
    events.addEvent(on);
    events.addEvent(off);
}

void addMeta(juce::MidiMessageSequence& sequence, double quarters, const juce::MidiMessage& message)
{
    auto stamped = message;
    stamped.setTimeStamp(ticks(quarters));
    sequence.addEvent(stamped);
}

} // namespace quorel::demo
