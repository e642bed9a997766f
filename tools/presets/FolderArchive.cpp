// SPDX-License-Identifier: GPL-3.0-or-later
#include "FolderArchive.h"

#include "PresetDocument.h"

#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/FileReplacement.h"
#include "platform/FolderUpdate.h"
#include "presets/PresetFiles.h"
#include "presets/PresetNames.h"

#include <cmath>
#include <memory>
#include <optional>
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

/** A preset on its way from an archive into a folder. */
struct Arrival
{
    juce::String name;
    PresetDocument document;
};

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

/** All presets of an archive, checked, and the name of their folder. */
juce::Result readArchive(const juce::File& file, std::vector<Arrival>& arrivals, ImportReport& report)
{
    if (!file.existsAsFile())
        return juce::Result::fail("there is no file " + file.getFullPathName());
    if (file.getSize() > largestArchive)
        return juce::Result::fail(file.getFullPathName() + " is too large");
    juce::ZipFile zip(file);
    if (zip.getNumEntries() == 0)
        return juce::Result::fail(file.getFullPathName() + " is no zip archive, or an empty one");

    auto bytesLeft = largestContent;
    juce::StringArray names;
    for (int i = 0; i < zip.getNumEntries(); ++i)
    {
        const auto& entry = *zip.getEntry(i);
        std::optional<EntryName> name;
        if (const auto result = readEntryName(entry, name); result.failed())
            return result;
        if (!name.has_value())
        {
            if (!entry.filename.endsWithChar('/'))
                report.passedOver.add(entry.filename);
            continue;
        }
        if (!arrivals.empty() && name->folder != report.folderName)
            return juce::Result::fail("the archive holds more than one folder");
        report.folderName = name->folder;
        if (!names.addIfNotAlreadyThere(name->preset, true))
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
    return arrivals.empty() ? juce::Result::fail("the archive holds no presets") : juce::Result::ok();
}

juce::Result writeAll(const std::vector<Arrival>& arrivals, const juce::File& folder)
{
    FolderUpdate update(folder);
    for (const auto& arrival : arrivals)
    {
        const auto name = arrival.name + presetFileEnding;
        if (const auto result = update.add(name, arrival.document.bytes()); result.failed())
            return juce::Result::fail("cannot write " + childNamed(folder, name).getFullPathName() + " (" +
                                      result.getErrorMessage() + "); nothing was imported");
    }
    const auto result = update.finish();
    return result.wasOk() ? result
                          : juce::Result::fail("cannot write to " + folder.getFullPathName() + " (" +
                                               result.getErrorMessage() +
                                               "); the next start tries again what is missing");
}
} // namespace

juce::Result exportFolder(const juce::File& folder, const juce::File& archive, int& numPresets)
{
    const auto names = listPresets(folder);
    numPresets = names.size();
    if (names.isEmpty())
        return juce::Result::fail("there are no presets in " + folder.getFullPathName());
    if (numPresets > mostEntries)
        return juce::Result::fail("more presets than an archive can hold");

    juce::ZipFile::Builder builder;
    juce::int64 numBytes = 0;
    for (const auto& name : names)
    {
        const auto file = childNamed(folder, name + presetFileEnding);
        PresetDocument document;
        if (const auto result = PresetDocument::open(file, document); result.failed())
            return result;
        if (const auto problem = document.whatStatesLack(); problem.isNotEmpty())
            return juce::Result::fail(file.getFullPathName() + ": " + problem);
        numBytes += file.getSize();
        builder.addFile(file, bestCompression, folder.getFileName() + "/" + file.getFileName());
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

juce::Result importFolder(const juce::File& archive, const juce::File& banksFolder,
                          const ImportOptions& options, ImportReport& report)
{
    std::vector<Arrival> arrivals;
    if (const auto result = readArchive(archive, arrivals, report); result.failed())
        return result;
    if (options.folderName.isNotEmpty())
        report.folderName = options.folderName;
    else if (report.folderName.isEmpty())
        report.folderName = archive.getFileNameWithoutExtension();
    report.numPresets = static_cast<int>(arrivals.size());

    const auto folder = childNamed(banksFolder, report.folderName);
    if (folder == juce::File() || report.folderName.startsWithChar('.'))
        return juce::Result::fail("no folder can be called " + quoted(report.folderName));
    if (folder.exists() && !folder.isDirectory())
        return juce::Result::fail(folder.getFullPathName() + " is not a folder");

    juce::StringArray taken;
    for (auto& arrival : arrivals)
    {
        const auto& chunk = arrival.document.chunk();
        if (chunkName(chunk.presetName) != chunkName(arrival.name) ||
            chunkName(chunk.folderName) != chunkName(report.folderName))
        {
            arrival.document.setPresetName(arrival.name);
            arrival.document.setFolderName(report.folderName);
        }
        if (childNamed(folder, arrival.name + presetFileEnding).exists())
            taken.add(quoted(arrival.name));
    }
    if (!taken.isEmpty() && !options.replace)
        return juce::Result::fail(
            quoted(report.folderName) + " has " +
            (taken.size() == 1 ? juce::String("a preset") : juce::String(taken.size()) + " presets") +
            " of the same name already, such as " + taken[0] +
            ": give --replace, or another folder with --folder");
    return writeAll(arrivals, folder);
}

} // namespace quorel
