// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <memory>

namespace quorel
{

class PluginProcessor;

/** The sound as loaded or saved, kept beside the one that the user has made of it, to switch between both.
    Names and MIDI bindings stay as they are. Message thread. */
class OriginalComparison
{
public:
    /** State chunks; null for none. What they point to never changes, so that a step back can share it. */
    struct Sides
    {
        std::shared_ptr<const juce::MemoryBlock> original;
        std::shared_ptr<const juce::MemoryBlock> edited;
        bool showingOriginal = true;
    };

    explicit OriginalComparison(PluginProcessor& processor);

    /** A preset was loaded or a project opened: these bytes are the original, and there is no edited sound. */
    void soundLoaded(const juce::MemoryBlock& bytes);
    /** The sound was saved: these bytes are the original. */
    void presetSaved(const juce::MemoryBlock& bytes);

    /** The preset, or its folder, has another name now: both sounds take it on, and nothing else changes. */
    void presetRenamed(const juce::String& name);
    void folderRenamed(const juce::String& name);

    /** The original is heard, or there is no other. */
    bool isShowingOriginal() const noexcept { return sides.showingOriginal; }

    const Sides& getSides() const noexcept { return sides; }

    /** A sound has come back with the sides that it had. */
    void bringBack(const Sides& former);

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
    void rename(bool (*store)(juce::MemoryBlock&, const juce::String&), const juce::String& name);

    PluginProcessor& processor;
    Sides sides;
    bool lastEdited = false;
};

} // namespace quorel
