// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PresetTransition.h"
#include "engine/StateRestore.h"

#include <juce_core/juce_core.h>

#include <atomic>

namespace quorel
{

class PluginProcessor;

/** Every way in which one sound takes the place of another: a preset, with its fade, a state from the host,
    and the two sides of a comparison. Message thread, where not stated. */
class SoundChange
{
public:
    /** Of the processor's timer. */
    static constexpr int timerMilliseconds = 50;

    explicit SoundChange(PluginProcessor& pluginProcessor);

    /** Starts the road to the preset of these names: fade, load, settle, fade. False, and nothing happens,
        while another change is under way. Without running audio the fade never ends and nothing is loaded. */
    bool requestPreset(const juce::String& folder, const juce::String& preset);

    /** Loads the current preset's file at once. On failure the user is told and all parameters are at their
        defaults. */
    bool loadPresetFile();

    /** Takes a state: at once, or 2.5 seconds later where a hosted instrument's window has to go away first.
        Bytes of another format change nothing. */
    void restore(const void* data, size_t size) { take(data, size, false); }

    /** Restores a sound that is compared with another: the preset's names and the MIDI bindings stay. */
    void restoreForComparison(const juce::MemoryBlock& bytes)
    {
        take(bytes.getData(), bytes.getSize(), true);
    }

    /** A preset is on its way, or a restore waits for a window to go away. */
    bool isUnderWay() const noexcept { return transition.isBusy() || restoreTicks.load() >= 0; }

    /** The processor's timer. False on a tick that a running countdown ends here. */
    bool tick();

    /** Also the audio block's. */
    PresetTransition& getTransition() noexcept { return transition; }

private:
    void take(const void* data, size_t size, bool forComparison);
    void restorePending();
    void restoreSound(const juce::MemoryBlock& chunk);
    void loadRequestedPreset();

    PluginProcessor& processor;
    PresetTransition transition;
    /** Countdown in timer ticks to the restore of `pendingChunk`, -1 when idle. */
    std::atomic<int> restoreTicks{-1};
    juce::MemoryBlock pendingChunk;
    bool pendingIsComparison = false;
    bool presetLoadInProgress = false;
};

} // namespace quorel
