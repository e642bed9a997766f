// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ValueFile.h"

#include <juce_core/juce_core.h>
#include <vector>

namespace quorel
{

/** Copies files into place and remembers what they held, so that a later run can tell a file of ours
    from one that the user changed. The memory is a file of its own: `save` writes it, once with what is
    about to be copied and once with what was, so that a run that is killed knows its files the next time. */
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

    /** Remembers that `install` is about to change `target`. True where it will add it. */
    bool announce(const juce::File& source, const juce::File& target, bool restoreRemoved);

    /** Brings `target` to what `source` holds, replaced as a whole, unless the user changed or removed
        it. With `restoreRemoved` a removed file comes back. `reason` is why it failed. */
    Result install(const juce::File& source, const juce::File& target, bool restoreRemoved,
                   juce::String& reason);

    enum class Removal
    {
        removed,
        /** The user removed it before. */
        wasGone,
        /** It holds something of the user's and stayed. */
        keptChanged,
        failed
    };

    /** All files that it remembers. */
    std::vector<juce::File> list() const;

    /** Deletes a file of the list, unless the user changed it. `reason` is why it failed. */
    Removal remove(const juce::File& target, juce::String& reason) const;

    /** Does nothing where nothing has changed. */
    juce::Result save();

private:
    struct Copy
    {
        Result result = Result::failed;
        /** Fingerprint of the source. */
        juce::String wanted;
        /** That of what was last installed, if anything was. */
        juce::String before;
        /** Why it failed. */
        juce::String reason;
    };

    /** What `install` has to do. */
    Copy look(const juce::File& source, const juce::File& target, bool restoreRemoved) const;
    /** Fingerprints of all that was installed there, or is about to be; that of the last whole run comes first. */
    juce::StringArray knownOf(const juce::File& target) const;
    void remember(const juce::String& name, const juce::String& value);

    ValueFile contents;
    bool isSaved = true;
};

} // namespace quorel
