// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Session.h"

#include <string_view>

namespace quorel
{

namespace
{
size_t hashOf(const juce::MemoryBlock& bytes)
{
    return std::hash<std::string_view>()({static_cast<const char*>(bytes.getData()), bytes.getSize()});
}
} // namespace

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

void Session::noteFile(const juce::MemoryBlock& bytes)
{
    fileHash = hashOf(bytes);
    ++revision;
}

void Session::forgetFile()
{
    fileHash.reset();
    ++revision;
}

bool Session::isFileAsNoted(const juce::MemoryBlock& bytes) const
{
    return fileHash == hashOf(bytes);
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

void Session::restoreFileMark(const FileMark& mark)
{
    fileHash = mark.hash;
    ++revision;
    restoreMark(mark.isEdited);
}

} // namespace quorel
