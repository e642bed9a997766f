// SPDX-License-Identifier: GPL-3.0-or-later
#include "MidiSong.h"

#include "common/Tool.h"

#include <algorithm>
#include <array>

namespace quorel
{

namespace
{
constexpr double longestSongSeconds = 24.0 * 3600.0;
constexpr int numChannels = 16;
constexpr int numNotes = 128;
constexpr int sustainPedal = 64;
constexpr int tempoMeta = 0x51;
constexpr int signatureMeta = 0x58;
/** As a power of two: nobody writes a denominator above 64. */
constexpr int highestDenominatorPower = 6;

/** A file's ticks. With a frame rate they are clock time, else fractions of a quarter note. */
struct TickScale
{
    /** Nothing where the header's number makes no sense. */
    static std::optional<TickScale> fromHeader(short timeFormat)
    {
        if (timeFormat > 0)
            return TickScale{false, static_cast<double>(timeFormat)};

        const int framesPerSecond = -(timeFormat >> 8);
        const int ticksPerFrame = timeFormat & 0xff;
        if (timeFormat == 0 || framesPerSecond <= 0 || ticksPerFrame == 0)
            return {};
        // The rate called 29 is that of drop-frame video.
        const double frames = framesPerSecond == 29 ? 30.0 / 1.001 : framesPerSecond;
        return TickScale{true, frames * ticksPerFrame};
    }

    double secondsAt(double ticks, const TempoMap& tempos) const
    {
        return isClockTime ? ticks / ticksPerUnit : tempos.secondsAt(ticks / ticksPerUnit);
    }

    double quartersAt(double ticks, const TempoMap& tempos) const
    {
        return isClockTime ? tempos.quartersAt(ticks / ticksPerUnit) : ticks / ticksPerUnit;
    }

    bool isClockTime;
    double ticksPerUnit;
};

/** All events of all tracks by their ticks; at the same tick in the tracks' order. */
std::vector<const juce::MidiMessage*> inPlayingOrder(const juce::MidiFile& file)
{
    std::vector<const juce::MidiMessage*> messages;
    for (int track = 0; track < file.getNumTracks(); ++track)
        for (const auto* holder : *file.getTrack(track))
            messages.push_back(&holder->message);
    std::stable_sort(messages.begin(), messages.end(),
                     [](const auto* a, const auto* b) { return a->getTimeStamp() < b->getTimeStamp(); });
    return messages;
}

/** Data bytes of a meta event of a type and at least a length; null for anything else. */
const juce::uint8* metaData(const juce::MidiMessage& message, int type, int length)
{
    return message.getMetaEventType() == type && message.getMetaEventLength() >= length
               ? message.getMetaEventData()
               : nullptr;
}

void readTempi(const std::vector<const juce::MidiMessage*>& messages, const TickScale& scale,
               TempoMap& tempos)
{
    for (const auto* message : messages)
        if (const auto* data = metaData(*message, tempoMeta, 3))
            if (const int microseconds = data[0] << 16 | data[1] << 8 | data[2]; microseconds > 0)
                tempos.addTempo(scale.quartersAt(message->getTimeStamp(), tempos), 6.0e7 / microseconds);
}

void readSignatures(const std::vector<const juce::MidiMessage*>& messages, const TickScale& scale,
                    TempoMap& tempos)
{
    for (const auto* message : messages)
        if (const auto* data = metaData(*message, signatureMeta, 2))
            if (data[0] > 0 && data[1] <= highestDenominatorPower)
                tempos.addSignature(scale.quartersAt(message->getTimeStamp(), tempos), data[0], 1 << data[1]);
}
} // namespace

juce::Result MidiSong::read(const juce::File& file, std::optional<double> fixedTempo, MidiSong& song)
{
    juce::FileInputStream stream(file);
    if (!stream.openedOk() || file.isDirectory())
        return cannotRead(file);
    const auto result = read(stream, fixedTempo, song);
    return result.wasOk() ? result
                          : juce::Result::fail(file.getFullPathName() + ": " + result.getErrorMessage());
}

juce::Result MidiSong::read(juce::InputStream& stream, std::optional<double> fixedTempo, MidiSong& song)
{
    song = {};
    juce::MidiFile file;
    int type = 0;
    if (!file.readFrom(stream, false, &type))
        return juce::Result::fail("not a Standard MIDI File, or damaged");
    if (type == 2)
        return juce::Result::fail("holds independent patterns (type 2), not one song");
    const auto scale = TickScale::fromHeader(file.getTimeFormat());
    if (!scale.has_value())
        return juce::Result::fail("has no usable time division");

    const auto messages = inPlayingOrder(file);
    if (fixedTempo.has_value())
        song.tempos.addTempo(0.0, *fixedTempo);
    else
        readTempi(messages, *scale, song.tempos);
    readSignatures(messages, *scale, song.tempos);

    bool anyNote = false;
    for (const auto* message : messages)
    {
        const double seconds = scale->secondsAt(message->getTimeStamp(), song.tempos);
        song.length = std::max(song.length, seconds);
        anyNote |= message->isNoteOn();
        if (!message->isMetaEvent())
            song.eventList.push_back({seconds, *message});
    }
    if (!anyNote)
        return juce::Result::fail("holds no notes");
    if (!(song.length <= longestSongSeconds))
        return juce::Result::fail("is longer than a day");
    song.releaseWhatIsHeld();
    return juce::Result::ok();
}

MidiSong MidiSong::silence(std::optional<double> fixedTempo)
{
    MidiSong song;
    if (fixedTempo.has_value())
        song.tempos.addTempo(0.0, *fixedTempo);
    return song;
}

void MidiSong::releaseWhatIsHeld()
{
    std::array<std::array<bool, numNotes>, numChannels> held{};
    std::array<bool, numChannels> pedal{};
    for (const auto& event : eventList)
    {
        const auto& message = event.message;
        if (message.getChannel() == 0)
            continue;
        const auto channel = static_cast<std::size_t>(message.getChannel() - 1);
        if (message.isNoteOnOrOff())
            held[channel][static_cast<std::size_t>(message.getNoteNumber())] = message.isNoteOn();
        else if (message.isControllerOfType(sustainPedal))
            pedal[channel] = message.isSustainPedalOn();
    }

    for (int channel = 0; channel < numChannels; ++channel)
    {
        const auto c = static_cast<std::size_t>(channel);
        for (int note = 0; note < numNotes; ++note)
            if (held[c][static_cast<std::size_t>(note)])
                eventList.push_back({length, juce::MidiMessage::noteOff(channel + 1, note)});
        if (pedal[c])
            eventList.push_back({length, juce::MidiMessage::controllerEvent(channel + 1, sustainPedal, 0)});
    }
}

} // namespace quorel
