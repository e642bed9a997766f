// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PlatformSeam.h"

#include "platform/UserPaths.h"

#include <cstdlib>
#include <new>

#if JUCE_WINDOWS
#include <cwchar>
#include <fcntl.h>
#include <io.h>
#include <vector>
#include <windows.h>
// After windows.h.
#include <shellapi.h>
#else
#include <fstream>
#include <sstream>
#include <string>
#include <sys/mman.h>
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
    return "XDG_CONFIG_HOME=DIR/config and XDG_DATA_HOME=DIR/data";
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

juce::String versionText()
{
#if JUCE_WINDOWS
    return "Windows 64 Bits version";
#else
    return "Linux 64 Bits version";
#endif
}

#if JUCE_WINDOWS
std::vector<std::string> programArguments(int, const char* const*)
{
    int number = 0;
    auto* const words = CommandLineToArgvW(GetCommandLineW(), &number);
    std::vector<std::string> arguments;

    for (int i = 1; words != nullptr && i < number; ++i)
        arguments.push_back(juce::String(words[i]).toStdString());

    LocalFree(words);
    return arguments;
}

Utf8Console::Utf8Console()
    : pageBefore(GetConsoleOutputCP())
{
    SetConsoleOutputCP(CP_UTF8);
}

Utf8Console::~Utf8Console()
{
    SetConsoleOutputCP(pageBefore);
}
#else
std::vector<std::string> programArguments(int argc, const char* const* argv)
{
    return {argv + juce::jmin(1, argc), argv + argc};
}

Utf8Console::Utf8Console()
    : pageBefore(0)
{
}

Utf8Console::~Utf8Console()
{
    juce::ignoreUnused(pageBefore);
}
#endif

void keepBytesOfStandardOutput()
{
#if JUCE_WINDOWS
    constexpr int standardOutput = 1;
    _setmode(standardOutput, _O_BINARY);
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
