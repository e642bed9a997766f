// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UserStore.h"

#include "platform/FileOperations.h"
#include "platform/ValueFile.h"

namespace quorel
{

namespace
{
constexpr int lockTimeoutMillis = 2000;

juce::String fullName(const juce::String& key, const juce::String& name)
{
    return key + "\\" + name;
}

/** The lock between processes is held by a whole process: its threads need one of their own. */
juce::CriticalSection& writeLock()
{
    static juce::CriticalSection lock;
    return lock;
}

/** Holds other processes off while a change is read, made and written. Where the lock isn't to be had
    in time, work goes on: a change lost to another process is a lesser evil than a host that hangs. */
class ProcessLock
{
public:
    explicit ProcessLock(const juce::File& file)
        : lock(file.getFullPathName() + ".lock")
        , locked(lock.enter(lockTimeoutMillis))
    {
    }

    ~ProcessLock()
    {
        if (locked)
            lock.exit();
    }

private:
    JUCE_DECLARE_NON_COPYABLE(ProcessLock)

    juce::InterProcessLock lock;
    bool locked;
};

/** A copy of the broken file beside it, under a name that no earlier copy has. */
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
} // namespace

FileUserStore::FileUserStore(const juce::File& storeFile)
    : file(storeFile)
{
}

juce::String FileUserStore::read(const juce::String& key, const juce::String& name) const
{
    return ValueFile(file, ValueFile::Names::anyCase).get(fullName(key, name));
}

bool FileUserStore::write(const juce::String& key, const juce::String& name, const juce::String& value)
{
    if (file == juce::File() || !file.getParentDirectory().createDirectory())
        return false;

    const juce::ScopedLock threads(writeLock());
    const ProcessLock processes(file);
    ValueFile settings(file, ValueFile::Names::anyCase);

    if (settings.isBroken() && !keepBrokenCopy(file))
        return false;

    settings.set(fullName(key, name), value);
    return settings.save();
}

} // namespace quorel
