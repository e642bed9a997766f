// SPDX-License-Identifier: GPL-3.0-or-later
// A hosted instrument's own state: bytes in the form of a bank or program file (FXB or FXP). Within an
// `InstanceAccess::Use`; no exception of the instrument leaves these calls.
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace quorel
{

/** Whether every count and size in the bytes leads to something within them, for an instrument whose current
    program is `currentProgram`. JUCE's reader takes them as they are and reads past the end. Any thread. */
bool isWholeHostedState(const juce::MemoryBlock& state, int currentProgram);

/** The instrument's state; empty if it throws, gives no bytes though it says that it keeps its state as
    bytes, or gives more than JUCE takes (128 MB). Any thread but the audio thread. */
juce::MemoryBlock readHostedState(juce::AudioPluginInstance& plugin);

/** Gives the instrument a state that is whole. False, and nothing happens, for one that isn't. Message
    thread. */
bool giveHostedState(juce::AudioPluginInstance& plugin, const juce::MemoryBlock& state);

} // namespace quorel
