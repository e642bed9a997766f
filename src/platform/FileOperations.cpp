// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileOperations.h"

#include "platform/FileNames.h"
#include "platform/FileReplacement.h"
#include "platform/PlatformSeamFiles.h"

#include <limits>
#include <memory>

namespace quorel
{

namespace
{
juce::Result failure(const std::error_code& error)
{
    return juce::Result::fail(messageOf(error));
}

/** Opened, or with a status that says why not. */
std::unique_ptr<juce::FileInputStream> openToRead(const juce::File& file)
{
    auto stream = std::make_unique<juce::FileInputStream>(reachable(file));

    if (!stream->openedOk() && waitWhileHeld(file))
        stream = std::make_unique<juce::FileInputStream>(reachable(file));

    return stream;
}
} // namespace

juce::Result createFolder(const juce::File& folder)
{
    auto result = folder.createDirectory();

    // To JUCE it is a failure that a folder has come to be since it looked.
    for (int tries = 1; result.failed() && tries < 8; ++tries)
        result = folder.createDirectory();

    return result;
}

juce::Result checkReadable(const juce::File& file)
{
    std::error_code error;
    const auto kind = kindOf(file, error);

    if (kind == PathKind::nothing)
        return failure(error);

    return kind == PathKind::file ? juce::Result::ok() : juce::Result::fail("not a regular file");
}

bool readWholeFile(const juce::File& file, juce::MemoryBlock& bytes)
{
    if (checkReadable(file).failed())
        return false;

    const auto stream = openToRead(file);

    if (!stream->openedOk() || stream->getTotalLength() > largestWholeFile)
        return false;

    // The length is looked up by name, where another file may be by now: it is a guess.
    constexpr size_t leastRoom = 4096;
    bytes.setSize(static_cast<size_t>(stream->getTotalLength()) + leastRoom);

    for (size_t length = 0;;)
    {
        if (length == bytes.getSize())
            bytes.setSize(length * 2);

        const auto room = juce::jmin<size_t>(bytes.getSize() - length, std::numeric_limits<int>::max());
        const auto numRead = stream->read(bytes.begin() + length, static_cast<int>(room));
        length += static_cast<size_t>(juce::jmax(0, numRead));

        if (length > static_cast<size_t>(largestWholeFile))
            return false;

        if (numRead <= 0)
        {
            bytes.setSize(length);
            return stream->getStatus().wasOk();
        }
    }
}

juce::Result replaceFile(const juce::File& file, const juce::MemoryBlock& bytes)
{
    FileReplacement replacement(file);

    if (replacement.status().failed())
        return replacement.status();

    replacement.stream().write(bytes.getData(), bytes.getSize());
    return replacement.finish();
}

juce::Result copyFile(const juce::File& from, const juce::File& to, ModeOfCopy mode)
{
    if (const auto result = checkReadable(from); result.failed())
        return result;

    const auto input = openToRead(from);

    if (input->failedToOpen())
        return input->getStatus();

    FileReplacement replacement(to);

    if (replacement.status().failed())
        return replacement.status();

    if (mode == ModeOfCopy::asOriginal)
        copyMode(from, replacement.temporaryFile());

    const auto length = input->getTotalLength();

    if (replacement.stream().writeFromInputStream(*input, -1) != length && replacement.status().wasOk())
        return input->getStatus().failed() ? input->getStatus()
                                           : juce::Result::fail("the file changed meanwhile");

    return replacement.finish();
}

juce::Result moveFile(const juce::File& from, const juce::File& to)
{
    if (from == juce::File() || to == juce::File())
        return juce::Result::fail("there is no such place");

    const auto error = renameInOneStep(from, to);

    if (!error)
    {
        syncFolder(to.getParentDirectory());

        if (from.getParentDirectory() != to.getParentDirectory())
            syncFolder(from.getParentDirectory());

        return juce::Result::ok();
    }

    // A linked folder may lie on another disk, where nothing can be renamed to.
    if (error != std::errc::cross_device_link || !from.existsAsFile())
        return failure(error);

    const auto result = copyFile(from, to);
    return result.failed() ? result : deleteForGood(from);
}

juce::Result deleteForGood(const juce::File& file)
{
    const auto error = removeAll(file);
    return error ? failure(error) : juce::Result::ok();
}

Discarded discardFile(const juce::File& file, const std::function<bool(const juce::String& question)>& agrees)
{
    if (file == juce::File() || !(isLink(file) || reachable(file).exists()))
        return {Discarded::Outcome::failed,
                messageOf(std::make_error_code(std::errc::no_such_file_or_directory))};

    if (moveToTrash(file))
        return {Discarded::Outcome::gone, {}};

    if (!agrees(file.getFileName() + " can't be moved to the trash. Delete it for good ?"))
        return {Discarded::Outcome::kept, {}};

    if (const auto result = deleteForGood(file); result.failed())
        return {Discarded::Outcome::failed, result.getErrorMessage()};

    return {Discarded::Outcome::gone, {}};
}

} // namespace quorel
