// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "MidiSong.h"
#include "SongPlayHead.h"
#include "SoundFile.h"
#include "SoundInput.h"

#include "engine/PluginProcessor.h"

#include <functional>

namespace quorel
{

/** What came out of a render. */
struct RenderReport
{
    /** Largest absolute sample; 1 is full scale. */
    float peak = 0.0f;
    /** Root of the mean square over both channels and the whole length. */
    double rms = 0.0;
    double seconds = 0.0;
    /** Wall time of the blocks, their message loop included. */
    double wallSeconds = 0.0;
    /** A sample was infinite or not a number; it was written as 0. */
    bool hadBadSamples = false;
};

/** Drives a processor as a host does: prepared, told the transport, given blocks of MIDI, with the message
    loop running in between. Message thread. */
class OfflineRender
{
public:
    /** Prepares the processor. With an `input`, which may be null, that goes into the effects in place of the
        layers. All arguments outlive this. */
    OfflineRender(PluginProcessor& processor, const MidiSong& song, SoundInput* input, double rate,
                  int blockSize);
    ~OfflineRender();

    /** Runs the message loop, and empty blocks with the transport stopped for its fades, until a change of sound that
        is under way has ended, at most for `timeoutMillis`. Returns whether it has. */
    bool playSoundChange(int timeoutMillis);

    /** Runs empty blocks with the transport stopped, so that loads and messages take effect before the first
        note. */
    void settle();

    /** How many samples `run` renders. */
    static juce::int64 numSamples(const MidiSong& song, const SoundInput* input, double tailSeconds,
                                  double rate);

    /** Renders the input, or the song without one, and `tailSeconds` after it. `progress` gets 0 to 1 now and
        then. Fails where `file` takes no more. */
    juce::Result run(SoundFile& file, double tailSeconds, const std::function<void(double)>& progress,
                     RenderReport& report);

private:
    void playEmptyBlock();
    void collectEvents(juce::int64 blockStart, int numSamples);
    void pumpIfDue();

    PluginProcessor& processor;
    const MidiSong& song;
    SoundInput* const input;
    const double rate;
    const int blockSize;
    SongPlayHead playHead;
    std::size_t nextEvent = 0;
    juce::AudioBuffer<float> buffer;
    juce::AudioBuffer<float> sendBuffer;
    juce::MidiBuffer midi;
    double lastPumpMillis = 0.0;
};

} // namespace quorel
