// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_data_structures/juce_data_structures.h>
#include <memory>

namespace quorel
{

/** One binding of a MIDI source to a value, made from the message that taught it. An incoming message is
    turned into one as well, and compared with those stored. */
struct MidiMapping
{
    /** `sourceName`: name of the MIDI input, empty for the process-wide buffer. Never reads past a short
        message. */
    MidiMapping(const juce::String& sourceName, const juce::MidiMessage& message);

    /** True where `incoming` belongs to this binding: same channel, same kind, same number (any number for
        the pitch wheel). With `compareDevices`, this one must have a device whose name contains the other's
        or is contained in it. */
    bool matches(const MidiMapping& incoming, bool compareDevices) const;

    /** What the message says: `linkedValue` if there is one, else `value`. */
    float currentValue() const;

    juce::String deviceName;
    /** "NoteOn", "Control", "Program", "PitchWheel", or empty for anything else. */
    juce::String type;
    /** 1 to 16; 0 for system messages. */
    int channel = 0;
    /** First data byte, 0 where the message has none. */
    int number = 0;
    /** Seconds on the input's clock; the sample position for messages of the process-wide buffer. */
    double timestamp = 0.0;
    std::unique_ptr<juce::Value> linkedValue;
    /** 0 to 127; 0 to 129 for the pitch wheel. Controllers below 4 count as 0: worn faders don't reach their
        end. */
    float value = 0.0f;
    float scale = 1.0f;
};

} // namespace quorel
