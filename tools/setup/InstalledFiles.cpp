// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstalledFiles.h"

namespace quorel
{

namespace
{
juce::PropertiesFile::Options manifestOptions()
{
    juce::PropertiesFile::Options options;
    options.storageFormat = juce::PropertiesFile::storeAsXML;
    options.millisecondsBeforeSaving = -1;
    return options;
}

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

bool replace(const juce::File& source, const juce::File& target)
{
    if (!target.getParentDirectory().createDirectory())
        return false;
    const juce::TemporaryFile temporary(target);
    return source.copyFileTo(temporary.getFile()) && temporary.overwriteTargetFileWithTemporary();
}
} // namespace

InstalledFiles::InstalledFiles(const juce::File& manifest)
    : contents(manifest, manifestOptions())
{
}

InstalledFiles::Result InstalledFiles::install(const juce::File& source, const juce::File& target,
                                               bool restoreRemoved)
{
    const auto& name = target.getFullPathName();
    const auto wanted = fingerprint(source);
    const auto installed = contents.getValue(name);
    const bool exists = target.exists();
    const auto present = exists ? fingerprint(target) : juce::String();
    if (wanted.isEmpty())
        return Result::failed;

    if (!exists && installed.isNotEmpty() && !restoreRemoved)
        return Result::keptRemoved;
    if (exists && present != wanted && present != installed)
        return Result::keptChanged;
    if (present != wanted && !replace(source, target))
        return Result::failed;

    contents.setValue(name, wanted);
    if (present == wanted)
        return Result::unchanged;
    return exists ? Result::updated : Result::added;
}

bool InstalledFiles::save()
{
    if (contents.saveIfNeeded())
        return true;
    contents.setNeedsToBeSaved(false);
    return false;
}

} // namespace quorel
