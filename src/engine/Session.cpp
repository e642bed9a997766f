// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Session.h"

namespace quorel
{

juce::String Session::getPresetName() const
{
    const juce::ScopedLock scopedLock(nameLock);
    return presetName;
}

juce::String Session::getFolderName() const
{
    const juce::ScopedLock scopedLock(nameLock);
    return folderName;
}

void Session::setNames(const juce::String& preset, const juce::String& folder)
{
    const juce::ScopedLock scopedLock(nameLock);
    presetName = preset;
    folderName = folder;
}

void Session::markEdited() noexcept
{
    edited.store(true);
    editPending.store(true);
}

void Session::restoreMark(bool wasEdited) noexcept
{
    edited.store(wasEdited);
    editPending.store(false);
}

} // namespace quorel
