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
    sides.original = std::make_shared<const juce::MemoryBlock>(bytes);
    sides.edited = nullptr;
}

void OriginalComparison::presetSaved(const juce::MemoryBlock& bytes)
{
    sides.original = std::make_shared<const juce::MemoryBlock>(bytes);
}

void OriginalComparison::rename(bool (*store)(juce::MemoryBlock&, const juce::String&),
                                const juce::String& name)
{
    for (auto* side : {&sides.original, &sides.edited})
    {
        if (*side == nullptr)
            continue;

        auto renamed = std::make_shared<juce::MemoryBlock>(**side);
        store(*renamed, name);
        *side = renamed;
    }
}

void OriginalComparison::presetRenamed(const juce::String& name)
{
    rename(storePresetName, name);
}

void OriginalComparison::folderRenamed(const juce::String& name)
{
    rename(storeFolderName, name);
}

bool OriginalComparison::isOtherSoundAwaited() const
{
    return processor.getSoundChange().awaitedReason().value_or(ChangeReason::comparison) !=
           ChangeReason::comparison;
}

bool OriginalComparison::showOriginal()
{
    update();

    if (sides.showingOriginal || isOtherSoundAwaited())
        return false;

    processor.getUndo().beforeSoundChange("Original");
    juce::MemoryBlock edited;
    processor.getStateInformation(edited);
    sides.edited = std::make_shared<const juce::MemoryBlock>(std::move(edited));
    sides.showingOriginal = true;

    if (sides.original != nullptr)
        processor.getSoundChange().restoreForComparison(*sides.original);

    processor.requestEditorRefresh();
    return true;
}

bool OriginalComparison::showEdited()
{
    update();

    if (!sides.showingOriginal || !processor.getSession().isEdited() || isOtherSoundAwaited())
        return false;

    processor.getUndo().beforeSoundChange("Edit");
    sides.showingOriginal = false;

    if (sides.edited != nullptr)
        processor.getSoundChange().restoreForComparison(*sides.edited);

    processor.requestEditorRefresh();
    return true;
}

void OriginalComparison::bringBack(const Sides& former)
{
    sides = former;
    lastEdited = processor.getSession().isEdited();
}

void OriginalComparison::update()
{
    auto& session = processor.getSession();
    const bool edited = session.isEdited();

    if (session.takeEdit() && edited)
        sides.showingOriginal = false;

    if (edited != lastEdited)
    {
        lastEdited = edited;
        sides.showingOriginal = !edited;
    }
}

} // namespace quorel
