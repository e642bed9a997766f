// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/SharedFile.h"

#include "platform/FileOperations.h"
#include "platform/PlatformSeamFiles.h"

#include <algorithm>

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

/** Where locks are files, JUCE makes their folder. Where another process makes it at the same moment, that fails, and
    JUCE says that it holds a lock that isn't there. */
juce::String prepareLock(const juce::File& file)
{
    const auto name = lockNameOf(file);

    if (juce::File::isAbsolutePath(name))
        juce::ignoreUnused(createFolder(juce::File(name).getParentDirectory()));

    return name;
}
} // namespace

SharedFileLock::SharedFileLock(const juce::File& file, int timeoutMillis)
    : threads(threadLock())
    , processes(prepareLock(file))
    , locked(processes.enter(timeoutMillis))
{
}

SharedFileLock::~SharedFileLock()
{
    if (locked)
        processes.exit();
}

void removeLocksAlone(const juce::File& folder)
{
    std::error_code error;
    const auto entries = entriesOf(folder, error);
    const auto isLock = [&folder](const FolderEntry& entry)
    {
        const auto subject = folder.getChildFile(entry.name.upToLastOccurrenceOf(".", false, false));
        return folder.getChildFile(entry.name).getFullPathName() == lockNameOf(subject);
    };

    if (!error && std::all_of(entries.begin(), entries.end(), isLock))
        for (const auto& entry : entries)
            juce::ignoreUnused(deleteForGood(folder.getChildFile(entry.name)));
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
