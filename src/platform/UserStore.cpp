// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UserStore.h"

#include "platform/FileOperations.h"
#include "platform/SharedFile.h"
#include "platform/ValueFile.h"

namespace quorel
{

namespace
{
juce::String fullName(const juce::String& key, const juce::String& name)
{
    return key + "\\" + name;
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
    if (file == juce::File() || !createFolder(file.getParentDirectory()))
        return false;

    const SharedFileLock lock(file);
    ValueFile settings(file, ValueFile::Names::anyCase);

    if (settings.isBroken() && !keepBrokenCopy(file))
        return false;

    if (value.isEmpty())
        settings.remove(fullName(key, name));
    else
        settings.set(fullName(key, name), value);

    // The last one takes the file with it.
    if (settings.names().size() == 0)
        return !file.exists() || deleteForGood(file).wasOk();

    return settings.save().wasOk();
}

} // namespace quorel
