// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi/MidiMapping.h"

namespace quorel
{

namespace
{
constexpr int controllerDeadZone = 4;

juce::String typeOf(int status)
{
    switch (status)
    {
    case 0x80:
    case 0x90:
        return "NoteOn";
    case 0xb0:
        return "Control";
    case 0xc0:
        return "Program";
    case 0xe0:
        return "PitchWheel";
    default:
        return {};
    }
}

float valueOf(int status, int data1, int data2)
{
    switch (status)
    {
    case 0x90:
        return static_cast<float>(data2);
    case 0xb0:
        return data2 < controllerDeadZone ? 0.0f : static_cast<float>(data2);
    case 0xc0:
        return static_cast<float>(data1);
    case 0xe0:
        return static_cast<float>((data2 * 128 + data1) / 127.0);
    default:
        return 0.0f;
    }
}
} // namespace

MidiMapping::MidiMapping(const juce::String& sourceName, const juce::MidiMessage& message)
    : deviceName(sourceName)
    , channel(message.getChannel())
    , timestamp(message.getTimeStamp())
{
    const auto* bytes = message.getRawData();
    const int size = message.getRawDataSize();
    const int status = size > 0 ? bytes[0] & 0xf0 : 0;
    number = size > 1 ? bytes[1] : 0;
    type = typeOf(status);
    value = valueOf(status, number, size > 2 ? bytes[2] : 0);
}

bool MidiMapping::matches(const MidiMapping& incoming, bool compareDevices) const
{
    if (type.isEmpty() || channel != incoming.channel || !type.contains(incoming.type))
        return false;
    if (compareDevices && (deviceName.isEmpty() || !(deviceName.contains(incoming.deviceName) ||
                                                     incoming.deviceName.contains(deviceName))))
        return false;
    return number == incoming.number || incoming.type.containsIgnoreCase("Pitch");
}

float MidiMapping::currentValue() const
{
    return linkedValue != nullptr ? static_cast<float>(linkedValue->getValue()) : value;
}

} // namespace quorel
