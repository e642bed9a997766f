// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PlatformSeam.h"

#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/UserPaths.h"

#include <cerrno>
#include <cstdlib>
#include <new>

#if JUCE_WINDOWS
#include <cwchar>
#include <io.h>
#include <vector>
#include <windows.h>
#else
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace quorel
{

namespace
{
constexpr const char* makerFolder = "Ostrand";
constexpr const char* productFolder = "Quorel";
constexpr const char* storeFileName = "Registry.xml";

UserPlaces placesUnder(const juce::File& settingsHome, const juce::File& dataHome)
{
    return {settingsHome.getChildFile(makerFolder),
            dataHome.getChildFile(makerFolder).getChildFile(productFolder)};
}

#if JUCE_WINDOWS

constexpr const char* prefixVariable = "OSTRAND_HOME";

/** The folder that stands in for the user's own, if there is one. What isn't an absolute path doesn't count. */
juce::File prefixOfUser()
{
    return fileOfSetting(juce::SystemStats::getEnvironmentVariable(prefixVariable, {}));
}

/** Strings of any length. What another program has stored as text with variables in it is read with their
    values. */
class RegistryUserStore final : public UserStore
{
public:
    juce::String read(const juce::String& key, const juce::String& name) const override
    {
        constexpr int mostTries = 10;
        std::vector<wchar_t> text(256);

        // It may grow between the call that tells its size and the next one.
        for (int i = 0; i < mostTries; ++i)
        {
            auto numBytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
            const auto status =
                RegGetValueW(HKEY_CURRENT_USER, key.toWideCharPointer(), name.toWideCharPointer(),
                             RRF_RT_REG_SZ, nullptr, text.data(), &numBytes);

            if (status == ERROR_SUCCESS)
                return juce::String(text.data());

            if (status != ERROR_MORE_DATA)
                break;

            text.resize(juce::jmax(text.size() * 2, numBytes / sizeof(wchar_t) + 1));
        }

        return {};
    }

    bool write(const juce::String& key, const juce::String& name, const juce::String& value) override
    {
        if (value.isEmpty())
            return remove(key, name);

        const auto* text = value.toWideCharPointer();
        const auto numBytes = (std::wcslen(text) + 1) * sizeof(wchar_t);
        return RegSetKeyValueW(HKEY_CURRENT_USER, key.toWideCharPointer(), name.toWideCharPointer(), REG_SZ,
                               text, static_cast<DWORD>(numBytes)) == ERROR_SUCCESS;
    }

private:
    static bool remove(const juce::String& key, const juce::String& name)
    {
        const auto status =
            RegDeleteKeyValueW(HKEY_CURRENT_USER, key.toWideCharPointer(), name.toWideCharPointer());

        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND)
            return false;

        // The key at the top is everybody's.
        for (auto path = key; path.containsChar('\\') && removeIfEmpty(path);)
            path = path.upToLastOccurrenceOf("\\", false, false);

        return true;
    }

    /** A key that holds nothing: the system itself refuses only where it holds other keys. */
    static bool removeIfEmpty(const juce::String& key)
    {
        HKEY handle = nullptr;
        DWORD numValues = 0;

        if (RegOpenKeyExW(HKEY_CURRENT_USER, key.toWideCharPointer(), 0, KEY_QUERY_VALUE, &handle) !=
            ERROR_SUCCESS)
            return false;

        const auto asked = RegQueryInfoKeyW(handle, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                            &numValues, nullptr, nullptr, nullptr, nullptr);
        RegCloseKey(handle);
        return asked == ERROR_SUCCESS && numValues == 0 &&
               RegDeleteKeyW(HKEY_CURRENT_USER, key.toWideCharPointer()) == ERROR_SUCCESS;
    }
};

#else

/** A base directory by freedesktop.org's rules: a variable that isn't an absolute path doesn't count. */
juce::File baseDirectory(const char* variable, const char* defaultBelowHome)
{
    const auto path = juce::SystemStats::getEnvironmentVariable(variable, {});
    if (path.startsWithChar('/'))
        return juce::File(path);
    return juce::File::getSpecialLocation(juce::File::userHomeDirectory).getChildFile(defaultBelowHome);
}

juce::Result lastError()
{
    return juce::Result::fail(std::error_code(errno, std::generic_category()).message());
}

/** Moves a file or folder, also to another disk, where it has to be copied. */
juce::Result carryOver(const juce::File& file, const juce::File& place)
{
    namespace fs = std::filesystem;
    std::error_code error;
    fs::rename(pathOf(file), pathOf(place), error);

    if (error != std::errc::cross_device_link)
        return error ? juce::Result::fail(error.message()) : juce::Result::ok();

    const auto copied = copyTree(file, place);
    syncFolder(place.getParentDirectory());
    return copied.failed() ? copied : deleteForGood(file);
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

#endif
} // namespace

UserPlaces userPlaces()
{
#if JUCE_WINDOWS
    if (const auto prefix = prefixOfUser(); prefix != juce::File())
        return userPlaces(prefix);

    const auto home = juce::File::getSpecialLocation(juce::File::userApplicationDataDirectory);
    return placesUnder(home, home);
#else
    return placesUnder(baseDirectory("XDG_CONFIG_HOME", ".config"),
                       baseDirectory("XDG_DATA_HOME", ".local/share"));
#endif
}

UserPlaces userPlaces(const juce::File& prefix)
{
    return placesUnder(prefix.getChildFile("config"), prefix.getChildFile("data"));
}

juce::String prefixVariables()
{
#if JUCE_WINDOWS
    return juce::String(prefixVariable) + " set to DIR";
#else
    return "XDG_CONFIG_HOME and XDG_DATA_HOME there";
#endif
}

void adoptUserPlaces(const juce::File& prefix)
{
#if JUCE_WINDOWS
    SetEnvironmentVariableW(juce::String(prefixVariable).toWideCharPointer(),
                            prefix.getFullPathName().toWideCharPointer());
#else
    setenv("XDG_CONFIG_HOME", prefix.getChildFile("config").getFullPathName().toRawUTF8(), 1);
    setenv("XDG_DATA_HOME", prefix.getChildFile("data").getFullPathName().toRawUTF8(), 1);
#endif
}

std::unique_ptr<UserStore> makeUserStore()
{
#if JUCE_WINDOWS
    if (prefixOfUser() == juce::File())
        return std::make_unique<RegistryUserStore>();
#endif
    return makeUserStore(userPlaces());
}

std::unique_ptr<UserStore> makeUserStore(const UserPlaces& places)
{
    return std::make_unique<FileUserStore>(places.settingsFolder.getChildFile(storeFileName));
}

juce::String pluginFileEnding()
{
#if JUCE_WINDOWS
    return ".dll";
#else
    return ".so";
#endif
}

#if JUCE_WINDOWS

juce::Result moveToTrash(const juce::File& file)
{
    return file.exists() && file.moveToTrash() ? juce::Result::ok()
                                               : juce::Result::fail("the recycle bin doesn't take it");
}

void syncFolder(const juce::File&)
{
    // Moves are written through by the system.
}

// A file that is open can't be deleted here: it needs no other mark.
std::unique_ptr<InUseMark> createMarkedFile(const juce::File& file, std::error_code& error)
{
    if (file.create().wasOk())
        return std::make_unique<InUseMark>();

    error = std::make_error_code(std::errc::permission_denied);
    return nullptr;
}

std::unique_ptr<InUseMark> claimAbandoned(const juce::File& file)
{
    return file.isDirectory() ? nullptr : std::make_unique<InUseMark>();
}

#else

juce::Result moveToTrash(const juce::File& file)
{
    // JUCE's own `moveToTrash` looks at fixed places and writes no record, without which nothing can be
    // restored.
    const auto trash = baseDirectory("XDG_DATA_HOME", ".local/share").getChildFile("Trash");
    const auto files = trash.getChildFile("files");
    const auto records = trash.getChildFile("info");

    if (!trash.isDirectory())
        return juce::Result::fail("there is no trash");

    for (const auto& folder : {files, records})
        if (const auto result = folder.createDirectory(); result.failed())
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

#endif

#if JUCE_WINDOWS

// Large blocks of this heap come from the system one by one.
void* takeEmptyPages(std::size_t bytes)
{
    void* pages = std::calloc(1, bytes);

    if (pages == nullptr)
        throw std::bad_alloc();

    return pages;
}

void returnEmptyPages(void* pages, std::size_t) noexcept
{
    std::free(pages);
}

#else

void* takeEmptyPages(std::size_t bytes)
{
    void* pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);

    if (pages == MAP_FAILED)
        throw std::bad_alloc();

    return pages;
}

void returnEmptyPages(void* pages, std::size_t bytes) noexcept
{
    munmap(pages, bytes);
}

#endif

namespace
{
/** When the process was started, in words that no other process of this number has; empty if it isn't
    there. */
#if JUCE_WINDOWS
juce::String processStart(juce::int64 number)
{
    const auto process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(number));
    FILETIME created{};
    FILETIME exited{};
    FILETIME kernel{};
    FILETIME user{};
    DWORD exitCode = 0;
    const bool isThere = process != nullptr && GetExitCodeProcess(process, &exitCode) != 0 &&
                         exitCode == STILL_ACTIVE &&
                         GetProcessTimes(process, &created, &exited, &kernel, &user) != 0;

    if (process != nullptr)
        CloseHandle(process);

    return isThere ? juce::String(created.dwHighDateTime) + "." + juce::String(created.dwLowDateTime)
                   : juce::String();
}

juce::int64 ownProcessNumber()
{
    return static_cast<juce::int64>(GetCurrentProcessId());
}
#else
juce::String processStart(juce::int64 number)
{
    std::ifstream file("/proc/" + std::to_string(number) + "/stat");
    std::string status;
    std::getline(file, status);
    // The second field, a name in brackets, may hold anything, blanks and brackets too.
    const auto name = status.rfind(')');

    if (name == std::string::npos)
        return {};

    // The state, a letter, is the third field; the start, in clock ticks since the machine's, the 22nd.
    constexpr int fieldsBeforeStart = 19;
    std::istringstream fields(status.substr(name + 1));
    std::string field;
    fields >> field;

    if (field == "Z" || field == "X")
        return {};

    for (int i = 0; i < fieldsBeforeStart; ++i)
        fields >> field;

    std::ifstream bootFile("/proc/sys/kernel/random/boot_id");
    std::string boot;
    bootFile >> boot;
    return field + "." + boot;
}

juce::int64 ownProcessNumber()
{
    return getpid();
}
#endif
} // namespace

juce::String processIdentity()
{
    return juce::String(ownProcessNumber()) + " " + processStart(ownProcessNumber());
}

bool isProcessRunning(const juce::String& identity)
{
    const auto start = processStart(identity.getLargeIntValue());
    return start.isNotEmpty() && identity.fromFirstOccurrenceOf(" ", false, false) == start;
}

#if JUCE_WINDOWS
void catchTermination()
{
}

bool isTerminationAsked()
{
    return false;
}
#else
namespace
{
volatile std::sig_atomic_t terminationAsked = 0;
} // namespace

void catchTermination()
{
    struct sigaction action = {};
    action.sa_handler = [](int) { terminationAsked = 1; };
    sigaction(SIGTERM, &action, nullptr);
}

bool isTerminationAsked()
{
    return terminationAsked != 0;
}
#endif

juce::String versionText()
{
#if JUCE_WINDOWS
    return "Windows 64 Bits version";
#else
    return "Linux 64 Bits version";
#endif
}

bool standardErrorIsTerminal()
{
    constexpr int standardError = 2;
#if JUCE_WINDOWS
    return _isatty(standardError) != 0;
#else
    return isatty(standardError) != 0;
#endif
}

} // namespace quorel
