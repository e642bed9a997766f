// SPDX-License-Identifier: GPL-3.0-or-later
// Files that several instances and programs of a user change. Any thread but the audio thread.
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** Holds other threads and processes off while a change of a file is read, made and written. Where the lock isn't
    to be had in time, work goes on: a change lost to another process is a lesser evil than a host that hangs. */
class SharedFileLock
{
public:
    explicit SharedFileLock(const juce::File& file, int timeoutMillis = 2000);
    ~SharedFileLock();

    bool isHeld() const noexcept { return locked; }

private:
    JUCE_DECLARE_NON_COPYABLE(SharedFileLock)

    const juce::ScopedLock threads;
    juce::InterProcessLock processes;
    bool locked;
};

/** Deletes what the locks of earlier changes have left in a folder, if nothing else is there. */
void removeLocksAlone(const juce::File& folder);

/** Copies a file that can't be understood, before it is written anew, to ".broken", ".broken2" and so on beside
    it, under a name that no earlier copy has. */
bool keepBrokenCopy(const juce::File& file);

} // namespace quorel
