// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SoundChange.h"

#include "engine/PluginProcessor.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/StateChunk.h"

#include <utility>

namespace quorel
{

SoundChange::SoundChange(PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
{
}

bool SoundChange::requestPreset(const juce::String& folder, const juce::String& preset)
{
    if (!transition.request())
        return false;

    processor.setNames(preset, folder);

    // The instruments play on until the fade has reached silence; their windows go now, and are given their
    // time after the fade.
    if (processor.getLayers().closeWindows())
        transition.waitForWindows();

    return true;
}

bool SoundChange::loadPresetFile()
{
    presetLoadInProgress = true;
    const auto bindings = processor.getControllerMap().bindings();
    processor.resetAllParameters();
    juce::MemoryBlock bytes;
    const auto& session = processor.getSession();
    const auto file =
        findPresetFile(processor.getPaths().banksFolder, session.getFolderName(), session.getPresetName());
    const bool found = file != juce::File() && readWholeFile(file, bytes);

    if (found)
    {
        processor.getOriginalComparison().presetLoaded(bytes);
        processor.setStateInformation(bytes.getData(), static_cast<int>(bytes.getSize()));
        processor.getSession().markSaved();
        processor.getGraph().requestReset();
    }
    else
    {
        // "Presert" is what the user has always been shown.
        processor.userInteraction().alert({}, "Could not load Presert file: " + session.getFolderName() +
                                                  "/" + session.getPresetName());
    }

    // A preset never changes the MIDI bindings, whatever its file holds.
    processor.getControllerMap().bind(bindings);
    presetLoadInProgress = false;
    return found;
}

//==============================================================================================================
// States

void SoundChange::take(const void* data, size_t size, bool forComparison)
{
    // Bytes that can't be restored must not cost the user the sound that plays.
    StateChunk chunk;
    const auto status = readStateChunk(data, size, chunk);

    if (status == ChunkStatus::foreign)
        return;

    pendingChunk = juce::MemoryBlock(data, size);
    pendingIsComparison = forComparison;

    if (status == ChunkStatus::valid && processor.getLayers().requestUnload())
    {
        transition.waitForWindows();
        restoreTicks.store(PresetTransition::windowTicks);
    }
    else
    {
        restorePending();
    }
}

void SoundChange::restorePending()
{
    const juce::MemoryBlock chunk = std::move(pendingChunk);
    pendingChunk.reset();

    if (!std::exchange(pendingIsComparison, false))
    {
        restoreSound(chunk);
        // A project brings names of its own.
        processor.getPresetCommands().refreshLists();
        return;
    }

    auto& session = processor.getSession();
    const auto preset = session.getPresetName();
    const auto folder = session.getFolderName();
    const auto bindings = processor.getControllerMap().bindings();
    const bool wasEdited = session.isEdited();
    restoreSound(chunk);
    session.setNames(preset, folder);
    processor.getControllerMap().bind(bindings);
    // Instruments report the values that they are given, as if somebody had turned their knobs.
    session.restoreMark(wasEdited);
}

void SoundChange::restoreSound(const juce::MemoryBlock& chunk)
{
    if (presetLoadInProgress)
    {
        restoreState(processor, chunk.getData(), chunk.getSize(), RestoreReason::preset);
        return;
    }

    transition.holdDisplay();

    if (restoreState(processor, chunk.getData(), chunk.getSize(), RestoreReason::state))
        transition.settle();
    else
        transition.releaseDisplay();
}

//==============================================================================================================
// The timer: its order is fixed, and a countdown that runs ends the tick

bool SoundChange::tick()
{
    using Countdown = PresetTransition::Countdown;

    if (transition.tickLoadDelay() != Countdown::idle)
        return false;

    if (const auto state = PresetTransition::tick(restoreTicks); state != Countdown::idle)
    {
        if (state == Countdown::elapsed)
            restorePending();

        return false;
    }

    if (transition.tickSettling())
    {
        processor.requestEditorRefresh();
        processor.updateHostDisplay();
    }

    if (transition.takeLoad())
        loadRequestedPreset();

    return true;
}

void SoundChange::loadRequestedPreset()
{
    processor.getLayers().unload();
    loadPresetFile();
    processor.getPresetCommands().refreshLists();
    processor.getEditorRequests().bringPageBack();
    transition.loadDone();
}

} // namespace quorel
