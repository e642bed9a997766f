// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-demosong: writes the demo song. Four bars of introduction and eight of a tune in 4/4, eight bars of
// a middle part in 3/4, and two slowing bars to end on; D minor, 104 quarter notes a minute.
//
// The key alone decides who plays, as on one keyboard: drums on 24 to 31, bass on 43 to 57 (written an octave
// above its sound), chords on 58 to 76, the tune from 77. Its loud notes, from velocity 92, are for a second
// instrument.
#include "Score.h"

#include "common/Tool.h"

#include <CLI/CLI.hpp>
#include <array>
#include <vector>

namespace quorel::demo
{
namespace
{
constexpr double tempo = 104.0;
constexpr int introBars = 4;
constexpr int tuneBars = 8;
constexpr int waltzBars = 8;
constexpr double tuneStart = introBars * 4.0;
constexpr double waltzStart = tuneStart + tuneBars * 4.0;
constexpr double endStart = waltzStart + waltzBars * 3.0;

// Drums by key, in the order of the drum instrument's pads.
constexpr int kick = 24, clap = 25, snare = 26, cowbell = 27, closedHat = 28, openHat = 29, lowTom = 30,
              highTom = 31;

struct Harmony
{
    std::array<int, 4> chord;
    int root;
    int fifth;
};

constexpr Harmony dMinor9{{65, 69, 72, 76}, 50, 57};
constexpr Harmony bFlatMajor9{{62, 65, 69, 72}, 46, 53};
constexpr Harmony fMajor9{{64, 67, 69, 72}, 53, 48};
constexpr Harmony cAdd9{{64, 67, 72, 74}, 48, 55};
constexpr Harmony gMinor7{{62, 65, 70, 74}, 43, 50};
constexpr Harmony c9{{64, 70, 72, 74}, 48, 55};
constexpr Harmony eHalfDiminished{{64, 67, 70, 74}, 52, 46};
constexpr Harmony a7Flat9{{61, 67, 70, 76}, 45, 52};
constexpr Harmony dMinor{{62, 65, 69, 74}, 50, 45};

constexpr std::array<Harmony, 4> cycle{dMinor9, bFlatMajor9, fMajor9, cAdd9};
constexpr std::array<Harmony, waltzBars> waltz{gMinor7,         c9,      fMajor9, bFlatMajor9,
                                               eHalfDiminished, a7Flat9, dMinor,  dMinor};

void playChord(Track& track, const Harmony& harmony, double start, double length, int velocity)
{
    // Spread a little from the bottom, as a hand does.
    double delay = 0.0;
    for (const int key : harmony.chord)
    {
        track.play({start + delay, length - delay, key, velocity});
        delay += 0.02;
    }
}

void writeChords(Track& track)
{
    for (int bar = 0; bar < introBars + tuneBars; ++bar)
    {
        const auto& harmony = cycle[static_cast<std::size_t>(bar) % cycle.size()];
        const double start = bar * 4.0;
        playChord(track, harmony, start, 2.4, 74);
        if (bar >= introBars)
        {
            playChord(track, harmony, start + 2.5, 0.4, 58);
            playChord(track, harmony, start + 3.5, 0.4, 64);
        }
    }
    for (int bar = 0; bar < waltzBars; ++bar)
        playChord(track, waltz[static_cast<std::size_t>(bar)], waltzStart + bar * 3.0, 2.8, 68 + 2 * bar);
    playChord(track, a7Flat9, endStart, 2.8, 70);
    playChord(track, dMinor9, endStart + 3.0, 4.0, 62);
}

void writeBass(Track& track)
{
    for (int bar = 2; bar < introBars + tuneBars; ++bar)
    {
        const auto& harmony = cycle[static_cast<std::size_t>(bar) % cycle.size()];
        const Note line[] = {{0.0, 1.4, harmony.root, 104},
                             {1.5, 0.5, harmony.root, 82},
                             {2.0, 0.9, harmony.fifth, 94},
                             {3.0, 0.4, harmony.root, 88},
                             {3.5, 0.5, harmony.fifth, 76}};
        track.playAt(bar * 4.0, line);
    }
    for (int bar = 0; bar < waltzBars; ++bar)
    {
        const auto& harmony = waltz[static_cast<std::size_t>(bar)];
        const Note line[] = {{0.0, 1.9, harmony.root, 100}, {2.0, 0.9, harmony.fifth, 78}};
        track.playAt(waltzStart + bar * 3.0, line);
    }
    const Note ending[] = {{0.0, 2.8, a7Flat9.root, 92}, {3.0, 4.0, dMinor.root, 96}};
    track.playAt(endStart, ending);
}

void writeTune(Track& track)
{
    const Note tune[] = {
        {0.0, 1.5, 81, 72},   {1.5, 0.5, 79, 64},   {2.0, 1.0, 77, 70},   {3.0, 1.0, 81, 78},  // D minor
        {4.0, 2.0, 86, 108},  {6.0, 1.0, 84, 80},   {7.0, 1.0, 81, 74},                        // B flat
        {8.0, 1.5, 84, 86},   {9.5, 0.5, 81, 70},   {10.0, 2.0, 79, 76},                       // F
        {12.0, 1.0, 88, 110}, {13.0, 1.0, 86, 88},  {14.0, 1.0, 84, 80},  {15.0, 1.0, 79, 72}, // C
        {16.0, 1.5, 89, 112}, {17.5, 0.5, 88, 84},  {18.0, 1.0, 86, 90},  {19.0, 1.0, 81, 78}, // D minor
        {20.0, 1.0, 86, 94},  {21.0, 1.0, 89, 104}, {22.0, 2.0, 93, 120},                      // B flat
        {24.0, 1.0, 91, 106}, {25.0, 0.5, 89, 90},  {25.5, 0.5, 88, 86},  {26.0, 2.0, 84, 82}, // F
        {28.0, 1.0, 86, 80},  {29.0, 1.0, 88, 88},  {30.0, 0.5, 91, 96},  {30.5, 0.5, 88, 84}, // C
        {31.0, 0.9, 86, 78}};
    const Note middle[] = {
        {0.0, 2.0, 86, 84},   {2.0, 1.0, 82, 70},  {3.0, 2.0, 84, 80},   {5.0, 1.0, 82, 68},   // G minor, C
        {6.0, 2.0, 81, 76},   {8.0, 1.0, 84, 80},  {9.0, 2.9, 86, 98},                         // F, B flat
        {12.0, 2.0, 88, 102}, {14.0, 1.0, 86, 86}, {15.0, 2.0, 85, 94},  {17.0, 1.0, 88, 100}, // E, A
        {18.0, 1.0, 86, 88},  {19.0, 1.0, 89, 98}, {20.0, 1.0, 93, 114}, {21.0, 2.9, 86, 90}}; // D minor
    const Note ending[] = {{0.0, 1.0, 85, 80}, {1.0, 1.0, 88, 74},  {2.0, 1.0, 91, 70},
                           {3.0, 4.0, 86, 76}, {3.5, 3.5, 93, 100}, {4.0, 3.0, 98, 94}};
    track.playAt(tuneStart, tune);
    track.playAt(waltzStart, middle);
    track.playAt(endStart, ending);
}

void writeDrums(Track& track)
{
    const Note beat[] = {{0.0, 0.2, kick, 112},     {1.0, 0.2, snare, 100},    {1.5, 0.2, kick, 84},
                         {2.5, 0.2, kick, 98},      {3.0, 0.2, snare, 104},    {3.0, 0.2, clap, 70},
                         {0.0, 0.2, closedHat, 84}, {0.5, 0.2, closedHat, 56}, {1.0, 0.2, closedHat, 76},
                         {1.5, 0.2, closedHat, 58}, {2.0, 0.2, closedHat, 82}, {2.5, 0.2, closedHat, 54},
                         {3.0, 0.2, closedHat, 74}, {3.25, 0.2, closedHat, 44}};
    const Note offBeat[] = {{3.5, 0.4, openHat, 66}};
    const Note fill[] = {{2.0, 0.2, highTom, 90}, {2.25, 0.2, highTom, 78}, {2.5, 0.2, highTom, 96},
                         {3.0, 0.2, lowTom, 100}, {3.25, 0.2, lowTom, 84},  {3.5, 0.2, lowTom, 110}};
    const Note lightly[] = {{0.0, 0.2, closedHat, 60},
                            {1.0, 0.2, closedHat, 44},
                            {2.0, 0.2, closedHat, 56},
                            {3.0, 0.2, closedHat, 44}};
    const Note inThree[] = {{0.0, 0.2, kick, 104},     {1.0, 0.2, snare, 62},     {2.0, 0.2, snare, 74},
                            {0.0, 0.2, closedHat, 70}, {0.5, 0.2, closedHat, 46}, {1.0, 0.2, closedHat, 60},
                            {1.5, 0.2, closedHat, 44}, {2.0, 0.2, openHat, 52}};
    const Note turn[] = {{1.5, 0.2, cowbell, 58}, {2.5, 0.2, cowbell, 66}};
    const Note last[] = {{0.0, 0.2, kick, 90}, {3.0, 0.2, kick, 100}, {3.0, 0.4, openHat, 60}};

    for (int bar = 0; bar < introBars + tuneBars; ++bar)
    {
        const double start = bar * 4.0;
        if (bar < 2)
            track.playAt(start, lightly);
        else
            track.playAt(start, beat);
        if (bar >= 2 && bar % 2 == 1)
            track.playAt(start, offBeat);
        if (bar == introBars - 1 || bar == introBars + tuneBars - 1)
            track.playAt(start, fill);
    }
    for (int bar = 0; bar < waltzBars; ++bar)
    {
        track.playAt(waltzStart + bar * 3.0, inThree);
        if (bar % 4 == 3)
            track.playAt(waltzStart + bar * 3.0, turn);
    }
    track.playAt(endStart, last);
}

juce::MidiMessageSequence conductor()
{
    juce::MidiMessageSequence sequence;
    const auto at = [&](double quarters, double bpm)
    { addMeta(sequence, quarters, juce::MidiMessage::tempoMetaEvent(juce::roundToInt(6.0e7 / bpm))); };
    addMeta(sequence, 0.0, juce::MidiMessage::textMetaEvent(3, "Quorel demo"));
    addMeta(sequence, 0.0, juce::MidiMessage::timeSignatureMetaEvent(4, 4));
    addMeta(sequence, waltzStart, juce::MidiMessage::timeSignatureMetaEvent(3, 4));
    at(0.0, tempo);
    at(endStart, 88.0);
    at(endStart + 1.0, 78.0);
    at(endStart + 2.0, 64.0);
    at(endStart + 3.0, 72.0);
    return sequence;
}

int write(const juce::File& file)
{
    Track bass("Bass", 1), chords("Chords", 2), tune("Tune", 3), drums("Drums", 4);
    writeBass(bass);
    writeChords(chords);
    writeTune(tune);
    writeDrums(drums);

    juce::MidiFile song;
    song.setTicksPerQuarterNote(ticksPerQuarter);
    song.addTrack(conductor());
    for (auto* track : {&bass, &chords, &tune, &drums})
    {
        track->sequence().sort();
        song.addTrack(track->sequence());
    }
    juce::MemoryOutputStream bytes;
    if (!song.writeTo(bytes) || !file.replaceWithData(bytes.getData(), bytes.getDataSize()))
        throw ToolFailure("cannot write " + file.getFullPathName());
    return exitFine;
}
} // namespace
} // namespace quorel::demo

int main(int argc, char** argv)
{
    std::string file;
    CLI::App app("Writes the demo song.", "quorel-demosong");
    app.add_option("file", file, "Standard MIDI File to write")->required()->type_name("FILE.mid");
    return quorel::runTool(app, argc, argv, [&file] { return quorel::demo::write(quorel::fileOf(file)); });
}
