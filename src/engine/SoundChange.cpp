// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SoundChange.h"

#include "engine/PluginProcessor.h"
#include "engine/WantedSound.h"
#include "parameters/ParameterCodings.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/StoredNames.h"

#include <utility>

namespace quorel
{

/** What a host's thread waits for: the message thread has begun, and is through. */
struct HandOver
{
    juce::WaitableEvent begun{true};
    juce::WaitableEvent done{true};
};

namespace
{
/** Timer ticks, some 2.5 seconds, that an instrument's open window is given to go away. */
constexpr int windowTicks = 51;
/** Timer ticks from silence to a preset's load, without and with windows. */
constexpr int presetTicks = 3;
constexpr int presetTicksWithWindows = 52;
/** Timer ticks from a load to the fade-in: one second. */
constexpr int ticksToSettle = 20;

/** Among the awaited values, which lie between 0 and 1: one that doesn't change. */
constexpr float presentValue = -1.0f;

constexpr double millisecondsToBegin = 500.0;
constexpr double millisecondsToEnd = 2000.0;

bool isOnMessageThread()
{
    const auto* manager = juce::MessageManager::getInstanceWithoutCreating();
    return manager != nullptr && manager->existsAndIsLockedByCurrentThread();
}
} // namespace

SoundChange::SoundChange(PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
{
}

SoundChange::~SoundChange()
{
    cancelPendingUpdate();
}

//==============================================================================================================
// Asking for a sound

SoundChange::Wanted SoundChange::readPreset(const juce::String& folder, const juce::String& preset)
{
    juce::MemoryBlock bytes;
    const auto file = findPresetFile(processor.getPaths().banksFolder, folder, preset);
    std::shared_ptr<WantedSound> sound;
    auto status = ChunkStatus::foreign;

    if (file != juce::File() && readWholeFile(file, bytes))
        sound = readSound(bytes.getData(), bytes.getSize(), ChangeReason::preset, status);

    if (sound == nullptr)
    {
        // "Presert" is what the user has always been shown.
        processor.userInteraction().alert({}, "Could not load Presert file: " + folder + "/" + preset);
    }

    return sound;
}

bool SoundChange::requestPreset(const juce::String& folder, const juce::String& preset)
{
    const auto sound = readPreset(folder, preset);

    if (sound == nullptr)
        return false;

    processor.getUndo().beforeSoundChange(preset);
    processor.setNames(preset, folder);
    processor.getSession().noteFile(sound->bytes);
    setWanted(sound);
    setOut();
    return true;
}

bool SoundChange::loadPresetFile()
{
    auto& session = processor.getSession();
    const auto sound = readPreset(session.getFolderName(), session.getPresetName());

    if (sound == nullptr)
        return false;

    const auto before = fade.getState();
    session.noteFile(sound->bytes);
    setWanted(sound);

    // From within a load that runs, that one goes on to this sound.
    if (before == ChangeState::loading)
        return true;

    loadWanted();

    if (before == ChangeState::idle)
        fade.move(ChangeState::loading, ChangeState::idle);
    else
        settle();

    return true;
}

void SoundChange::restore(const void* data, size_t size)
{
    // Some hosts hand over nothing where they have nothing.
    if (data == nullptr || size == 0)
        return;

    auto status = ChunkStatus::foreign;
    const auto sound = readSound(data, size, ChangeReason::project, status);

    if (sound == nullptr)
    {
        complain(status == ChunkStatus::tooShort
                     ? "restoring chunk too short"
                     : "The project's sound can't be read. The present sound stays.");
        return;
    }

    if (isOnMessageThread())
    {
        setWanted(sound);
        setOut();
        return;
    }

    const auto waiting = std::make_shared<HandOver>();
    setWanted(sound, waiting);
    triggerAsyncUpdate();

    if (waiting->begun.wait(millisecondsToBegin))
        waiting->done.wait(millisecondsToEnd);
}

void SoundChange::restoreForComparison(const juce::MemoryBlock& bytes)
{
    auto status = ChunkStatus::foreign;

    if (const auto sound = readSound(bytes.getData(), bytes.getSize(), ChangeReason::comparison, status))
    {
        setWanted(sound);
        setOut();
    }
}

void SoundChange::bringBack(const SoundMoment& moment)
{
    auto bytes = moment.sound();
    storePresetName(bytes, moment.preset);
    storeFolderName(bytes, moment.folder);
    auto status = ChunkStatus::foreign;
    const auto sound = readSound(bytes.getData(), bytes.getSize(), ChangeReason::undo, status);

    if (sound == nullptr)
        return;

    sound->sides = moment.comparison;
    sound->mark = moment.file;
    auto& session = processor.getSession();
    const auto present = session.getFileMark();

    // A sound that was the file's once is so no more when another one has been saved since.
    if (session.getPresetName() == moment.preset && session.getFolderName() == moment.folder &&
        present.hash.has_value() && present.hash != moment.file.hash)
        sound->mark = {true, present.hash};

    processor.setNames(moment.preset, moment.folder);
    session.restoreFileMark(sound->mark);
    setWanted(sound);
    setOut();
}

void SoundChange::complain(const juce::String& text)
{
    if (isOnMessageThread())
    {
        processor.userInteraction().alert({}, text);
        return;
    }

    {
        const juce::ScopedLock scopedLock(lock);
        complaint = text;
    }

    triggerAsyncUpdate();
}

void SoundChange::handleAsyncUpdate()
{
    std::shared_ptr<HandOver> waiting;
    juce::String text;
    {
        const juce::ScopedLock scopedLock(lock);
        waiting = std::exchange(handOver, nullptr);
        text = std::exchange(complaint, {});
    }

    if (text.isNotEmpty())
        complain(text);

    if (waiting == nullptr)
        return;

    waiting->begun.signal();
    setOut();
    waiting->done.signal();
}

void SoundChange::setWanted(const Wanted& sound, std::shared_ptr<HandOver> byOtherThread)
{
    std::shared_ptr<HandOver> overtaken;
    {
        const juce::ScopedLock scopedLock(lock);
        wanted = sound;
        overtaken = std::exchange(handOver, std::move(byOtherThread));
        ++changes;
        publishAwaitedValues();
    }

    if (overtaken != nullptr)
    {
        overtaken->begun.signal();
        overtaken->done.signal();
    }
}

void SoundChange::setOut()
{
    const auto sound = getWanted();

    // A load that runs, and lets in whoever asks, goes on to the newest sound by itself.
    if (sound == nullptr || fade.getState() == ChangeState::loading)
        return;

    if (sound->reason == ChangeReason::preset)
        setOutToPreset();
    else if (sound->reason == ChangeReason::undo)
        setOutToMoment(*sound);
    else
        setOutToState();
}

void SoundChange::setOutToPreset()
{
    // The instruments play on until the fade has reached silence; their windows go now, and are given their
    // time after the fade.
    const bool windowsWereOpen = processor.getLayers().closeWindows();
    const int ticksLeft = fade.getState() == ChangeState::waiting ? waitTicks : 0;
    waitTicks = juce::jmax(ticksLeft, windowsWereOpen ? presetTicksWithWindows : presetTicks);

    if (fade.getState() != ChangeState::waiting || fade.gain() > 0.0f)
        fade.enter(ChangeState::fadingOut);
}

void SoundChange::setOutToState()
{
    waitForWindows(processor.getLayers().requestUnload());
}

void SoundChange::setOutToMoment(const WantedSound& sound)
{
    auto& layers = processor.getLayers();
    const auto unlike = layers.layersUnlike(sound.chunk);

    // Where every instrument stays there is nothing to wait for, and the notes that are held sound on.
    if (unlike.empty() && fade.getState() == ChangeState::idle)
    {
        loadWanted();
        fade.move(ChangeState::loading, ChangeState::idle);
        processor.requestEditorRefresh();
        return;
    }

    bool windowsWereOpen = false;

    for (const int layer : unlike)
        windowsWereOpen = layers[layer].requestUnload() || windowsWereOpen;

    waitForWindows(windowsWereOpen);
}

void SoundChange::waitForWindows(bool windowsWereOpen)
{
    const int ticksLeft = fade.getState() == ChangeState::waiting ? waitTicks : 0;

    if (windowsWereOpen)
        waitTicks = windowTicks;
    else if (ticksLeft <= presetTicks)
        return loadAndSettle();
    else
        waitTicks = ticksLeft;

    fade.enter(ChangeState::waiting);
}

void SoundChange::makeEmpty()
{
    const UndoHistory::Pause pause;
    setWanted(nullptr);
    processor.getLayers().unload();
    processor.resetAllParameters();

    if (isUnderWay() && fade.getState() != ChangeState::loading)
    {
        fade.enter(ChangeState::loading);
        settle();
    }
}

//==============================================================================================================
// Saving

SoundChange::Wanted SoundChange::getWanted() const
{
    const juce::ScopedLock scopedLock(lock);
    return wanted;
}

std::optional<ChangeReason> SoundChange::awaitedReason() const
{
    const auto sound = getWanted();
    return sound != nullptr ? std::optional(sound->reason) : std::nullopt;
}

void SoundChange::publishAwaitedValues()
{
    if (wanted != nullptr)
    {
        const auto& values = wanted->chunk.parameters;

        for (size_t i = 0; i < awaitedValues.size(); ++i)
        {
            const bool comes = i < values.size() && isRestored(static_cast<int>(i), wanted->reason);
            awaitedValues[i].store(comes ? clampUnit(values[i]) : presentValue, std::memory_order_relaxed);
        }
    }

    isAwaited.store(wanted != nullptr);
}

void SoundChange::describeAwaited(SoundMoment& moment) const
{
    const auto sound = getWanted();

    if (sound == nullptr || sound->reason == ChangeReason::comparison)
        return;

    if (sound->reason == ChangeReason::undo)
    {
        moment.comparison = sound->sides;
        moment.file = sound->mark;
        return;
    }

    moment.comparison = {std::make_shared<const juce::MemoryBlock>(sound->bytes), nullptr, true};
    moment.file.isEdited = false;

    if (sound->reason == ChangeReason::project)
    {
        const auto names = resolveNames(processor.getPaths().banksFolder, sound->chunk);
        moment.preset = names.preset;
        moment.folder = names.folder;
        moment.file = {};
    }
}

std::optional<float> SoundChange::awaitedValue(int index) const noexcept
{
    if (!isAwaited.load() || index < 0 || index >= numHostParameters)
        return std::nullopt;

    const float value = awaitedValues[static_cast<size_t>(index)].load(std::memory_order_relaxed);
    return value == presentValue ? std::nullopt : std::optional(value);
}

void SoundChange::save(juce::MemoryBlock& destination)
{
    for (;;)
    {
        unsigned int changesBefore = 0;
        Wanted sound;
        {
            const juce::ScopedLock scopedLock(lock);
            changesBefore = changes;
            sound = wanted;
        }

        if (sound != nullptr)
            return writeSound(*sound, processor, destination);

        saveState(processor, destination);

        // A change that has begun meanwhile, or has even ended, may have had its hand in what was read.
        const juce::ScopedLock scopedLock(lock);

        if (changes == changesBefore)
            return;
    }
}

//==============================================================================================================
// Loading

void SoundChange::loadWanted()
{
    fade.enter(ChangeState::loading);

    for (auto sound = getWanted(); sound != nullptr; sound = getWanted())
    {
        apply(*sound);

        if (finish(sound))
            break;
    }

    processor.getPresetCommands().refreshLists();
}

bool SoundChange::finish(const Wanted& loaded)
{
    std::shared_ptr<HandOver> waiting;
    {
        const juce::ScopedLock scopedLock(lock);

        if (wanted != loaded)
            return false;

        wanted = nullptr;
        waiting = std::exchange(handOver, nullptr);
        ++changes;
        publishAwaitedValues();
    }

    // Asked for by a host's thread, and loaded before its message came.
    if (waiting != nullptr)
    {
        waiting->begun.signal();
        waiting->done.signal();
    }

    return true;
}

void SoundChange::apply(const WantedSound& sound)
{
    // Nothing of this is a step of its own.
    const UndoHistory::Pause pause;
    auto& session = processor.getSession();
    const bool wasEdited = session.isEdited();

    if (sound.reason != ChangeReason::undo)
        processor.getLayers().unload();

    if (sound.reason == ChangeReason::preset)
        processor.resetAllParameters();

    // A preset's names are the session's since it was asked for.
    if (sound.reason == ChangeReason::project)
    {
        const auto names = resolveNames(processor.getPaths().banksFolder, sound.chunk);
        session.setNames(names.preset, names.folder);
        session.forgetFile();
    }

    if (sound.reason == ChangeReason::project)
        processor.getUndo().clear();

    if (sound.reason == ChangeReason::project || sound.reason == ChangeReason::preset)
        processor.getOriginalComparison().soundLoaded(sound.bytes);

    restoreState(processor, sound.chunk, sound.reason);

    if (sound.reason == ChangeReason::preset)
        processor.getGraph().requestReset();

    // What knobs and faders have moved on the way is part of the sound, and no move of a hand for hosts to record.
    processor.getParameterTable().takeUntold([](int) {});

    // Instruments report the values that they are given, as if somebody had turned their knobs.
    session.restoreMark(sound.reason == ChangeReason::comparison && wasEdited);

    if (sound.reason == ChangeReason::undo)
    {
        session.restoreFileMark(sound.mark);
        processor.getOriginalComparison().bringBack(sound.sides);
    }

    if (sound.reason == ChangeReason::preset)
    {
        processor.getEditorRequests().bringPageBack();
        processor.getPresetCommands().presetLoaded();
    }
}

void SoundChange::loadAndSettle()
{
    loadWanted();
    settle();
}

void SoundChange::settle()
{
    settleTicks = ticksToSettle;
    fade.enter(ChangeState::settling);
}

//==============================================================================================================
// The timer

bool SoundChange::holdsDisplay() const noexcept
{
    const auto state = fade.getState();
    return state != ChangeState::idle && state != ChangeState::fadingIn;
}

bool SoundChange::tick()
{
    fade.countTick();

    switch (fade.getState())
    {
    case ChangeState::idle:
    case ChangeState::loading:
        return true;

    case ChangeState::fadingOut:
        if (fade.areBlocksRunning())
            return true;

        fade.move(ChangeState::fadingOut, ChangeState::waiting);
        [[fallthrough]];

    case ChangeState::waiting:
        if (--waitTicks > 0)
            return false;

        loadAndSettle();
        return true;

    case ChangeState::settling:
        if (--settleTicks == 0 && fade.move(ChangeState::settling, ChangeState::fadingIn))
        {
            processor.requestEditorRefresh();

            // Hosts of the other formats are told as much as has changed.
            if (!processor.isVst3OrLv2())
                processor.updateHostDisplay();
        }

        return true;

    case ChangeState::fadingIn:
        if (!fade.areBlocksRunning())
            fade.move(ChangeState::fadingIn, ChangeState::idle);

        return true;
    }

    return true;
}

} // namespace quorel
