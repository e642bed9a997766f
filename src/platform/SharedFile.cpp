// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/SharedFile.h"

#include "platform/FileOperations.h"
#include "platform/PlatformSeamFiles.h"

namespace quorel
{

namespace
{
/** The lock between processes is held by a whole process: its threads need one of their own. */
juce::CriticalSection& threadLock()
{
    static juce::CriticalSection lock;
    return lock;
}
} // namespace

SharedFileLock::SharedFileLock(const juce::File& file, int timeoutMillis)
    : threads(threadLock())
    , processes(lockNameOf(file))
    , locked(processes.enter(timeoutMillis))
{
}

SharedFileLock::~SharedFileLock()
{
    if (locked)
        processes.exit();
}

bool keepBrokenCopy(const juce::File& file)
{
    auto copy = file.getSiblingFile(file.getFileName() + ".broken");

    for (int i = 2; copy.exists(); ++i)
    {
        if (copy.hasIdenticalContentTo(file))
            return true;

        copy = file.getSiblingFile(file.getFileName() + ".broken" + juce::String(i));
    }

    return copyFile(file, copy);
}

} // namespace quorel
