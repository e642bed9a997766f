// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/SoundMoment.h"
#include "parameters/MultiControls.h"
#include "presets/PresetFiles.h"

#include <juce_events/juce_events.h>

#include <deque>
#include <optional>
#include <vector>

namespace quorel
{

class PluginProcessor;

/** What the user has done to the sound, to be undone and redone.

    A step is either a number of parameters with their values before and after, or a change of more than
    parameters, which is undone by bringing the whole sound back, instruments and all. What is written in one
    event belongs to one step, and so does what is written in one drag. Host automation, MIDI controllers and
    notes make no steps; a project that the host opens starts afresh. Message thread. */
class UndoHistory : private juce::AsyncUpdater
{
public:
    static constexpr size_t maximumSteps = 500;
    /** What all steps together may take. The oldest give way; the newest one stays, however large. */
    static constexpr size_t maximumBytes = 64 * 1024 * 1024;

    explicit UndoHistory(PluginProcessor& pluginProcessor);
    ~UndoHistory() override;

    //==========================================================================================================
    // What is recorded

    /** While one exists, what its thread writes to the processor's parameters belongs to a step of the user's. Only on
        the message thread; elsewhere it does nothing. It must not outlast a question to the user. */
    class Recording
    {
    public:
        explicit Recording(PluginProcessor& processor);
        ~Recording();

    private:
        const PluginProcessor* const outer;

        JUCE_DECLARE_NON_COPYABLE(Recording)
    };

    /** While one exists, its thread records nothing: it plays a block, or brings a sound back. Any thread. */
    class Pause
    {
    public:
        Pause() noexcept;
        ~Pause();

    private:
        JUCE_DECLARE_NON_COPYABLE(Pause)
    };

    /** This thread's writes are to be told to `parameterWritten`. Any thread. */
    static bool isRecording(const PluginProcessor& processor) noexcept;

    void parameterWritten(int index, float before, float after);

    /** A drag begins or ends: what is written in between is one step. */
    void beginDrag();
    void endDrag();
    /** The editor goes, and with it whatever was being dragged: nobody would tell of its end. */
    void endAllDrags();

    /** To be called before a change of more than parameters, such as another instrument: remembers the sound as
        it is. `what` names the change, as in "Undo load preset". */
    void beforeSoundChange(const juce::String& what);

    /** The sound has been saved as it is. */
    void saved();
    /** A preset of the folder, or a folder, has another name now. */
    void presetRenamed(const juce::String& folder, const juce::String& before, const juce::String& after);
    void folderRenamed(const juce::String& before, const juce::String& after);
    /** A preset lies in another folder now. */
    void presetMoved(const PresetPlace& from, const juce::String& folder);

    void clear();

    //==========================================================================================================
    // Going back and forth

    bool canUndo() const noexcept { return position > 0; }

    bool canRedo() const noexcept { return position < steps.size(); }

    /** False where there is nothing to undo or redo. */
    bool undo();
    bool redo();

    /** What `undo` and `redo` would do, such as "Undo Master Volume"; empty for nothing. */
    juce::String undoText() const;
    juce::String redoText() const;

    /** Another number after each change of the history. */
    int getRevision() const noexcept { return revision; }

    size_t getNumSteps() const noexcept { return steps.size(); }

    size_t getBytes() const;

private:
    /** It empties the history when it comes, and names and marks are still those of the sound before it. */
    bool isProjectAwaited() const;

    struct Write
    {
        int index;
        float before;
        float after;
    };

    struct Step
    {
        juce::String what;
        std::vector<Write> writes;
        /** The sound on the other side of the step; nothing for a step of parameters alone. */
        std::optional<SoundMoment> otherSide;
        /** How the session's mark and the multi-controls stood before the writes, and after them. */
        Session::FileMark markBefore;
        Session::FileMark markAfter;
        MultiControls::Memory multiBefore;
        MultiControls::Memory multiAfter;
        juce::uint32 time = 0;
    };

    void handleAsyncUpdate() override;
    Step& openStep();
    void closeStep();
    void mergeLastTwo();
    void forgetRedo();
    void limit();
    void apply(const Step& step, bool back);
    void exchangeSound(Step& step);
    void setMark(const Session::FileMark& mark);
    juce::String textOf(const Step& step) const;

    PluginProcessor& processor;
    std::deque<Step> steps;
    /** How many of the steps are done; those behind can be redone. */
    size_t position = 0;
    /** The last step still takes writes. */
    bool isOpen = false;
    int drags = 0;
    int revision = 0;
};

} // namespace quorel
