// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/UndoHistory.h"

#include "engine/PluginProcessor.h"

#include <algorithm>
#include <utility>

namespace quorel
{

namespace
{
/** Steps of the wheel and of keys on the same control, made within this time of each other, are one. */
constexpr juce::uint32 mergeMilliseconds = 400;

thread_local const PluginProcessor* recorded = nullptr;
thread_local int pauses = 0;
} // namespace

//==============================================================================================================
// Who records

UndoHistory::Recording::Recording(PluginProcessor& processor)
    : outer(recorded)
{
    if (pauses == 0 && juce::MessageManager::existsAndIsCurrentThread())
        recorded = &processor;
}

UndoHistory::Recording::~Recording()
{
    recorded = outer;
}

UndoHistory::Pause::Pause() noexcept
{
    ++pauses;
}

UndoHistory::Pause::~Pause()
{
    --pauses;
}

bool UndoHistory::isRecording(const PluginProcessor& processor) noexcept
{
    return recorded == &processor && pauses == 0;
}

//==============================================================================================================
// Recording

UndoHistory::UndoHistory(PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
{
}

UndoHistory::~UndoHistory()
{
    cancelPendingUpdate();
}

UndoHistory::Step& UndoHistory::openStep()
{
    if (!isOpen)
    {
        forgetRedo();
        Step step;
        step.markBefore = processor.getSession().getFileMark();
        step.multiBefore = processor.multiControls().getMemory();
        steps.push_back(std::move(step));
        position = steps.size();
        isOpen = true;
        ++revision;
    }

    if (drags == 0)
        triggerAsyncUpdate();

    return steps.back();
}

void UndoHistory::parameterWritten(int index, float before, float after)
{
    // The page is where the user looks, and no part of the sound.
    if (index == slot::view)
        return;

    auto& writes = openStep().writes;
    const auto known =
        std::find_if(writes.begin(), writes.end(), [index](const Write& w) { return w.index == index; });

    if (known != writes.end())
        known->after = after;
    else
        writes.push_back({index, before, after});
}

void UndoHistory::handleAsyncUpdate()
{
    if (drags == 0)
        closeStep();
}

void UndoHistory::closeStep()
{
    if (!std::exchange(isOpen, false))
        return;

    ++revision;

    auto& step = steps.back();
    auto& writes = step.writes;

    if (std::all_of(writes.begin(), writes.end(), [](const Write& w) { return w.before == w.after; }))
    {
        steps.pop_back();
        position = steps.size();
        return;
    }

    step.markAfter = processor.getSession().getFileMark();
    step.multiAfter = processor.multiControls().getMemory();
    step.time = juce::Time::getMillisecondCounter();
    mergeLastTwo();
    limit();
}

void UndoHistory::mergeLastTwo()
{
    if (steps.size() < 2)
        return;

    auto& last = steps.back();
    auto& previous = steps[steps.size() - 2];
    const bool sameControl = !previous.otherSide &&
                             previous.writes.front().index == last.writes.front().index &&
                             previous.writes.size() == last.writes.size();

    if (!sameControl || last.time - previous.time > mergeMilliseconds ||
        !(previous.markAfter == last.markBefore))
        return;

    for (const auto& write : last.writes)
    {
        const auto same = std::find_if(previous.writes.begin(), previous.writes.end(),
                                       [&](const Write& w) { return w.index == write.index; });

        if (same == previous.writes.end())
            return;
    }

    for (const auto& write : last.writes)
        std::find_if(previous.writes.begin(), previous.writes.end(),
                     [&](const Write& w) { return w.index == write.index; })
            ->after = write.after;

    previous.time = last.time;
    previous.markAfter = last.markAfter;
    previous.multiAfter = last.multiAfter;
    steps.pop_back();
    position = steps.size();
}

void UndoHistory::beginDrag()
{
    if (drags++ == 0)
        closeStep();
}

void UndoHistory::endDrag()
{
    drags = std::max(0, drags - 1);

    if (drags == 0)
        closeStep();
}

void UndoHistory::endAllDrags()
{
    drags = 0;
    closeStep();
}

void UndoHistory::beforeSoundChange(const juce::String& what)
{
    if (pauses > 0)
        return;

    closeStep();
    forgetRedo();
    Step step;
    step.what = what;
    step.otherSide = SoundMoment::capture(processor);

    // Moments of one sound share their bytes.
    for (const auto& other : steps)
        if (other.otherSide && *other.otherSide->packed == *step.otherSide->packed)
            step.otherSide->packed = other.otherSide->packed;

    steps.push_back(std::move(step));
    position = steps.size();
    ++revision;
    limit();
}

void UndoHistory::saved()
{
    closeStep();
    const auto mark = processor.getSession().getFileMark();

    if (position > 0)
        steps[position - 1].markAfter = mark;

    if (position < steps.size())
        steps[position].markBefore = mark;
}

void UndoHistory::presetRenamed(const juce::String& folder, const juce::String& before,
                                const juce::String& after)
{
    for (auto& step : steps)
        if (step.otherSide && step.otherSide->folder == folder && step.otherSide->preset == before)
            step.otherSide->preset = after;
}

void UndoHistory::presetMoved(const PresetPlace& from, const juce::String& folder)
{
    for (auto& step : steps)
        if (step.otherSide && step.otherSide->folder == from.folder && step.otherSide->preset == from.name)
            step.otherSide->folder = folder;
}

void UndoHistory::folderRenamed(const juce::String& before, const juce::String& after)
{
    for (auto& step : steps)
        if (step.otherSide && step.otherSide->folder == before)
            step.otherSide->folder = after;
}

void UndoHistory::forgetRedo()
{
    steps.resize(position);
}

void UndoHistory::clear()
{
    steps.clear();
    ++revision;
    position = 0;
    isOpen = false;
}

size_t UndoHistory::getBytes() const
{
    size_t bytes = 0;
    std::vector<const juce::MemoryBlock*> counted;

    for (const auto& step : steps)
    {
        bytes += sizeof(Step) + step.writes.capacity() * sizeof(Write);

        if (!step.otherSide)
            continue;

        for (const auto* block : step.otherSide->blocks())
        {
            if (block == nullptr || std::find(counted.begin(), counted.end(), block) != counted.end())
                continue;

            counted.push_back(block);
            bytes += block->getSize();
        }
    }

    return bytes;
}

void UndoHistory::limit()
{
    while (position > 1 && (steps.size() > maximumSteps || getBytes() > maximumBytes))
    {
        steps.pop_front();
        --position;
    }
}

//==============================================================================================================
// Going back and forth

bool UndoHistory::isProjectAwaited() const
{
    return processor.getSoundChange().awaitedReason() == ChangeReason::project;
}

bool UndoHistory::undo()
{
    closeStep();

    if (!canUndo() || isProjectAwaited())
        return false;

    auto& step = steps[--position];

    if (step.otherSide)
        exchangeSound(step);
    else
        apply(step, true);

    ++revision;
    processor.requestEditorRefresh();
    return true;
}

bool UndoHistory::redo()
{
    closeStep();

    if (!canRedo() || isProjectAwaited())
        return false;

    auto& step = steps[position++];

    if (step.otherSide)
        exchangeSound(step);
    else
        apply(step, false);

    ++revision;
    processor.requestEditorRefresh();
    return true;
}

void UndoHistory::apply(const Step& step, bool back)
{
    const Pause pause;
    const MultiControls::Still still;
    auto& writes = step.writes;
    const auto wanted = [back](const Write& write) { return back ? write.before : write.after; };
    const auto put = [&](const Write& write) { processor.setParameterFromUi(write.index, wanted(write)); };

    if (back)
        std::for_each(writes.rbegin(), writes.rend(), put);
    else
        std::for_each(writes.begin(), writes.end(), put);

    // One end of a range may have taken along the other, and a mapping have pulled a value.
    for (const auto& write : writes)
        if (processor.readParameter(write.index) != wanted(write))
            put(write);

    processor.multiControls().setMemory(back ? step.multiBefore : step.multiAfter);
    setMark(back ? step.markBefore : step.markAfter);
}

void UndoHistory::setMark(const Session::FileMark& mark)
{
    // A sound that was the file's once is so no more when another one has been saved since.
    auto& session = processor.getSession();
    const bool sameFile = mark.hash == session.getFileMark().hash;
    session.restoreMark(mark.isEdited || !sameFile);
}

void UndoHistory::exchangeSound(Step& step)
{
    const auto wanted = *step.otherSide;
    step.otherSide = SoundMoment::capture(processor);
    const Pause pause;
    processor.getSoundChange().bringBack(wanted);
    limit();
}

juce::String UndoHistory::textOf(const Step& step) const
{
    if (step.what.isNotEmpty())
        return step.what;

    const int index = step.writes.empty() ? 0 : step.writes.front().index;
    const auto name = index > 0 ? processor.getParameterName(index) : juce::String();
    return name.isEmpty() || name.containsOnly("0123456789") ? juce::String("change") : name;
}

juce::String UndoHistory::undoText() const
{
    return canUndo() ? "Undo " + textOf(steps[position - 1]) : juce::String();
}

juce::String UndoHistory::redoText() const
{
    return canRedo() ? "Redo " + textOf(steps[position]) : juce::String();
}

} // namespace quorel
