// SPDX-License-Identifier: GPL-3.0-or-later
// A MIDI file on the preview key.
#include "engine/DroppedSong.h"

#include "support/AllocationGuard.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorel::test
{

namespace
{
constexpr double rate = 1000.0;
constexpr int block = 100;

juce::File write(const ScratchFolder& scratch, const juce::MidiFile& midi)
{
    const auto file = scratch.child("song.mid");
    juce::MemoryOutputStream bytes;
    midi.writeTo(bytes);
    file.replaceWithData(bytes.getData(), bytes.getDataSize());
    return file;
}

/** Two notes a quarter apart, at 120 and then at 60 quarters a minute, the second one never released. */
juce::MidiFile twoNotes()
{
    juce::MidiFile midi;
    midi.setTicksPerQuarterNote(96);
    juce::MidiMessageSequence tempo;
    tempo.addEvent(juce::MidiMessage::tempoMetaEvent(1000000).withTimeStamp(96));
    juce::MidiMessageSequence notes;
    notes.addEvent(juce::MidiMessage::programChange(2, 5));
    notes.addEvent(juce::MidiMessage::noteOn(2, 60, 0.5f));
    notes.addEvent(juce::MidiMessage::noteOff(2, 60).withTimeStamp(96));
    notes.addEvent(juce::MidiMessage::controllerEvent(2, 7, 1).withTimeStamp(96));
    notes.addEvent(juce::MidiMessage::noteOn(2, 64, 0.5f).withTimeStamp(144));
    midi.addTrack(tempo);
    midi.addTrack(notes);
    return midi;
}

/** What the song plays in some blocks, as "time:message". */
juce::StringArray play(DroppedSong& song, int numBlocks)
{
    juce::StringArray played;

    for (int i = 0; i < numBlocks; ++i)
    {
        juce::MidiBuffer events;
        song.addBlock(events, block, rate);

        for (const auto event : events)
            if (const auto message = event.getMessage();
                message.isNoteOnOrOff() || message.isProgramChange() || message.isControllerOfType(7))
                played.add(juce::String(i * block + event.samplePosition) +
                           (message.isNoteOn() ? ":on " : ":off ") + juce::String(message.getNoteNumber()));
    }

    return played;
}
} // namespace

TEST(DroppedSong, PlaysOnceInItsOwnTempoAndLetsGoOfWhatItHolds)
{
    const ScratchFolder scratch;
    DroppedSong song;
    EXPECT_FALSE(song.isLoaded());
    ASSERT_TRUE(song.load(write(scratch, twoNotes())));
    EXPECT_EQ(play(song, 3).size(), 0) << "not before it is started";
    song.startOrStop();
    EXPECT_EQ(play(song, 20).joinIntoString(" "), "0:on 60 500:off 60 1000:on 64 1100:off 64");
    EXPECT_FALSE(song.isPlaying());

    song.startOrStop();
    EXPECT_EQ(play(song, 2).joinIntoString(" "), "0:on 60") << "from its start";
    song.startOrStop();
    EXPECT_EQ(play(song, 30).joinIntoString(" "), "0:off 60");
    // A song that is dropped while another plays ends it.
    song.startOrStop();
    play(song, 1);
    ASSERT_TRUE(song.load(write(scratch, twoNotes())));
    EXPECT_EQ(play(song, 30).joinIntoString(" "), "0:off 60");
    song.forget();
    EXPECT_FALSE(song.isLoaded());
}

TEST(DroppedSong, AnyFileIsReadOrRefused)
{
    const ScratchFolder scratch;
    DroppedSong song;
    const auto good = write(scratch, twoNotes());
    ASSERT_TRUE(song.load(good));
    juce::MemoryBlock bytes;
    good.loadFileAsData(bytes);
    const auto file = scratch.child("other.mid");
    juce::Random random(3);

    for (int i = 0; i < 1000; ++i)
    {
        auto damaged = bytes;

        for (int n = random.nextInt(4); n >= 0; --n)
            damaged[random.nextInt(static_cast<int>(damaged.getSize()))] =
                static_cast<char>(random.nextInt(256));

        damaged.setSize(static_cast<size_t>(random.nextInt(static_cast<int>(bytes.getSize()) + 1)) + 1, true);
        file.replaceWithData(damaged.getData(), damaged.getSize());

        if (song.load(file))
        {
            song.startOrStop();
            play(song, 3);
        }
    }

    // As many notes at one moment as there is room for, none of them ever released.
    juce::MidiFile dense;
    dense.setTicksPerQuarterNote(1);
    juce::MidiMessageSequence notes;

    for (int i = 0; i < 100000; ++i)
        notes.addEvent(juce::MidiMessage::noteOn(1 + i % 16, i % 128, 0.5f));

    dense.addTrack(notes);
    ASSERT_TRUE(song.load(write(scratch, dense)));
    song.startOrStop();
    juce::MidiBuffer events;
    events.ensureSize(32768);

    for (int i = 0; i < 20; ++i)
    {
        events.data.clearQuick();
        const AllocationGuard guard;
        song.addBlock(events, 64, 44100.0);
        EXPECT_EQ(guard.heapCalls(), 0);
        EXPECT_LE(events.getNumEvents(), 400);
    }

    file.replaceWithText("no song");
    EXPECT_EQ(song.load(file).getErrorMessage(), "it is no MIDI file");
    EXPECT_TRUE(song.isLoaded()) << "the one before stays";
    file.replaceWithData(juce::MemoryBlock(3 * 1024 * 1024, true).getData(), 3 * 1024 * 1024);
    EXPECT_EQ(song.load(file).getErrorMessage(), "the file is too large");
}

} // namespace quorel::test
