// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/InstrumentMidiAdaptor.h"

namespace quorel
{

InstrumentMidiAdaptor::InstrumentMidiAdaptor(InstanceAccess& hostedInstrument, LinkedValues& values)
    : access(hostedInstrument)
    , linkedValues(values)
{
    for (auto& linkedValue : linkedValues)
        linkedValue.addListener(this);
}

InstrumentMidiAdaptor::~InstrumentMidiAdaptor()
{
    for (auto& linkedValue : linkedValues)
        linkedValue.removeListener(this);
}

void InstrumentMidiAdaptor::handleIncomingMidiMessage(juce::MidiInput*, const juce::MidiMessage&)
{
}

void InstrumentMidiAdaptor::handlePartialSysexMessage(juce::MidiInput*, const juce::uint8*, int, double)
{
}

void InstrumentMidiAdaptor::setValueFromMidi(float)
{
}

void InstrumentMidiAdaptor::valueChanged(juce::Value& value)
{
    const InstanceAccess::Use instance(access);

    if (!instance)
        return;

    for (size_t i = 0; i < linkedValues.size(); ++i)
        if (linkedValues[i].refersToSameSourceAs(value))
            instance->setParameterNotifyingHost(static_cast<int>(i),
                                                static_cast<float>(static_cast<double>(value.getValue())));
}

} // namespace quorel
