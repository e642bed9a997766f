// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/DroppedSong.h"

#include "platform/FileOperations.h"

#include <algorithm>
#include <cmath>

namespace quorel
{

namespace
{
constexpr juce::int64 largestFile = 2 * 1024 * 1024;
constexpr double longestSeconds = 3600.0;
constexpr double secondsPerQuarter = 0.5;
constexpr int mostEventsInBlock = 256;
constexpr int pitchWheelCentre = 64;

bool isPlayed(const juce::MidiMessage& message)
{
    return message.isNoteOnOrOff() || message.isPitchWheel() || message.isAftertouch() ||
           message.isChannelPressure() || message.isControllerOfType(1) || message.isSustainPedalOn() ||
           message.isSustainPedalOff();
}

/** Takes what stands in ticks, in order, to seconds. */
class Clock
{
public:
    explicit Clock(short timeFormat)
    {
        // Negative: frames a second, and ticks a frame.
        const int frames = -(timeFormat >> 8);
        secondsPerTick = timeFormat > 0 ? secondsPerQuarter / timeFormat
                                        : 1.0 / juce::jmax(1, frames * (timeFormat & 0xff));
        ticksPerQuarter = juce::jmax<int>(0, timeFormat);
    }

    double secondsAt(double ticks)
    {
        seconds += juce::jmax(0.0, ticks - lastTicks) * secondsPerTick;
        lastTicks = juce::jmax(lastTicks, ticks);
        return seconds;
    }

    void setTempo(double secondsOfQuarter)
    {
        if (ticksPerQuarter > 0 && secondsOfQuarter > 0.0)
            secondsPerTick = secondsOfQuarter / ticksPerQuarter;
    }

private:
    double secondsPerTick = 0.0;
    int ticksPerQuarter = 0;
    double lastTicks = 0.0;
    double seconds = 0.0;
};
} // namespace

juce::Result DroppedSong::read(const juce::File& file, std::vector<Event>& events)
{
    juce::MemoryBlock bytes;

    if (file.getSize() > largestFile)
        return juce::Result::fail("the file is too large");

    if (!readWholeFile(file, bytes))
        return juce::Result::fail("the file can't be read");

    juce::MemoryInputStream stream(bytes, false);
    juce::MidiFile midi;

    // Without matching pairs: looking for those takes hours in a file made for it.
    if (!midi.readFrom(stream, false) || midi.getTimeFormat() == 0)
        return juce::Result::fail("it is no MIDI file");

    std::vector<juce::MidiMessage> all;

    for (int track = 0; track < midi.getNumTracks(); ++track)
        for (const auto* holder : *midi.getTrack(track))
            if (isPlayed(holder->message) || holder->message.isTempoMetaEvent())
                all.push_back(holder->message);

    std::stable_sort(all.begin(), all.end(),
                     [](const auto& a, const auto& b) { return a.getTimeStamp() < b.getTimeStamp(); });
    Clock clock(midi.getTimeFormat());
    bool hasNote = false;

    for (const auto& message : all)
    {
        const double seconds = clock.secondsAt(message.getTimeStamp());

        if (!(seconds <= longestSeconds))
            break;

        if (message.isTempoMetaEvent())
        {
            clock.setTempo(message.getTempoSecondsPerQuarterNote());
            continue;
        }

        Event event;
        event.seconds = seconds;
        event.numBytes = juce::jmin<int>(message.getRawDataSize(), static_cast<int>(event.bytes.size()));
        std::copy_n(message.getRawData(), event.numBytes, event.bytes.begin());
        events.push_back(event);
        hasNote = hasNote || message.isNoteOn();
    }

    return hasNote ? juce::Result::ok() : juce::Result::fail("it holds no notes");
}

juce::Result DroppedSong::load(const juce::File& file)
{
    std::vector<Event> events;

    if (const auto result = read(file, events); result.failed())
        return result;

    replace(std::move(events), file.getFileName());
    return juce::Result::ok();
}

void DroppedSong::forget()
{
    replace({}, {});
}

void DroppedSong::replace(std::vector<Event> events, const juce::String& newName)
{
    if (state.load() != State::silent)
        state.store(State::stopping);

    {
        const juce::SpinLock::ScopedLockType lock(songLock);
        song.swap(events);
    }

    name = newName;
}

void DroppedSong::startOrStop() noexcept
{
    auto expected = State::silent;

    if (!state.compare_exchange_strong(expected, State::starting))
        state.store(State::stopping);
}

//==============================================================================================================
// Audio thread

void DroppedSong::add(juce::MidiBuffer& events, const Event& event, int sample) noexcept
{
    events.addEvent(event.bytes.data(), event.numBytes, sample);
    ++addedInBlock;
    const auto channel = static_cast<size_t>(event.bytes[0] & 0x0f);
    const int status = event.bytes[0] & 0xf0;
    touchedChannels.set(channel);

    if (status == 0x80 || status == 0x90)
        heldNotes[channel].set(event.bytes[1] & 0x7fu, status == 0x90 && event.bytes[2] > 0);
}

bool DroppedSong::release(juce::MidiBuffer& events) noexcept
{
    for (size_t channel = 0; channel < heldNotes.size(); ++channel)
    {
        if (!touchedChannels[channel])
            continue;

        const auto of = [channel](int status)
        { return static_cast<juce::uint8>(status | static_cast<int>(channel)); };

        for (size_t note = 0; heldNotes[channel].any() && note < heldNotes[channel].size(); ++note)
        {
            if (!heldNotes[channel][note])
                continue;

            if (addedInBlock >= mostEventsInBlock)
                return false;

            add(events, {0.0, {of(0x80), static_cast<juce::uint8>(note), 0}, 3}, 0);
        }

        add(events, {0.0, {of(0xb0), 64, 0}, 3}, 0);
        add(events, {0.0, {of(0xb0), 1, 0}, 3}, 0);
        add(events, {0.0, {of(0xd0), 0, 0}, 2}, 0);
        add(events, {0.0, {of(0xe0), 0, pitchWheelCentre}, 3}, 0);
        touchedChannels.reset(channel);
    }

    return true;
}

void DroppedSong::addBlock(juce::MidiBuffer& events, int numSamples, double sampleRate) noexcept
{
    auto now = state.load();

    if (now == State::silent)
        return;

    addedInBlock = 0;

    if (now == State::stopping)
    {
        if (release(events))
            state.compare_exchange_strong(now, State::silent);

        return;
    }

    const juce::SpinLock::ScopedTryLockType lock(songLock);

    if (!lock.isLocked())
        return;

    if (now == State::starting)
    {
        next = 0;
        position = 0.0;

        // It may have been stopped already.
        if (!state.compare_exchange_strong(now, State::playing))
            return;

        now = State::playing;
    }

    const double end = position + numSamples / sampleRate;

    for (; next < song.size() && song[next].seconds < end && addedInBlock < mostEventsInBlock; ++next)
    {
        const auto sample = static_cast<int>((song[next].seconds - position) * sampleRate);
        add(events, song[next], juce::jlimit(0, numSamples - 1, sample));
    }

    position = end;

    if (next >= song.size())
        state.compare_exchange_strong(now, State::stopping);
}

} // namespace quorel
