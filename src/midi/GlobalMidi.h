// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_events/juce_events.h>

namespace quorel
{

/** MIDI shared by everything in the process: whoever fills the buffer sends a change message, and the
    learners that listen walk it. Message thread. Held through `juce::SharedResourcePointer`, so it lives as
    long as any learner and is gone before the message manager. */
class GlobalMidi final : public juce::ChangeBroadcaster, public juce::MidiBuffer
{
};

} // namespace quorel
