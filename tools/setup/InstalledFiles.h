// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_data_structures/juce_data_structures.h>

namespace quorel
{

/** Copies files into place and remembers what they held, so that a later run can tell a file of ours
    from one that the user changed. The memory is a file of its own that is written by `save`. */
class InstalledFiles
{
public:
    explicit InstalledFiles(const juce::File& manifest);

    enum class Result
    {
        /** It wasn't there and is now. */
        added,
        /** An older one of ours was replaced. */
        updated,
        /** It held the same already. */
        unchanged,
        /** It holds something of the user's and stayed. */
        keptChanged,
        /** The user removed it, and it stayed away. */
        keptRemoved,
        failed
    };

    /** Brings `target` to what `source` holds, replaced as a whole, unless the user changed or removed
        it. With `restoreRemoved` a removed file comes back. */
    Result install(const juce::File& source, const juce::File& target, bool restoreRemoved);

    /** False where the memory can't be written. */
    bool save();

private:
    juce::PropertiesFile contents;
};

} // namespace quorel
