// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/MidiInput.h"

#include "parameters/ControllerMap.h"

#include <utility>

namespace quorel
{

namespace
{
constexpr int auditionChannel = 1;
constexpr int auditionNote = 60;
constexpr juce::uint8 auditionVelocity = 127;
// Controllers.
constexpr int allSoundOff = 120;
constexpr int allNotesOff = 123;
} // namespace

MidiInput::MidiInput(ControllerMap& controllerMap)
    : controllers(controllerMap)
{
    forLayers.ensureSize(midiBufferCapacity);
}

void MidiInput::startAudition()
{
    auditionHeld = !song.isLoaded();

    if (auditionHeld)
        auditionNoteOn.store(true);
    else
        song.startOrStop();
}

void MidiInput::endAudition()
{
    // A song may have been dropped while the note was held.
    if (std::exchange(auditionHeld, false))
        auditionNoteOff.store(true);
}

const juce::MidiBuffer& MidiInput::collect(juce::MidiBuffer& midi, int numSamples, double sampleRate)
{
    if (auditionNoteOn.exchange(false))
        midi.addEvent(juce::MidiMessage::noteOn(auditionChannel, auditionNote, auditionVelocity), 0);

    if (auditionNoteOff.exchange(false))
        midi.addEvent(juce::MidiMessage::noteOff(auditionChannel, auditionNote), 0);

    for (const auto event : midi)
        note(event);

    copyEvents(midi, forLayers);
    song.addBlock(forLayers, numSamples, sampleRate);

    if (panicRequested.exchange(false))
    {
        monitor.allNotesOff();
        addSilencingEvents(forLayers);
    }

    return forLayers;
}

void MidiInput::note(const juce::MidiMessageMetadata& event)
{
    if (event.numBytes < 3)
        return;

    const int status = event.data[0] & 0xf0;
    const int channel = (event.data[0] & 0x0f) + 1;
    // A host may pass on bytes above 127, which are not MIDI data.
    const int first = juce::jmin<int>(event.data[1], 127);
    const int second = juce::jmin<int>(event.data[2], 127);

    if (status == 0x90 && second > 0)
    {
        monitor.noteOn(channel, first, second);
    }
    else if (status == 0x80 || status == 0x90)
    {
        monitor.noteOff(first);
    }
    else if (status == 0xb0)
    {
        if (first == allSoundOff || first == allNotesOff)
            monitor.allNotesOff();
        monitor.controller(first, second);
        controllers.controllerReceived(first, second);
    }
}

} // namespace quorel
