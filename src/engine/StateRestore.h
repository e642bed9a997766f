// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace juce
{
class MemoryBlock;
}

namespace quorel
{

class PluginProcessor;
struct StateChunk;

/** Appends the processor's whole sound to `destination`, emptied first. Message thread. */
void saveState(PluginProcessor& processor, juce::MemoryBlock& destination);

/** Why one sound takes the place of another. */
enum class ChangeReason
{
    /** The host opens a project, or steps back to an earlier state of it. */
    project,
    /** A preset file: the preset manager's page stays, and so do the MIDI bindings. */
    preset,
    /** The edited or the original sound: MIDI bindings stay. */
    comparison,
    /** The user steps back or forth. MIDI bindings and the page stay, and so do instruments that are the same on
        both sides. */
    undo
};

/** False for a parameter, `index` from 0, that a restore for this reason leaves as it is. Any thread. */
bool isRestored(int index, ChangeReason reason) noexcept;

/** Brings the processor to the sound of a chunk: loads the instruments it names, gives each its state, and
    applies all parameters. Instruments that are loaded stay if their name is the same, so a caller that wants
    a fresh start unloads first. The session's names are the caller's business. Message thread. */
void restoreState(PluginProcessor& processor, const StateChunk& chunk, ChangeReason reason);

} // namespace quorel
