// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <memory>

namespace quorel
{

class InUseMark;

/** Puts several files into a folder, all or none: they are written in a hidden folder, down to the disk, and
    moved when all are whole. A crash before that leaves the folder as it was; one in the middle of the moves
    is made good by `removeLeftovers`, which all who list the folder call. A folder that isn't there yet comes
    in one step. Not on the audio thread. */
class FolderUpdate
{
public:
    explicit FolderUpdate(const juce::File& folder);

    /** Removes what was not moved. */
    ~FolderUpdate();

    /** Writes a file, beside a file of that name that may be there already. Fails where that couldn't be
        replaced in the end. */
    juce::Result add(const juce::String& name, const juce::MemoryBlock& bytes);

    /** Moves everything to its place; once. */
    juce::Result finish();

private:
    const juce::File target;
    const bool isNew;
    juce::File stage;
    std::unique_ptr<InUseMark> mark;

    JUCE_DECLARE_NON_COPYABLE(FolderUpdate)
};

} // namespace quorel
