// SPDX-License-Identifier: GPL-3.0-or-later
// What quorel-render knows of songs: tempo map, event times, bars.
#include "MidiSong.h"
#include "SongPlayHead.h"

#include <gtest/gtest.h>

namespace quorel
{
namespace
{

using Bytes = std::vector<int>;

/** A file of raw bytes: header with `type` and `division`, then one chunk for each track. */
juce::MemoryBlock midiFile(int type, int division, const std::vector<Bytes>& tracks)
{
    juce::MemoryOutputStream out;
    out.write("MThd", 4);
    out.writeIntBigEndian(6);
    out.writeShortBigEndian(static_cast<short>(type));
    out.writeShortBigEndian(static_cast<short>(tracks.size()));
    out.writeShortBigEndian(static_cast<short>(division));
    for (const auto& track : tracks)
    {
        out.write("MTrk", 4);
        out.writeIntBigEndian(static_cast<int>(track.size()));
        for (const int byte : track)
            out.writeByte(static_cast<char>(byte));
    }
    return out.getMemoryBlock();
}

juce::Result readSong(const juce::MemoryBlock& bytes, MidiSong& song, std::optional<double> tempo = {})
{
    juce::MemoryInputStream stream(bytes, false);
    return MidiSong::read(stream, tempo, song);
}

/** In microseconds. */
std::vector<int> noteOnTimes(const MidiSong& song)
{
    std::vector<int> times;
    for (const auto& event : song.events())
        if (event.message.isNoteOn())
            times.push_back(juce::roundToInt(event.seconds * 1.0e6));
    return times;
}

Bytes track(Bytes bytes)
{
    for (const int byte : {0, 0xff, 0x2f, 0})
        bytes.push_back(byte);
    return bytes;
}

// 120 for one quarter (96 ticks), 60 for the next, then 240. Signatures 4/4, from the third quarter 3/8.
const Bytes conductor =
    track({0,    0xff, 0x51, 3,    0x07, 0xa1, 0x20, 96,   0xff, 0x51, 3, 0x0f, 0x42, 0x40, 96,
           0xff, 0x51, 3,    0x03, 0xd0, 0x90, 0,    0xff, 0x58, 4,    3, 3,    24,   8});
// Note-ons at quarters 0, 0.5, 1.5, 2 and 5, each let go at the next.
const Bytes notes = track({0,  0x90, 60, 100, 48, 60,  0,    0,    62, 100, 96, 62, 0,   0,  64, 100,
                           48, 64,   0,  0,   65, 100, 0x82, 0x20, 65, 0,   0,  67, 100, 96, 67, 0});

TEST(MidiSong, FollowsTheTempoMapOrAFixedTempo)
{
    MidiSong song;
    ASSERT_TRUE(readSong(midiFile(1, 96, {conductor, notes}), song));
    EXPECT_EQ(noteOnTimes(song), (std::vector<int>{0, 250000, 1000000, 1500000, 2250000}));
    EXPECT_NEAR(song.lengthSeconds(), 2.5, 1.0e-9);

    ASSERT_TRUE(readSong(midiFile(1, 96, {conductor, notes}), song, 100.0));
    EXPECT_EQ(noteOnTimes(song), (std::vector<int>{0, 300000, 900000, 1200000, 3000000}));
    EXPECT_EQ(song.tempoMap().bpmAt(1.5), 100.0);

    // 25 frames of 40 ticks: a tick is a millisecond, whatever the tempo.
    ASSERT_TRUE(readSong(midiFile(1, 0xe728, {conductor, notes}), song));
    EXPECT_EQ(noteOnTimes(song), (std::vector<int>{0, 48000, 144000, 192000, 480000}));
}

TEST(MidiSong, ReleasesWhatTheFileLeavesDown)
{
    MidiSong song;
    ASSERT_TRUE(readSong(
        midiFile(0, 96, {track({0, 0xb3, 64, 127, 0, 0x93, 60, 100, 96, 62, 90, 96, 60, 0})}), song));
    ASSERT_EQ(song.events().size(), 6u);
    EXPECT_TRUE(song.events()[4].message.isNoteOff());
    EXPECT_EQ(song.events()[4].message.getNoteNumber(), 62);
    EXPECT_TRUE(song.events()[5].message.isSustainPedalOff());
    EXPECT_NEAR(song.events()[5].seconds, 1.0, 1.0e-9);
}

TEST(MidiSong, RefusesWhatIsNoSong)
{
    const Bytes oneNote = track({0, 0x90, 60, 100, 96, 60, 0});
    auto trailing = midiFile(1, 96, {oneNote});
    trailing.append("rest", 4);
    const juce::MemoryBlock refused[] = {
        {},
        juce::MemoryBlock("RIFFsomething else entirely", 27),
        midiFile(1, 96, {}),
        midiFile(1, 96, {conductor}),
        midiFile(2, 96, {oneNote}),
        midiFile(1, 0, {oneNote}),
        midiFile(1, 0x8000, {oneNote}),
        midiFile(1, 0xe700, {oneNote}),
        // Hours on end: the longest delta four times, at 4 quarters a minute.
        midiFile(1, 1, {track({0, 0xff, 0x51, 3, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0x7f, 0x90, 60, 100})}),
    };
    MidiSong song;
    for (const auto& bytes : refused)
        EXPECT_TRUE(readSong(bytes, song).failed()) << bytes.getSize();

    // Cut anywhere, a file is refused or what is left of it is played: never more.
    const auto whole = midiFile(1, 96, {conductor, notes});
    for (std::size_t size = 0; size < whole.getSize(); ++size)
        EXPECT_TRUE(readSong(juce::MemoryBlock(whole.getData(), size), song).failed()) << size;

    // Meta events that are short, or whose numbers make no sense, are passed over.
    const Bytes odd = track(
        {0, 0xff, 0x51, 3, 0, 0, 0, 0, 0xff, 0x51, 1, 9, 0, 0xff, 0x58, 2, 0, 2, 0, 0xff, 0x58, 2, 4, 40});
    ASSERT_TRUE(readSong(midiFile(1, 96, {odd, oneNote}), song));
    EXPECT_EQ(song.tempoMap().bpmAt(0.0), 120.0);
    EXPECT_EQ(song.tempoMap().barAt(4.0).bar, 1);
}

TEST(SongPlayHead, CountsBarsBeatsAndSeconds)
{
    MidiSong song;
    ASSERT_TRUE(readSong(midiFile(1, 96, {conductor, notes}), song));
    SongPlayHead head(song.tempoMap(), 1000.0);

    struct Case
    {
        juce::int64 sample;
        double ppq, bpm;
        int numerator, bar;
        double barStart;
    };

    // The 4/4 bar is cut short at quarter 2; bars of 3/8 are 1.5 quarters long.
    const Case cases[] = {{0, 0.0, 120.0, 4, 0, 0.0},    {250, 0.5, 120.0, 4, 0, 0.0},
                          {1000, 1.5, 60.0, 4, 0, 0.0},  {1500, 2.0, 240.0, 3, 1, 2.0},
                          {1750, 3.0, 240.0, 3, 1, 2.0}, {1875, 3.5, 240.0, 3, 2, 3.5},
                          {2500, 6.0, 240.0, 3, 3, 5.0}};
    for (const auto& c : cases)
    {
        head.moveTo(c.sample, true);
        const auto position = head.getPosition();
        SCOPED_TRACE(c.sample);
        EXPECT_NEAR(*position->getPpqPosition(), c.ppq, 1.0e-9);
        EXPECT_NEAR(*position->getBpm(), c.bpm, 1.0e-9);
        EXPECT_EQ(position->getTimeSignature()->numerator, c.numerator);
        EXPECT_EQ(*position->getBarCount(), c.bar);
        EXPECT_NEAR(*position->getPpqPositionOfLastBarStart(), c.barStart, 1.0e-9);
        EXPECT_TRUE(position->getIsPlaying());
    }
}

} // namespace
} // namespace quorel
