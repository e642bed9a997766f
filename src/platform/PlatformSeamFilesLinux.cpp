// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PlatformSeamFiles.h"

#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/PlatformSeam.h"

#if !JUCE_WINDOWS

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorel
{

namespace
{
namespace fs = std::filesystem;

fs::path pathOf(const juce::File& file)
{
    return fs::u8path(file.getFullPathName().toStdString());
}

/** Empty for what isn't valid Unicode. */
juce::String textOf(const fs::path& path)
{
    return juce::CharPointer_UTF8::isValidString(path.c_str(), std::numeric_limits<int>::max())
               ? juce::String::fromUTF8(path.c_str())
               : juce::String();
}

juce::Result lastError()
{
    return juce::Result::fail(std::error_code(errno, std::generic_category()).message());
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
            return juce::Result::fail(messageOf(std::make_error_code(std::errc::illegal_byte_sequence)));

        if (const auto result = copyEntry(childNamed(from, name), childNamed(to, name)); result.failed())
            return result;
    }

    if (error)
        return juce::Result::fail(messageOf(error));

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
        return error ? juce::Result::fail(messageOf(error)) : juce::Result::ok();
    }

    const auto result =
        fs::is_directory(status) ? copyFolder(from, to) : copyFile(from, to, ModeOfCopy::asOriginal);

    if (result.wasOk())
        if (const auto time = fs::last_write_time(pathOf(from), error); !error)
            fs::last_write_time(pathOf(to), time, error);

    return result;
}

/** Copies a file, a link, or a folder with all its contents to a place where nothing is, with modes and
    times. Where that fails, nothing is left there. */
juce::Result copyTree(const juce::File& from, const juce::File& to)
{
    const auto result = copyEntry(from, to);

    if (result.failed())
        removeAll(to);

    return result;
}

/** Moves a file or folder, also to another disk, where it has to be copied. */
juce::Result carryOver(const juce::File& file, const juce::File& place)
{
    const auto error = renameInOneStep(file, place);

    if (error != std::errc::cross_device_link)
        return error ? juce::Result::fail(messageOf(error)) : juce::Result::ok();

    const auto copied = copyTree(file, place);
    syncFolder(place.getParentDirectory());
    return copied.failed() ? copied : deleteForGood(file);
}

/** Creates a folder that nobody else may look into; one that is there stays as it is. */
juce::Result createPrivateFolder(const juce::File& folder)
{
    constexpr mode_t mode = 0700;
    return ::mkdir(folder.getFullPathName().toRawUTF8(), mode) == 0 || folder.isDirectory()
               ? juce::Result::ok()
               : lastError();
}

/** Reserves a name in the trash by its record, which nobody else can create as well. */
juce::Result reserveInTrash(const juce::String& name, const juce::File& files, const juce::File& records,
                            juce::File& place, juce::File& record)
{
    for (int number = 1;; ++number)
    {
        // Cut, so that a long name leaves room for the number and the record's ending.
        const auto trashName =
            number == 1 ? name.substring(0, 48) : name.substring(0, 48) + "." + juce::String(number);
        place = childNamed(files, trashName);
        record = childNamed(records, trashName + ".trashinfo");

        if (place.exists() || place.isSymbolicLink())
            continue;

        const int handle =
            ::open(record.getFullPathName().toRawUTF8(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);

        if (handle >= 0)
        {
            ::close(handle);
            return juce::Result::ok();
        }

        if (errno != EEXIST)
            return lastError();
    }
}

/** A lock on the file, which other processes see, in whatever container they run. */
class FileLock final : public InUseMark
{
public:
    explicit FileLock(int openHandle) noexcept
        : handle(openHandle)
    {
    }

    ~FileLock() override { ::close(handle); }

private:
    JUCE_DECLARE_NON_COPYABLE(FileLock)

    const int handle;
};

} // namespace

juce::String messageOf(const std::error_code& error)
{
    return error.message();
}

juce::File reachable(const juce::File& file)
{
    return file;
}

PathKind kindOf(const juce::File& file, std::error_code& error)
{
    const auto status = fs::status(pathOf(file), error);

    if (!fs::exists(status))
    {
        if (!error)
            error = std::make_error_code(std::errc::no_such_file_or_directory);

        return PathKind::nothing;
    }

    if (fs::is_directory(status))
        return PathKind::folder;

    return fs::is_regular_file(status) ? PathKind::file : PathKind::other;
}

bool isLink(const juce::File& file)
{
    std::error_code error;
    return fs::is_symlink(fs::symlink_status(pathOf(file), error));
}

juce::File endOfLink(const juce::File& link)
{
    std::error_code error;
    const auto path = fs::canonical(pathOf(link), error);
    return error ? juce::File() : juce::File::createFileWithoutCheckingPath(textOf(path));
}

bool isSamePlace(const juce::File& one, const juce::File& other)
{
    std::error_code error;
    return one == other || fs::equivalent(pathOf(one), pathOf(other), error);
}

std::vector<FolderEntry> entriesOf(const juce::File& folder, std::error_code& error)
{
    std::vector<FolderEntry> entries;

    for (fs::directory_iterator entry(pathOf(folder), error), end; !error && entry != end;
         entry.increment(error))
    {
        std::error_code ignored;
        auto kind = PathKind::other;

        if (entry->is_regular_file(ignored))
            kind = PathKind::file;
        else if (entry->is_directory(ignored))
            kind = PathKind::folder;
        else if (!entry->exists(ignored))
            kind = PathKind::nothing;

        entries.push_back({textOf(entry->path().filename()), kind});
    }

    return entries;
}

std::error_code renameInOneStep(const juce::File& from, const juce::File& to)
{
    std::error_code error;
    fs::rename(pathOf(from), pathOf(to), error);
    return error;
}

std::error_code removeAll(const juce::File& file)
{
    std::error_code error;
    fs::remove_all(pathOf(file), error);
    return error;
}

void copyMode(const juce::File& from, const juce::File& to)
{
    std::error_code error;
    const auto status = fs::status(pathOf(from), error);

    if (!error)
        fs::permissions(pathOf(to), status.permissions(), error);
}

bool waitWhileHeld(const juce::File&)
{
    return false;
}

juce::String lockNameOf(const juce::File& file)
{
    return file.getFullPathName() + ".lock";
}

juce::Result moveToTrash(const juce::File& file)
{
    // JUCE's own `moveToTrash` looks at fixed places and writes no record, without which nothing can be
    // restored.
    const auto dataHome = userPlaces().dataFolder.getParentDirectory().getParentDirectory();
    const auto trash = dataHome.getChildFile("Trash");
    const auto files = trash.getChildFile("files");
    const auto records = trash.getChildFile("info");

    // A new user has none before something is thrown away.
    if (const auto result = createFolder(dataHome); result.failed())
        return result;

    for (const auto& folder : {trash, files, records})
        if (const auto result = createPrivateFolder(folder); result.failed())
            return result;

    juce::File place;
    juce::File record;

    if (const auto result = reserveInTrash(file.getFileName(), files, records, place, record);
        result.failed())
        return result;

    const auto path = juce::URL::addEscapeChars(file.getFullPathName(), false).replace("%2F", "/");
    const auto text = "[Trash Info]\nPath=" + path +
                      "\nDeletionDate=" + juce::Time::getCurrentTime().formatted("%Y-%m-%dT%H:%M:%S") + "\n";
    auto result = replaceFile(record, juce::MemoryBlock(text.toRawUTF8(), text.getNumBytesAsUTF8()));

    if (result.wasOk())
        result = carryOver(file, place);

    // What could be copied but not removed stays in the trash as well.
    if (result.failed() && !place.exists())
        record.deleteFile();

    return result;
}

void syncFolder(const juce::File& folder)
{
    const int handle = ::open(folder.getFullPathName().toRawUTF8(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);

    if (handle < 0)
        return;

    // Some file systems can't; the file itself is on the disk either way.
    juce::ignoreUnused(fsync(handle));
    ::close(handle);
}

std::unique_ptr<InUseMark> createMarkedFile(const juce::File& file, std::error_code& error)
{
    constexpr mode_t mode = 0644;
    const int handle =
        ::open(file.getFullPathName().toRawUTF8(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);

    if (handle < 0)
    {
        error = std::error_code(errno, std::generic_category());
        return nullptr;
    }

    auto mark = std::make_unique<FileLock>(handle);
    struct stat status = {};

    // Somebody may have taken the file for a left-over before it was locked. Where there are no locks, nobody
    // removes anything.
    if (flock(handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        error = std::make_error_code(std::errc::resource_unavailable_try_again);
    else if (fstat(handle, &status) != 0 || status.st_nlink == 0)
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    else
        return mark;

    return nullptr;
}

std::unique_ptr<InUseMark> claimAbandoned(const juce::File& file)
{
    const int handle =
        ::open(file.getFullPathName().toRawUTF8(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);

    if (handle < 0)
        return nullptr;

    auto mark = std::make_unique<FileLock>(handle);
    return flock(handle, LOCK_EX | LOCK_NB) == 0 ? std::move(mark) : nullptr;
}

} // namespace quorel

#endif
