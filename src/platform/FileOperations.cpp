// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileOperations.h"

#include "platform/FileNames.h"
#include "platform/PlatformSeam.h"

#include <limits>
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

} // namespace

fs::path pathOf(const juce::File& file)
{
    return fs::u8path(file.getFullPathName().toStdString());
}

juce::String textOf(const fs::path& path)
{
    return textOfNative(path.c_str());
}

bool readWholeFile(const juce::File& file, juce::MemoryBlock& bytes)
{
    // Opening a pipe would wait for somebody to write to it.
    std::error_code error;

    if (!fs::is_regular_file(pathOf(file), error))
        return false;

    juce::FileInputStream stream(file);

    if (!stream.openedOk())
        return false;

    bytes.reset();
    const auto length = stream.getTotalLength();
    return length <= largestWholeFile && static_cast<juce::int64>(stream.readIntoMemoryBlock(
                                             bytes, static_cast<juce::pointer_sized_int>(length))) == length;
}

bool replaceFile(const juce::File& file, const juce::MemoryBlock& bytes)
{
    if (file == juce::File() || file.isDirectory() || !file.getParentDirectory().createDirectory())
        return false;

    // The temporary file lies in the same folder, so that the move is one step of the file system. Its name
    // is short, whatever the file's, and a crash leaves nothing that looks like a preset.
    const auto temporary =
        childNamed(file.getParentDirectory(), ".quorel-" + juce::Uuid().toString().substring(0, 12) + ".tmp");
    bool written = false;
    {
        juce::FileOutputStream stream(temporary);

        if (stream.openedOk() && (bytes.isEmpty() || stream.write(bytes.getData(), bytes.getSize())))
        {
            stream.flush();
            written = stream.getStatus().wasOk();
        }
    }

    // The stream doesn't report a last buffer that was written in part, as happens when the disk fills up.
    written = written && temporary.getSize() == static_cast<juce::int64>(bytes.getSize());

    if (written && moveFile(temporary, file))
        return true;

    temporary.deleteFile();
    return false;
}

bool moveFile(const juce::File& from, const juce::File& to)
{
    if (from == juce::File() || to == juce::File())
        return false;

    std::error_code error;
    fs::rename(pathOf(from), pathOf(to), error);

    if (!error)
        return true;

    // A linked folder may lie on another disk, where nothing can be renamed to.
    juce::MemoryBlock bytes;
    return error == std::errc::cross_device_link && readWholeFile(from, bytes) && replaceFile(to, bytes) &&
           from.deleteFile();
}

bool discardFile(const juce::File& file)
{
    if (file == juce::File())
        return false;

    std::error_code error;

    if (fs::symlink_status(pathOf(file), error).type() == fs::file_type::not_found)
        return false;

    if (moveToTrash(file))
        return true;

    fs::remove_all(pathOf(file), error);
    return fs::symlink_status(pathOf(file), error).type() == fs::file_type::not_found;
}

} // namespace quorel
