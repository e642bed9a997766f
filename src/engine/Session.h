// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <atomic>
#include <optional>

namespace quorel
{

/** Where the sound that plays belongs: the preset and the controller table it came from or was saved to, and
    whether it has been edited since. */
class Session
{
public:
    /** Any thread. */
    juce::String getPresetName() const;
    /** Any thread. */
    juce::String getFolderName() const;
    /** Any thread. */
    void setNames(const juce::String& preset, const juce::String& folder);

    /** These bytes have just been read from the preset's file, or written to it. Message thread, as the three
        below. */
    void noteFile(const juce::MemoryBlock& bytes);
    /** The sound comes from elsewhere, such as a project: what its preset's file holds isn't known. */
    void forgetFile();

    bool knowsFile() const noexcept { return fileHash.has_value(); }

    /** The file still holds what was read or written last. */
    bool isFileAsNoted(const juce::MemoryBlock& bytes) const;

    /** Rises with each `noteFile` and `forgetFile`: who remembers it can tell that another sound has come, or
        that this one has been saved, even under the same names. Message thread. */
    int getRevision() const noexcept { return revision; }

    /** File name of the controller table in use, ending included; empty for none. Message thread. */
    const juce::String& getEcsName() const noexcept { return ecsName; }

    void setEcsName(const juce::String& name) { ecsName = name; }

    /** The sound differs from the preset as it was loaded or saved. Any thread. */
    bool isEdited() const noexcept { return edited.load(); }

    /** Any thread. */
    void markEdited() noexcept;

    /** The sound is now what the preset holds, or a fresh start. */
    void markSaved() noexcept { edited.store(false); }

    /** Puts the mark back to what it was before a change of sound that is no edit. */
    void restoreMark(bool wasEdited) noexcept;

    /** How the sound stands to its preset's file. */
    struct FileMark
    {
        bool isEdited = false;
        /** Of what the file held when it was read or written here; nothing where that isn't known. */
        std::optional<size_t> hash;

        bool operator==(const FileMark& other) const
        {
            return isEdited == other.isEdited && hash == other.hash;
        }
    };

    FileMark getFileMark() const { return {isEdited(), fileHash}; }

    /** For a sound that comes back with its mark. */
    void restoreFileMark(const FileMark& mark);

    /** True once after each edit. */
    bool takeEdit() noexcept { return editPending.exchange(false); }

private:
    mutable juce::CriticalSection nameLock;
    juce::String presetName;
    juce::String folderName;
    juce::String ecsName;
    std::optional<size_t> fileHash;
    int revision = 0;
    std::atomic<bool> edited{false};
    std::atomic<bool> editPending{false};
};

} // namespace quorel
