// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/InstanceAccess.h"
#include "midi/MidiLinkedValueObject.h"

#include <array>

namespace quorel
{

/** Forwards a layer's ten linked values to the first ten parameters of its hosted instrument. Message
    thread. */
class InstrumentMidiAdaptor : public MidiLearner, public juce::Value::Listener
{
public:
    using LinkedValues = std::array<MidiLinkedValueObject, 10>;

    InstrumentMidiAdaptor(InstanceAccess& hostedInstrument, LinkedValues& values);
    ~InstrumentMidiAdaptor() override;

    /** The next three do nothing: an instrument gets its MIDI with the block, and nothing is learned here. */
    void handleIncomingMidiMessage(juce::MidiInput* source, const juce::MidiMessage& message) override;
    void handlePartialSysexMessage(juce::MidiInput* source, const juce::uint8* data, int numBytes,
                                   double timestamp) override;
    void setValueFromMidi(float value) override;

    void valueChanged(juce::Value& value) override;

private:
    InstanceAccess& access;
    LinkedValues& linkedValues;
};

} // namespace quorel
