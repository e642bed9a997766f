// SPDX-License-Identifier: GPL-3.0-or-later
#include "setup/InstalledFiles.h"

#include "platform/FileOperations.h"
#include "platform/Leftovers.h"
#include "platform/PlatformSeamFiles.h"

#include <cstring>

namespace quorel
{

namespace
{
/** Stands between what a file held and what a run that may not have ended was about to make of it. */
constexpr const char* announcedMark = ";";

/** Size and FNV-1a sum, which is enough to notice a change. Empty if the file can't be read. */
juce::String fingerprint(const juce::File& file)
{
    juce::MemoryBlock bytes;
    if (!file.loadFileAsData(bytes))
        return {};
    juce::uint64 sum = 0xcbf29ce484222325u;
    for (const char byte : bytes)
        sum = (sum ^ static_cast<juce::uint8>(byte)) * 0x100000001b3u;
    return juce::String(bytes.getSize()) + ":" + juce::String::toHexString(sum);
}

/** True for the start of `source` alone, as earlier versions left it on a full disk. */
bool isCutCopy(const juce::File& target, const juce::File& source)
{
    juce::MemoryBlock is, wanted;
    return readWholeFile(target, is) && readWholeFile(source, wanted) && is.getSize() < wanted.getSize() &&
           (is.isEmpty() || std::memcmp(is.getData(), wanted.getData(), is.getSize()) == 0);
}

/** True also where the folders that lead there are gone. Else `reason` is why nothing can be seen, if so: not
    that the user has removed it. */
bool isGone(const juce::File& file, juce::String& reason)
{
    std::error_code error;

    if (kindOf(file, error) != PathKind::nothing || isLink(file))
        return false;

    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory)
        return true;

    reason = messageOf(error);
    return false;
}
} // namespace

InstalledFiles::InstalledFiles(const juce::File& manifest)
    : contents(manifest, ValueFile::Names::exact)
{
}

juce::StringArray InstalledFiles::knownOf(const juce::File& target) const
{
    return juce::StringArray::fromTokens(contents.get(target.getFullPathName()), announcedMark, {});
}

void InstalledFiles::remember(const juce::String& name, const juce::String& value)
{
    if (contents.get(name) == value)
        return;

    if (value.isEmpty())
        contents.remove(name);
    else
        contents.set(name, value);

    isSaved = false;
}

InstalledFiles::Copy InstalledFiles::look(const juce::File& source, const juce::File& target,
                                          bool restoreRemoved) const
{
    const auto known = knownOf(target);
    Copy copy;
    copy.wanted = fingerprint(source);
    copy.before = known[0];

    if (copy.wanted.isEmpty())
    {
        copy.reason = "it can't be read";
        return copy;
    }

    if (isGone(target, copy.reason))
    {
        copy.result = copy.before.isNotEmpty() && !restoreRemoved ? Result::keptRemoved : Result::added;
        return copy;
    }

    if (copy.reason.isNotEmpty())
        return copy;

    const auto present = fingerprint(target);
    const bool isOurs = present.isNotEmpty() && known.contains(present);

    if (present == copy.wanted)
        copy.result = Result::unchanged;
    else
        copy.result = isOurs || isCutCopy(target, source) ? Result::updated : Result::keptChanged;

    return copy;
}

bool InstalledFiles::announce(const juce::File& source, const juce::File& target, bool restoreRemoved)
{
    const auto copy = look(source, target, restoreRemoved);

    if (copy.result != Result::added && copy.result != Result::updated)
        return false;

    const auto& name = target.getFullPathName();
    const auto known = contents.get(name);

    // What earlier runs announced may be there, too.
    if (!juce::StringArray::fromTokens(known, announcedMark, {}).contains(copy.wanted))
        remember(name, known + announcedMark + copy.wanted);

    return copy.result == Result::added;
}

InstalledFiles::Result InstalledFiles::install(const juce::File& source, const juce::File& target,
                                               bool restoreRemoved, juce::String& reason)
{
    removeLeftovers(target.getParentDirectory());
    const auto copy = look(source, target, restoreRemoved);

    switch (copy.result)
    {
    case Result::failed:
        reason = copy.reason;
        return copy.result;
    case Result::keptChanged:
    case Result::keptRemoved:
        remember(target.getFullPathName(), copy.before);
        return copy.result;
    case Result::unchanged:
        break;
    case Result::added:
    case Result::updated:
        if (const auto result = copyFile(source, target); result.failed())
        {
            reason = result.getErrorMessage();
            return Result::failed;
        }
    }

    remember(target.getFullPathName(), copy.wanted);
    return copy.result;
}

std::vector<juce::File> InstalledFiles::list() const
{
    std::vector<juce::File> found;
    for (const auto& name : contents.names())
        if (juce::File::isAbsolutePath(name))
            found.emplace_back(name);
    return found;
}

InstalledFiles::Removal InstalledFiles::remove(const juce::File& target, juce::String& reason) const
{
    if (isGone(target, reason))
        return Removal::wasGone;

    if (reason.isNotEmpty())
        return Removal::failed;

    const auto present = fingerprint(target);

    if (present.isEmpty() && target.existsAsFile())
    {
        reason = "it can't be read";
        return Removal::failed;
    }

    if (!knownOf(target).contains(present))
        return Removal::keptChanged;

    const auto result = deleteForGood(target);
    reason = result.getErrorMessage();
    return result.wasOk() ? Removal::removed : Removal::failed;
}

juce::Result InstalledFiles::save()
{
    if (isSaved)
        return juce::Result::ok();

    const auto result = contents.save();
    isSaved = result.wasOk();
    return result;
}

} // namespace quorel
