// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/LayerMidiFilter.h"

#include "parameters/ParameterCodings.h"

namespace quorel
{

namespace
{
/** Notes of the Dorvik drum pads that the zones play: C, D, E, F, then C sharp, D sharp, F sharp, G. */
constexpr std::array<juce::uint8, numZones> zoneTargetNote{60, 62, 64, 65, 61, 63, 66, 67};

constexpr int midiChannelSteps = 16;
constexpr int controllerSteps = 128;
constexpr int maxTranspose = 24;
constexpr int bankSelectController = 32;
constexpr int modWheelController = 1;
constexpr int sustainController = 64;
constexpr int allNotesOffController = 123;

enum Status : int
{
    noteOff = 0x80,
    noteOn = 0x90,
    polyAfterTouch = 0xa0,
    controller = 0xb0,
    programChange = 0xc0,
    pitchWheel = 0xe0,
    system = 0xf0
};

/** Numbers in the order of their pairs: min at even places, max at odd ones. */
constexpr int zoneKeyNumber(int zone, int end)
{
    return layerSlot::zoneKeys + 2 * zone + end;
}

constexpr int zoneVelocityNumber(int zone, int end)
{
    return layerSlot::zoneVelocities + 2 * zone + end;
}

constexpr int statusOf(int firstByte)
{
    return firstByte & 0xf0;
}

bool isWhole(const juce::uint8* data, int size)
{
    if (size < 1 || data[0] < noteOff)
        return false;
    if (statusOf(data[0]) == system)
        return true;
    if (size < juce::MidiMessage::getMessageLengthFromFirstByte(data[0]))
        return false;
    for (int i = 1; i < size; ++i)
        if (data[i] > 127)
            return false;
    return true;
}

bool isFreeOfControllerBlock(int number)
{
    return number == 0 || number == modWheelController || number == 2 || number == 4 ||
           number == sustainController || number == allNotesOffController;
}

bool isBlocked(const LayerMidiSettings& s, int status, int number)
{
    switch (status)
    {
    case programChange:
        return s.blockProgramChange;
    case pitchWheel:
        return s.blockPitchWheel;
    case polyAfterTouch:
        return s.blockAfterTouch;
    case controller:
        return (s.freeControllerBlock && !isFreeOfControllerBlock(number)) ||
               (s.blockBankSelect && number == bankSelectController) ||
               (s.blockModWheel && number == modWheelController) ||
               (s.blockSustain && number == sustainController) ||
               (s.blockUserController1 && number == s.userController1) ||
               (s.blockUserController2 && number == s.userController2);
    default:
        return false;
    }
}

/** A three-byte channel message; `channel` counts from 1. */
struct ChannelMessage
{
    int status;
    int channel;
    int data1;
    int data2;

    /** A note-on of velocity 0 is a note-off. */
    bool startsNote() const noexcept { return status == noteOn && data2 > 0; }
};

void addMessage(juce::MidiBuffer& out, const ChannelMessage& message, int samplePosition)
{
    const juce::uint8 bytes[3] = {static_cast<juce::uint8>(message.status | ((message.channel - 1) & 0xf)),
                                  static_cast<juce::uint8>(message.data1),
                                  static_cast<juce::uint8>(message.data2)};
    out.addEvent(bytes, 3, samplePosition);
}

void silence(const LayerMidiSettings& s, juce::MidiBuffer& out)
{
    const int channel = s.midiChannel < 1 || s.midiChannel > 16 ? 1 : s.midiChannel;
    for (int note = 0; note < 128; ++note)
    {
        addMessage(out, {noteOff, channel, note, 0}, 0);
        addMessage(out, {controller, channel, allNotesOffController, 0}, 0);
    }
}

/** Plays the zones by one note message. */
void playZones(const LayerMidiSettings& s, ZoneHeldNotes& held, const ChannelMessage& message,
               int samplePosition, juce::MidiBuffer& out)
{
    const int note = message.data1;
    const int velocity = message.data2;

    for (int zone = 0; zone < numZones; ++zone)
    {
        const auto index = static_cast<std::size_t>(zone);
        const auto& range = s.zones[index];
        const int target = zoneTargetNote[index];
        if (note < range.keyMin || note > range.keyMax)
            continue;

        if (!message.startsNote())
        {
            held.remove(zone, note);
            // Even where the zone is off or held nothing: a pad that started earlier has to stop.
            if (held.isEmpty(zone))
                addMessage(out, {noteOff, message.channel, target, 0}, samplePosition);
        }
        else if (s.zoneOn[index] && velocity >= range.velocityMin && velocity <= range.velocityMax)
        {
            if (held.isEmpty(zone))
                addMessage(out, {noteOn, message.channel, target, velocity}, samplePosition);
            held.add(zone, note);
        }
    }
}
} // namespace

LayerMidiParameters::LayerMidiParameters() noexcept
{
    const LayerMidiSettings start;
    const auto set = [this](int n, int decoded) { word(n).store(decoded, std::memory_order_relaxed); };

    set(layerSlot::userController1, start.userController1);
    set(layerSlot::userController2, start.userController2);
    set(layerSlot::keyMin, start.keyMin);
    set(layerSlot::keyMax, start.keyMax);
    set(layerSlot::velocityMin, start.velocityMin);
    set(layerSlot::velocityMax, start.velocityMax);
    for (int zone = 0; zone < numZones; ++zone)
    {
        const auto& range = start.zones[static_cast<std::size_t>(zone)];
        set(zoneKeyNumber(zone, 0), range.keyMin);
        set(zoneKeyNumber(zone, 1), range.keyMax);
        set(zoneVelocityNumber(zone, 0), range.velocityMin);
        set(zoneVelocityNumber(zone, 1), range.velocityMax);
    }
}

void LayerMidiParameters::write(int n, float value) noexcept
{
    const auto set = [this, n](int decoded) { word(n).store(decoded); };

    if (n == layerSlot::midiChannel)
        set(static_cast<int>(clampUnit(value) * midiChannelSteps));
    else if (n >= layerSlot::blockProgramChange && n <= layerSlot::blockUserController2)
        set(clampUnit(value) != 0.0f ? 1 : 0);
    else if (n == layerSlot::userController1 || n == layerSlot::userController2)
        set(static_cast<int>(clampUnit(value) * controllerSteps));
    else if (n == layerSlot::transpose)
        set(paramToInt(value, -maxTranspose, maxTranspose));
    else if ((n >= layerSlot::keyMin && n <= layerSlot::velocityMax) ||
             (n >= layerSlot::zoneKeys && n < layerSlot::zoneOn))
        set(paramToInt(value, 0, 127));
}

LayerMidiSettings LayerMidiParameters::snapshot() const noexcept
{
    LayerMidiSettings s;
    const auto blocks = [this](int switchNumber)
    { return read(layerSlot::blockProgramChange + switchNumber) != 0; };

    s.midiChannel = read(layerSlot::midiChannel);
    s.blockProgramChange = blocks(0);
    s.blockBankSelect = blocks(1);
    s.blockPitchWheel = blocks(2);
    s.blockModWheel = blocks(3);
    s.blockAfterTouch = blocks(4);
    s.blockSustain = blocks(5);
    s.blockUserController1 = blocks(6);
    s.blockUserController2 = blocks(7);
    s.userController1 = read(layerSlot::userController1);
    s.userController2 = read(layerSlot::userController2);
    s.transpose = read(layerSlot::transpose);
    s.keyMin = read(layerSlot::keyMin);
    s.keyMax = read(layerSlot::keyMax);
    s.velocityMin = read(layerSlot::velocityMin);
    s.velocityMax = read(layerSlot::velocityMax);
    for (int zone = 0; zone < numZones; ++zone)
        s.zones[static_cast<std::size_t>(zone)] = {read(zoneKeyNumber(zone, 0)), read(zoneKeyNumber(zone, 1)),
                                                   read(zoneVelocityNumber(zone, 0)),
                                                   read(zoneVelocityNumber(zone, 1))};
    return s;
}

std::atomic<int>& LayerMidiParameters::word(int n) noexcept
{
    return words[static_cast<std::size_t>(n - firstNumber)];
}

int LayerMidiParameters::read(int n) const noexcept
{
    return words[static_cast<std::size_t>(n - firstNumber)].load(std::memory_order_relaxed);
}

bool ZoneHeldNotes::isEmpty(int zone) const noexcept
{
    const auto& bits = zones[static_cast<std::size_t>(zone)].bits;
    return (bits[0] | bits[1]) == 0;
}

void ZoneHeldNotes::add(int zone, int note) noexcept
{
    const auto bit = static_cast<unsigned>(note);
    zones[static_cast<std::size_t>(zone)].bits[bit / 64] |= std::uint64_t{1} << (bit % 64);
}

void ZoneHeldNotes::remove(int zone, int note) noexcept
{
    const auto bit = static_cast<unsigned>(note);
    zones[static_cast<std::size_t>(zone)].bits[bit / 64] &= ~(std::uint64_t{1} << (bit % 64));
}

void ZoneHeldNotes::clear() noexcept
{
    zones = {};
}

void filterLayerMidi(const LayerMidiSettings& s, ZoneHeldNotes& held, bool silenceFirst,
                     const juce::MidiBuffer& in, juce::MidiBuffer& out)
{
    if (silenceFirst)
    {
        silence(s, out);
        held.clear();
        return;
    }

    for (const auto event : in)
    {
        if (!isWhole(event.data, event.numBytes))
            continue;

        const int status = statusOf(event.data[0]);
        const int channel = status == system ? 0 : (event.data[0] & 0xf) + 1;
        bool pass = s.midiChannel == 0 || s.midiChannel == channel;

        if (status != noteOn && status != noteOff)
        {
            if (pass && !isBlocked(s, status, event.numBytes > 1 ? event.data[1] : 0))
                out.addEvent(event.data, event.numBytes, event.samplePosition);
            continue;
        }

        ChannelMessage message{status, channel, event.data[1], event.data[2]};

        if (message.data1 < s.keyMin || message.data1 > s.keyMax)
            pass = false;
        // The velocity of a note-off says nothing of how its key was struck: it passes, though the note-on
        // may have been stopped.
        if (message.startsNote() && (message.data2 < s.velocityMin || message.data2 > s.velocityMax))
            pass = false;

        if (s.drumMode)
        {
            playZones(s, held, message, event.samplePosition, out);
        }
        else if (pass)
        {
            // Beyond either end of the keyboard a note comes back at the other end, on purpose.
            message.data1 = (message.data1 + s.transpose) & 127;
            addMessage(out, message, event.samplePosition);
        }
    }
}

} // namespace quorel
