// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileOperations.h"

#include "platform/FileNames.h"
#include "platform/FileReplacement.h"
#include "platform/PlatformSeam.h"

#include <limits>
#include <optional>
#include <type_traits>

namespace quorel
{

namespace
{
namespace fs = std::filesystem;

/** Paths are bytes on one platform and wide characters on the other. */
template <typename Character>
juce::String textOfNative(const Character* native)
{
    if constexpr (std::is_same_v<Character, char>)
        return juce::CharPointer_UTF8::isValidString(native, std::numeric_limits<int>::max())
                   ? juce::String::fromUTF8(native)
                   : juce::String();
    else
        return juce::String(native);
}

juce::Result failure(const std::error_code& error)
{
    return juce::Result::fail(error.message());
}

/** Replaces `to` by the contents of a regular file, with a mode where one is given. */
juce::Result copyContents(const juce::File& from, const juce::File& to, std::optional<fs::perms> mode)
{
    if (const auto result = checkReadable(from); result.failed())
        return result;

    juce::FileInputStream input(from);

    if (input.failedToOpen())
        return input.getStatus();

    FileReplacement replacement(to);

    if (replacement.status().failed())
        return replacement.status();

    std::error_code error;

    if (mode.has_value())
        fs::permissions(pathOf(replacement.temporaryFile()), *mode, error);

    const auto length = input.getTotalLength();

    if (replacement.stream().writeFromInputStream(input, -1) != length && replacement.status().wasOk())
        return input.getStatus().failed() ? input.getStatus()
                                          : juce::Result::fail("the file changed meanwhile");

    return replacement.finish();
}

juce::Result copyEntry(const juce::File& from, const juce::File& to);

juce::Result copyFolder(const juce::File& from, const juce::File& to)
{
    std::error_code error;
    fs::create_directory(pathOf(to), pathOf(from), error);

    for (fs::directory_iterator entry(pathOf(from), error), end; !error && entry != end;
         entry.increment(error))
    {
        const auto name = textOf(entry->path().filename());

        if (name.isEmpty())
            return failure(std::make_error_code(std::errc::illegal_byte_sequence));

        if (const auto result = copyEntry(childNamed(from, name), childNamed(to, name)); result.failed())
            return result;
    }

    if (error)
        return failure(error);

    syncFolder(to);
    return juce::Result::ok();
}

juce::Result copyEntry(const juce::File& from, const juce::File& to)
{
    std::error_code error;
    const auto status = fs::symlink_status(pathOf(from), error);

    if (fs::is_symlink(status))
    {
        fs::copy_symlink(pathOf(from), pathOf(to), error);
        return error ? failure(error) : juce::Result::ok();
    }

    const auto result =
        fs::is_directory(status) ? copyFolder(from, to) : copyContents(from, to, status.permissions());

    if (result.wasOk())
        if (const auto time = fs::last_write_time(pathOf(from), error); !error)
            fs::last_write_time(pathOf(to), time, error);

    return result;
}

} // namespace

fs::path pathOf(const juce::File& file)
{
    return fs::u8path(file.getFullPathName().toStdString());
}

juce::String textOf(const fs::path& path)
{
    return textOfNative(path.c_str());
}

juce::Result checkReadable(const juce::File& file)
{
    std::error_code error;
    const auto status = fs::status(pathOf(file), error);

    if (!fs::exists(status))
        return failure(error ? error : std::make_error_code(std::errc::no_such_file_or_directory));

    return fs::is_regular_file(status) ? juce::Result::ok() : juce::Result::fail("not a regular file");
}

bool readWholeFile(const juce::File& file, juce::MemoryBlock& bytes)
{
    if (checkReadable(file).failed())
        return false;

    juce::FileInputStream stream(file);

    if (!stream.openedOk())
        return false;

    bytes.reset();
    const auto length = stream.getTotalLength();
    return length <= largestWholeFile && static_cast<juce::int64>(stream.readIntoMemoryBlock(
                                             bytes, static_cast<juce::pointer_sized_int>(length))) == length;
}

juce::Result replaceFile(const juce::File& file, const juce::MemoryBlock& bytes)
{
    FileReplacement replacement(file);

    if (replacement.status().failed())
        return replacement.status();

    replacement.stream().write(bytes.getData(), bytes.getSize());
    return replacement.finish();
}

juce::Result copyFile(const juce::File& from, const juce::File& to)
{
    return copyContents(from, to, {});
}

juce::Result copyTree(const juce::File& from, const juce::File& to)
{
    auto result = copyEntry(from, to);

    if (result.failed())
    {
        std::error_code error;
        fs::remove_all(pathOf(to), error);
    }

    return result;
}

juce::Result moveFile(const juce::File& from, const juce::File& to)
{
    if (from == juce::File() || to == juce::File())
        return juce::Result::fail("there is no such place");

    std::error_code error;
    fs::rename(pathOf(from), pathOf(to), error);

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
    std::error_code error;
    fs::remove_all(pathOf(file), error);
    return error ? failure(error) : juce::Result::ok();
}

Discarded discardFile(const juce::File& file, const std::function<bool(const juce::String& question)>& agrees)
{
    std::error_code error;

    if (file == juce::File() || !fs::exists(fs::symlink_status(pathOf(file), error)))
        return {Discarded::Outcome::failed,
                std::make_error_code(std::errc::no_such_file_or_directory).message()};

    if (moveToTrash(file))
        return {Discarded::Outcome::gone, {}};

    if (!agrees(file.getFileName() + " can't be moved to the trash. Delete it for good ?"))
        return {Discarded::Outcome::kept, {}};

    if (const auto result = deleteForGood(file); result.failed())
        return {Discarded::Outcome::failed, result.getErrorMessage()};

    return {Discarded::Outcome::gone, {}};
}

} // namespace quorel
