// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PlatformSeamFiles.h"

#if JUCE_WINDOWS

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <cwchar>
#include <initializer_list>

#include <windows.h>

#include <shellapi.h>

namespace quorel
{

namespace
{
/** The system takes 260 characters with the end mark, 248 for a folder. This leaves room for the name of a file
    that is added to a folder's path. */
constexpr int longestPlainPath = 200;
constexpr const char* longPathStart = "\\\\?\\";
// The headers have these for programs alone that don't run on older systems.
constexpr DWORD replaceIfThere = 1;
constexpr DWORD likePosix = 2;
constexpr auto renameWithFlags = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

class Handle
{
public:
    explicit Handle(HANDLE systemHandle) noexcept
        : handle(systemHandle)
    {
    }

    ~Handle()
    {
        if (isOpen())
            CloseHandle(handle);
    }

    bool isOpen() const noexcept { return handle != INVALID_HANDLE_VALUE; }

    HANDLE get() const noexcept { return handle; }

private:
    JUCE_DECLARE_NON_COPYABLE(Handle)

    const HANDLE handle;
};

juce::String systemPath(const juce::File& file)
{
    return reachable(file).getFullPathName();
}

HANDLE openExisting(const juce::File& file, DWORD access, DWORD share, DWORD flags)
{
    return CreateFileW(systemPath(file).toWideCharPointer(), access, share, nullptr, OPEN_EXISTING, flags,
                       nullptr);
}

std::error_code errorOf(DWORD code)
{
    switch (code)
    {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return std::make_error_code(std::errc::no_such_file_or_directory);

    case ERROR_NOT_SAME_DEVICE:
        return std::make_error_code(std::errc::cross_device_link);

    default:
        return {static_cast<int>(code), std::system_category()};
    }
}

bool meansHeld(DWORD code) noexcept
{
    return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION || code == ERROR_USER_MAPPED_FILE;
}

/** True where a program has the file, or one of the folder's files, open in whatever way. */
bool isHeld(const juce::File& file)
{
    std::error_code error;

    if (kindOf(file, error) == PathKind::folder)
    {
        const auto entries = entriesOf(file, error);
        return std::any_of(entries.begin(), entries.end(),
                           [&file](const FolderEntry& entry)
                           { return entry.kind == PathKind::file && isHeld(file.getChildFile(entry.name)); });
    }

    return !Handle(openExisting(file, GENERIC_READ, 0, FILE_ATTRIBUTE_NORMAL)).isOpen() &&
           meansHeld(GetLastError());
}

/** The time within which a step is tried again. Programs that look at new files, such as virus scanners, have them
    open for a moment. */
class Patience
{
public:
    /** Calls `step`, which returns an error code of the system, until it works, fails for good, or patience is at
        its end. What is open can't be replaced, which the system calls denied access as well. */
    template <typename Step>
    DWORD tryFor(const std::initializer_list<juce::File>& files, const Step& step) const
    {
        for (;;)
        {
            const DWORD code = step();

            if (code != ERROR_ACCESS_DENIED && code != ERROR_DIR_NOT_EMPTY && !meansHeld(code))
                return code;

            if (juce::Time::getMillisecondCounter() - start > longestMillis)
                return code == ERROR_ACCESS_DENIED && std::any_of(files.begin(), files.end(), isHeld)
                           ? ERROR_SHARING_VIOLATION
                           : code;

            Sleep(pauseMillis);
        }
    }

private:
    static constexpr juce::uint32 longestMillis = 500;
    static constexpr DWORD pauseMillis = 2;

    const juce::uint32 start = juce::Time::getMillisecondCounter();
};

/** The newer of two ways in which Windows renames: it replaces a file also while others read it. Not every disk
    knows it. */
bool renameLikePosix(const juce::File& from, const juce::File& to)
{
    const Handle source(openExisting(from, DELETE | SYNCHRONIZE, shareAll,
                                     FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT));

    if (!source.isOpen())
        return false;

    const auto path = systemPath(to);
    const auto numBytes = std::wcslen(path.toWideCharPointer()) * sizeof(wchar_t);
    constexpr auto nameOffset = offsetof(FILE_RENAME_INFO, FileName);
    juce::HeapBlock<char> buffer(nameOffset + numBytes + sizeof(wchar_t), true);
    auto* info = reinterpret_cast<FILE_RENAME_INFO*>(buffer.get());
    // The flags lie where older systems have a single one.
    constexpr DWORD flags = replaceIfThere | likePosix;
    std::memcpy(buffer.get(), &flags, sizeof(flags));
    info->FileNameLength = static_cast<DWORD>(numBytes);
    std::memcpy(buffer.get() + nameOffset, path.toWideCharPointer(), numBytes);
    return SetFileInformationByHandle(source.get(), renameWithFlags, info,
                                      static_cast<DWORD>(nameOffset + numBytes + sizeof(wchar_t))) != 0;
}

DWORD renameOnce(const juce::File& from, const juce::File& to)
{
    if (renameLikePosix(from, to))
        return ERROR_SUCCESS;

    const auto source = systemPath(from);
    const auto target = systemPath(to);
    return MoveFileExW(source.toWideCharPointer(), target.toWideCharPointer(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
               ? ERROR_SUCCESS
               : GetLastError();
}

DWORD attributesOf(const juce::File& file)
{
    return GetFileAttributesW(systemPath(file).toWideCharPointer());
}

DWORD removeEntry(const juce::File& file)
{
    const auto path = systemPath(file);
    const auto attributes = GetFileAttributesW(path.toWideCharPointer());

    if (attributes == INVALID_FILE_ATTRIBUTES)
        return GetLastError();

    const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const auto remove = [&]
    {
        const bool removed = (isFolder ? RemoveDirectoryW(path.toWideCharPointer())
                                       : DeleteFileW(path.toWideCharPointer())) != 0;
        return removed ? ERROR_SUCCESS : GetLastError();
    };
    auto code = remove();

    // A file's own protection doesn't keep it in a folder that may be written, as on other systems.
    if (code == ERROR_ACCESS_DENIED && (attributes & FILE_ATTRIBUTE_READONLY) != 0 &&
        SetFileAttributesW(path.toWideCharPointer(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY}))
    {
        code = remove();

        if (code != ERROR_SUCCESS)
            SetFileAttributesW(path.toWideCharPointer(), attributes);
    }

    return code;
}

PathKind kindOfAttributes(DWORD attributes) noexcept
{
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? PathKind::folder : PathKind::file;
}

/** A lock on a byte of a file where nothing ever is, which is in nobody's way. */
bool lockForUse(HANDLE handle)
{
    OVERLAPPED place{};
    place.OffsetHigh = 0x40000000;
    return LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0;
}

class HandleMark final : public InUseMark
{
public:
    explicit HandleMark(HANDLE openHandle) noexcept
        : handle(openHandle)
    {
    }

    HANDLE get() const noexcept { return handle.get(); }

private:
    const Handle handle;
};
} // namespace

juce::String messageOf(const std::error_code& error)
{
    if (error.category() != std::system_category())
        return error.message();

    const auto code = static_cast<DWORD>(error.value());

    if (meansHeld(code))
        return "another program has it open";

    wchar_t text[512] = {};
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                   static_cast<DWORD>(std::size(text) - 1), nullptr);
    return juce::String(text).trim();
}

juce::File reachable(const juce::File& file)
{
    const auto& path = file.getFullPathName();

    if (path.length() <= longestPlainPath || path.startsWith(longPathStart))
        return file;

    return juce::File::createFileWithoutCheckingPath(
        longPathStart + (path.startsWith("\\\\") ? "UNC" + path.substring(1) : path));
}

PathKind kindOf(const juce::File& file, std::error_code& error)
{
    error.clear();
    // Neither reading nor writing, so that nobody is in the way.
    const Handle opened(openExisting(file, FILE_READ_ATTRIBUTES, shareAll, FILE_FLAG_BACKUP_SEMANTICS));

    if (!opened.isOpen())
    {
        error = errorOf(GetLastError());
        return PathKind::nothing;
    }

    if (GetFileType(opened.get()) != FILE_TYPE_DISK)
        return PathKind::other;

    BY_HANDLE_FILE_INFORMATION info{};

    if (GetFileInformationByHandle(opened.get(), &info) == 0)
    {
        error = errorOf(GetLastError());
        return PathKind::nothing;
    }

    return kindOfAttributes(info.dwFileAttributes);
}

bool isLink(const juce::File& file)
{
    WIN32_FIND_DATAW data{};
    const auto search = FindFirstFileW(systemPath(file).toWideCharPointer(), &data);

    if (search == INVALID_HANDLE_VALUE)
        return false;

    FindClose(search);
    // Other marks of this kind are on files that lie in a cloud, for one.
    return (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (data.dwReserved0 == IO_REPARSE_TAG_SYMLINK || data.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

juce::File endOfLink(const juce::File& link)
{
    const Handle opened(openExisting(link, FILE_READ_ATTRIBUTES, shareAll, FILE_FLAG_BACKUP_SEMANTICS));
    constexpr DWORD longestPath = 32768;
    juce::HeapBlock<wchar_t> buffer(longestPath, true);

    if (!opened.isOpen() ||
        GetFinalPathNameByHandleW(opened.get(), buffer, longestPath - 1, VOLUME_NAME_DOS) == 0)
        return {};

    auto path = juce::String(buffer.get());

    if (path.startsWith("\\\\?\\UNC\\"))
        path = "\\" + path.substring(7);
    else if (path.startsWith(longPathStart))
        path = path.substring(4);

    return reachable(juce::File::createFileWithoutCheckingPath(path));
}

bool isSamePlace(const juce::File& one, const juce::File& other)
{
    if (one == other)
        return true;

    const Handle first(openExisting(one, FILE_READ_ATTRIBUTES, shareAll, FILE_FLAG_BACKUP_SEMANTICS));
    const Handle second(openExisting(other, FILE_READ_ATTRIBUTES, shareAll, FILE_FLAG_BACKUP_SEMANTICS));
    BY_HANDLE_FILE_INFORMATION a{};
    BY_HANDLE_FILE_INFORMATION b{};
    return first.isOpen() && second.isOpen() && GetFileInformationByHandle(first.get(), &a) != 0 &&
           GetFileInformationByHandle(second.get(), &b) != 0 &&
           a.dwVolumeSerialNumber == b.dwVolumeSerialNumber && a.nFileIndexHigh == b.nFileIndexHigh &&
           a.nFileIndexLow == b.nFileIndexLow;
}

std::vector<FolderEntry> entriesOf(const juce::File& folder, std::error_code& error)
{
    std::vector<FolderEntry> entries;
    error.clear();
    const auto pattern = systemPath(folder) + "\\*";
    WIN32_FIND_DATAW data{};
    const auto search = FindFirstFileW(pattern.toWideCharPointer(), &data);

    if (search == INVALID_HANDLE_VALUE)
    {
        error = errorOf(GetLastError());
        return entries;
    }

    do
    {
        const juce::String name(data.cFileName);

        if (name == "." || name == "..")
            continue;

        auto kind = kindOfAttributes(data.dwFileAttributes);

        if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        {
            std::error_code ignored;
            kind = kindOf(folder.getChildFile(name), ignored);
        }

        entries.push_back({name, kind});
    } while (FindNextFileW(search, &data));

    if (const auto code = GetLastError(); code != ERROR_NO_MORE_FILES)
        error = errorOf(code);

    FindClose(search);
    return entries;
}

std::error_code renameInOneStep(const juce::File& from, const juce::File& to)
{
    const auto code = Patience().tryFor({from, to}, [&] { return renameOnce(from, to); });
    return code == ERROR_SUCCESS ? std::error_code() : errorOf(code);
}

namespace
{
std::error_code removeTree(const juce::File& file, const Patience& patience)
{
    const auto attributes = attributesOf(file);

    if (attributes == INVALID_FILE_ATTRIBUTES)
    {
        const auto error = errorOf(GetLastError());
        return error == std::errc::no_such_file_or_directory ? std::error_code() : error;
    }

    std::error_code failed;

    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !isLink(file))
        for (const auto& entry : entriesOf(file, failed))
            if (const auto error = removeTree(file.getChildFile(entry.name), patience); error && !failed)
                failed = error;

    if (failed)
        return failed;

    const auto code = patience.tryFor({file}, [&file] { return removeEntry(file); });
    return code == ERROR_SUCCESS || code == ERROR_FILE_NOT_FOUND ? std::error_code() : errorOf(code);
}
} // namespace

std::error_code removeAll(const juce::File& file)
{
    return removeTree(file, {});
}

void copyMode(const juce::File& from, const juce::File& to)
{
    constexpr DWORD kept = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                           FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

    if (const auto attributes = attributesOf(from);
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & kept) != 0)
        SetFileAttributesW(systemPath(to).toWideCharPointer(), attributes & kept);
}

bool waitWhileHeld(const juce::File& file)
{
    bool wasHeld = false;
    const auto code = Patience().tryFor(
        {},
        [&]
        {
            const Handle opened(openExisting(file, GENERIC_READ, shareAll, FILE_ATTRIBUTE_NORMAL));
            const DWORD result = opened.isOpen() ? ERROR_SUCCESS : GetLastError();
            wasHeld = wasHeld || meansHeld(result);
            return wasHeld ? result : ERROR_SUCCESS;
        });
    return wasHeld && code == ERROR_SUCCESS;
}

juce::String lockNameOf(const juce::File& file)
{
    // Such a name holds 260 characters and no backslash, and the case of a path doesn't count.
    return "Ostrand-" + juce::String::toHexString(file.getFullPathName().toLowerCase().hashCode64());
}

juce::Result moveToTrash(const juce::File& file)
{
    const juce::String refusal("the recycle bin doesn't take it");
    auto path = file.getFullPathName();

    if (path.startsWith(longPathStart) && !path.startsWith("\\\\?\\UNC"))
        path = path.substring(4);

    wchar_t names[MAX_PATH + 2] = {};
    const auto root = path.substring(0, 3);
    SHQUERYRBINFO bin{};
    bin.cbSize = sizeof(bin);

    // Drives of a network and sticks have no recycle bin: there the shell deletes for good.
    if (!file.exists() || path.length() >= MAX_PATH || path.startsWith("\\\\") ||
        GetDriveTypeW(root.toWideCharPointer()) != DRIVE_FIXED ||
        FAILED(SHQueryRecycleBinW(root.toWideCharPointer(), &bin)))
        return juce::Result::fail(refusal);

    path.copyToUTF16(names, sizeof(names) - sizeof(wchar_t));
    SHFILEOPSTRUCTW operation{};
    operation.wFunc = FO_DELETE;
    operation.pFrom = names;
    // What wouldn't fit into the bin isn't deleted without a question of the system's own.
    operation.fFlags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT | FOF_WANTNUKEWARNING;
    const auto code = SHFileOperationW(&operation);
    return code == 0 && operation.fAnyOperationsAborted == 0 && !file.exists() ? juce::Result::ok()
                                                                               : juce::Result::fail(refusal);
}

void syncFolder(const juce::File&)
{
    // The file system's journal does that.
}

std::unique_ptr<InUseMark> createMarkedFile(const juce::File& file, std::error_code& error)
{
    error.clear();
    auto mark =
        std::make_unique<HandleMark>(CreateFileW(systemPath(file).toWideCharPointer(), GENERIC_READ, shareAll,
                                                 nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));

    if (mark->get() == INVALID_HANDLE_VALUE)
    {
        error = errorOf(GetLastError());
        return nullptr;
    }

    FILE_STANDARD_INFO info{};

    // Somebody may have taken the file for a left-over before it was locked. Where there are no locks, nobody
    // removes anything.
    if (!lockForUse(mark->get()) && meansHeld(GetLastError()))
        error = std::make_error_code(std::errc::resource_unavailable_try_again);
    else if (GetFileInformationByHandleEx(mark->get(), FileStandardInfo, &info, sizeof(info)) != 0 &&
             info.DeletePending != 0)
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    else
        return mark;

    return nullptr;
}

std::unique_ptr<InUseMark> claimAbandoned(const juce::File& file)
{
    const auto attributes = attributesOf(file);

    if (attributes == INVALID_FILE_ATTRIBUTES)
        return nullptr;

    if (kindOfAttributes(attributes) == PathKind::folder)
    {
        // A folder can't be locked. Only one program at a time can have it open for writing without letting others
        // do so; what is in it isn't concerned.
        auto mark = std::make_unique<HandleMark>(
            openExisting(file, FILE_LIST_DIRECTORY | FILE_ADD_FILE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                         FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT));
        return mark->get() != INVALID_HANDLE_VALUE ? std::move(mark) : nullptr;
    }

    auto mark = std::make_unique<HandleMark>(
        openExisting(file, GENERIC_READ, shareAll, FILE_FLAG_OPEN_REPARSE_POINT));
    return mark->get() != INVALID_HANDLE_VALUE && lockForUse(mark->get()) ? std::move(mark) : nullptr;
}

} // namespace quorel

#endif
