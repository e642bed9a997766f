// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OriginalComparison.h"

#include "engine/PluginProcessor.h"
#include "presets/StoredNames.h"

namespace quorel
{

OriginalComparison::OriginalComparison(PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
{
}

void OriginalComparison::soundLoaded(const juce::MemoryBlock& bytes)
{
    originalState.replaceAll(bytes.getData(), bytes.getSize());
    editedState.reset();
}

void OriginalComparison::presetSaved(const juce::MemoryBlock& bytes)
{
    originalState.replaceAll(bytes.getData(), bytes.getSize());
}

void OriginalComparison::presetRenamed(const juce::String& name)
{
    for (auto* state : {&originalState, &editedState})
        storePresetName(*state, name);
}

void OriginalComparison::folderRenamed(const juce::String& name)
{
    for (auto* state : {&originalState, &editedState})
        storeFolderName(*state, name);
}

bool OriginalComparison::isOtherSoundAwaited() const
{
    return processor.getSoundChange().awaitedReason().value_or(ChangeReason::comparison) !=
           ChangeReason::comparison;
}

bool OriginalComparison::showOriginal()
{
    update();

    if (showingOriginal || isOtherSoundAwaited())
        return false;

    showingOriginal = true;
    processor.getStateInformation(editedState);

    if (!originalState.isEmpty())
        processor.getSoundChange().restoreForComparison(originalState);

    processor.requestEditorRefresh();
    return true;
}

bool OriginalComparison::showEdited()
{
    update();

    if (!showingOriginal || !processor.getSession().isEdited() || isOtherSoundAwaited())
        return false;

    showingOriginal = false;

    if (!editedState.isEmpty())
        processor.getSoundChange().restoreForComparison(editedState);

    processor.requestEditorRefresh();
    return true;
}

void OriginalComparison::update()
{
    auto& session = processor.getSession();
    const bool edited = session.isEdited();

    if (session.takeEdit() && edited)
        showingOriginal = false;

    if (edited != lastEdited)
    {
        lastEdited = edited;
        showingOriginal = !edited;
    }
}

} // namespace quorel
