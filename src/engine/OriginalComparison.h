// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

class PluginProcessor;

/** The sound as loaded or saved, kept beside the one that the user has made of it, to switch between both.
    Names and MIDI bindings stay as they are. Message thread. */
class OriginalComparison
{
public:
    explicit OriginalComparison(PluginProcessor& processor);

    /** A preset was loaded or a project opened: these bytes are the original, and there is no edited sound. */
    void soundLoaded(const juce::MemoryBlock& bytes);
    /** The sound was saved: these bytes are the original. */
    void presetSaved(const juce::MemoryBlock& bytes);

    /** The preset, or its folder, has another name now: both sounds take it on, and nothing else changes. */
    void presetRenamed(const juce::String& name);
    void folderRenamed(const juce::String& name);

    /** The original is heard, or there is no other. */
    bool isShowingOriginal() const noexcept { return showingOriginal; }

    /** Keeps the edited sound and brings the original back. False, and nothing happens, while the original is
        heard or a preset or project is on its way. */
    bool showOriginal();
    /** Brings the edited sound back. False, and nothing happens, unless the original of an edited preset is
        heard. */
    bool showEdited();

    /** Follows the processor's flags: a further edit makes the sound that is heard the edited one. Each tick
        of its timer. */
    void update();

private:
    bool isOtherSoundAwaited() const;

    PluginProcessor& processor;
    juce::MemoryBlock originalState;
    juce::MemoryBlock editedState;
    bool showingOriginal = true;
    bool lastEdited = false;
};

} // namespace quorel
