// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/FolderArchive.h"

#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/FileReplacement.h"
#include "platform/FolderUpdate.h"
#include "presets/PresetFiles.h"
#include "presets/PresetNames.h"

#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace quorel
{

namespace
{
constexpr juce::int64 largestArchive = 512 * 1024 * 1024;
/** Of all presets together, unpacked: they are held in memory until all are known to be good. */
constexpr juce::int64 largestContent = 512 * 1024 * 1024;
/** The zip format counts entries in 16 bits. */
constexpr int mostEntries = 65535;
constexpr int bestCompression = 9;

juce::String quoted(const juce::String& text)
{
    return "\"" + text + "\"";
}

/** What an entry's name says. */
struct EntryName
{
    /** Empty where the preset lies at the top. */
    juce::String folder;
    juce::String preset;
};

/** Reads the name of an entry: a preset, or something to pass over, or a failure where the name could lead
    anywhere but into one folder. */
juce::Result readEntryName(const juce::ZipFile::ZipEntry& entry, std::optional<EntryName>& name)
{
    name.reset();
    const auto& path = entry.filename;
    const bool isFolder = path.endsWithChar('/');
    const auto parts = juce::StringArray::fromTokens(isFolder ? path.dropLastCharacters(1) : path, "/", {});
    bool isSafe = !path.containsChar('\\') && !entry.isSymbolicLink && !parts.isEmpty();
    for (const auto& part : parts)
        isSafe = isSafe && isPlainName(part);
    if (!isSafe)
        return juce::Result::fail("the archive holds the unsafe entry " + quoted(path));

    const auto& last = parts[parts.size() - 1];
    // Names that begin with a point are never listed; some systems add their own files under such names.
    if (isFolder || !last.endsWith(presetFileEnding) || last.startsWithChar('.'))
        return juce::Result::ok();
    if (parts.size() > 2)
        return juce::Result::fail("presets lie one folder deep, unlike " + quoted(path));
    name = EntryName{parts.size() == 2 ? parts[0] : juce::String(),
                     last.dropLastCharacters(juce::String(presetFileEnding).length())};
    return juce::Result::ok();
}

/** Unpacks an entry, whatever size it claims to have. */
juce::Result unpack(juce::ZipFile& zip, int index, juce::int64 mostBytes, juce::MemoryBlock& bytes)
{
    const auto& entry = *zip.getEntry(index);
    const auto damaged = [&] { return juce::Result::fail(quoted(entry.filename) + " is damaged"); };
    if (entry.uncompressedSize > juce::jmin(mostBytes, largestWholeFile))
        return juce::Result::fail(quoted(entry.filename) + " is too large");

    const std::unique_ptr<juce::InputStream> stream(zip.createStreamForEntry(index));
    const auto size = static_cast<std::size_t>(entry.uncompressedSize);
    if (stream == nullptr)
        return damaged();
    // One byte more than it may have shows an entry that is longer than it claims.
    juce::MemoryBlock read(size + 1);
    std::size_t numRead = 0;
    while (numRead <= size)
    {
        const int wanted = static_cast<int>(juce::jmin<std::size_t>(1 << 20, size + 1 - numRead));
        const int got = stream->read(static_cast<char*>(read.getData()) + numRead, wanted);
        if (got <= 0)
            break;
        numRead += static_cast<std::size_t>(got);
    }
    if (numRead != size)
        return damaged();
    bytes.replaceAll(read.getData(), size);
    return juce::Result::ok();
}

} // namespace

juce::Result exportPresets(const juce::Array<juce::File>& presets, const juce::String& folderName,
                           const juce::File& archive)
{
    if (presets.size() > mostEntries)
        return juce::Result::fail("more presets than an archive can hold");

    juce::ZipFile::Builder builder;
    juce::int64 numBytes = 0;
    juce::StringArray names;
    for (const auto& file : presets)
    {
        PresetDocument document;
        if (const auto result = PresetDocument::open(file, document); result.failed())
            return result;
        if (const auto problem = document.whatStatesLack(); problem.isNotEmpty())
            return juce::Result::fail(file.getFullPathName() + ": " + problem);
        if (!names.addIfNotAlreadyThere(file.getFileName(), true))
            return juce::Result::fail("two presets are called " + quoted(file.getFileName()));
        numBytes += file.getSize();
        builder.addFile(file, bestCompression, folderName + "/" + file.getFileName());
    }
    if (numBytes > largestContent)
        return juce::Result::fail("the presets are too large for one archive");

    const auto cannotWrite = [&](const juce::String& reason)
    { return juce::Result::fail("cannot write " + archive.getFullPathName() + " (" + reason + ")"); };
    FileReplacement replacement(archive);
    if (replacement.status().failed())
        return cannotWrite(replacement.status().getErrorMessage());
    // What goes into the archive is read once more: a file may have become unreadable since.
    if (!builder.writeToStream(replacement.stream(), nullptr) && replacement.status().wasOk())
        return cannotWrite("a preset of the folder can't be read any more");
    const auto result = replacement.finish();
    return result.wasOk() ? result : cannotWrite(result.getErrorMessage());
}

juce::Result FolderArchive::read(const juce::File& file, FolderArchive& archive)
{
    if (const auto readable = checkReadable(file); readable.failed())
        return juce::Result::fail("cannot read " + file.getFullPathName() + " (" +
                                  readable.getErrorMessage() + ")");
    if (file.getSize() > largestArchive)
        return juce::Result::fail(file.getFullPathName() + " is too large");
    juce::ZipFile zip(file);
    if (zip.getNumEntries() == 0)
        return juce::Result::fail(file.getFullPathName() + " is no zip archive, or an empty one");
    archive = {};
    if (const auto result = archive.readEntries(zip); result.failed())
        return result;
    if (archive.folder.isEmpty())
        archive.folder = file.getFileNameWithoutExtension();
    return archive.arrivals.empty() ? juce::Result::fail("the archive holds no presets") : juce::Result::ok();
}

juce::Result FolderArchive::readEntries(juce::ZipFile& zip)
{
    auto bytesLeft = largestContent;
    std::set<juce::String> names;
    for (int i = 0; i < zip.getNumEntries(); ++i)
    {
        const auto& entry = *zip.getEntry(i);
        std::optional<EntryName> name;
        if (const auto result = readEntryName(entry, name); result.failed())
            return result;
        if (!name.has_value())
        {
            if (!entry.filename.endsWithChar('/'))
                others.add(entry.filename);
            continue;
        }
        if (!arrivals.empty() && name->folder != folder)
            return juce::Result::fail("the archive holds more than one folder");
        folder = name->folder;
        if (!names.insert(name->preset.toLowerCase()).second)
            return juce::Result::fail("the archive holds " + quoted(name->preset) + " twice");

        Arrival arrival;
        arrival.name = name->preset;
        juce::MemoryBlock bytes;
        if (const auto result = unpack(zip, i, bytesLeft, bytes); result.failed())
            return result;
        bytesLeft -= static_cast<juce::int64>(bytes.getSize());
        if (const auto result = PresetDocument::parse(bytes, arrival.document); result.failed())
            return juce::Result::fail(quoted(entry.filename) + ": " + result.getErrorMessage());
        if (const auto problem = arrival.document.whatStatesLack(); problem.isNotEmpty())
            return juce::Result::fail(quoted(entry.filename) + ": " + problem);
        arrivals.push_back(std::move(arrival));
    }
    return juce::Result::ok();
}

juce::StringArray FolderArchive::namesTaken(const juce::File& banksFolder,
                                            const juce::String& folderName) const
{
    juce::StringArray taken;
    for (const auto& arrival : arrivals)
        if (childNamed(childNamed(banksFolder, folderName), arrival.name + presetFileEnding).exists())
            taken.add(arrival.name);
    return taken;
}

juce::Result FolderArchive::importTo(const juce::File& banksFolder, const juce::String& folderName)
{
    const auto target = childNamed(banksFolder, folderName);
    if (target == juce::File() || folderName.startsWithChar('.'))
        return juce::Result::fail("no folder can be called " + quoted(folderName));
    if (target.exists() && !target.isDirectory())
        return juce::Result::fail(target.getFullPathName() + " is not a folder");

    FolderUpdate update(target);
    for (auto& arrival : arrivals)
    {
        const auto& chunk = arrival.document.chunk();
        if (chunkName(chunk.presetName) != chunkName(arrival.name) ||
            chunkName(chunk.folderName) != chunkName(folderName))
        {
            arrival.document.setPresetName(arrival.name);
            arrival.document.setFolderName(folderName);
        }
        const auto name = arrival.name + presetFileEnding;
        if (const auto result = update.add(name, arrival.document.bytes()); result.failed())
            return juce::Result::fail("cannot write " + childNamed(target, name).getFullPathName() + " (" +
                                      result.getErrorMessage() + "); nothing was imported");
    }
    const auto result = update.finish();
    return result.wasOk() ? result
                          : juce::Result::fail("cannot write to " + target.getFullPathName() + " (" +
                                               result.getErrorMessage() +
                                               "); the next start tries the missing ones again");
}

} // namespace quorel
