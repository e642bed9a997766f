// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OriginalComparison.h"

#include "engine/PluginProcessor.h"

namespace quorel
{

OriginalComparison::OriginalComparison(PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
{
}

void OriginalComparison::presetLoaded(const juce::MemoryBlock& bytes)
{
    originalState.replaceAll(bytes.getData(), bytes.getSize());
    editedState.reset();
}

void OriginalComparison::presetSaved(const juce::MemoryBlock& bytes)
{
    originalState.replaceAll(bytes.getData(), bytes.getSize());
}

bool OriginalComparison::showOriginal()
{
    update();

    if (showingOriginal || processor.isSoundChanging())
        return false;

    showingOriginal = true;
    processor.getStateInformation(editedState);

    if (!originalState.isEmpty())
        processor.restoreForComparison(originalState);

    processor.requestEditorRefresh();
    return true;
}

bool OriginalComparison::showEdited()
{
    update();

    if (!showingOriginal || !processor.edited.load() || processor.isSoundChanging())
        return false;

    showingOriginal = false;

    if (!editedState.isEmpty())
        processor.restoreForComparison(editedState);

    processor.requestEditorRefresh();
    return true;
}

void OriginalComparison::update()
{
    const bool edited = processor.edited.load();

    if (processor.editedChanged.exchange(false) && edited)
        showingOriginal = false;

    if (edited != lastEdited)
    {
        lastEdited = edited;
        showingOriginal = !edited;
    }
}

} // namespace quorel
