// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostSeam.h"

#include <chrono>
#include <iterator>
#include <stdexcept>
#include <thread>

#if defined(_WIN32)
#include <cstdlib>
#include <windows.h>
// After windows.h.
#include <psapi.h>
#include <tlhelp32.h>
#else
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace quorel::test
{

#if defined(_WIN32)

void* openLibrary(const fs::path& file)
{
    // A path with slashes would be looked for in the system's folders.
    return LoadLibraryW(fs::absolute(file).make_preferred().c_str());
}

void* findInLibrary(void* library, const char* name)
{
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void closeLibrary(void* library)
{
    FreeLibrary(static_cast<HMODULE>(library));
}

fs::path libraryOf(const void* address)
{
    HMODULE module = nullptr;
    wchar_t path[1024]{};
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCWSTR>(address), &module);
    GetModuleFileNameW(module, path, static_cast<DWORD>(std::size(path)));
    return path;
}

void letPluginsRun(int millis)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(millis);

    for (;;)
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0)
        {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }

        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();

        if (left <= 0)
            return;

        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(left), QS_ALLINPUT);
    }
}

fs::path makeScratchFolder()
{
    const auto start = std::chrono::steady_clock::now().time_since_epoch().count();

    for (int number = 0;; ++number)
    {
        const auto folder =
            fs::temp_directory_path() /
            ("quorel-user-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(start + number));
        if (fs::create_directory(folder))
            return folder;
    }
}

void adoptUser(const fs::path& prefix)
{
    // For the libraries that have read their variables, and for those yet to come.
    if (_wputenv_s(L"OSTRAND_HOME", prefix.c_str()) != 0)
        throw std::runtime_error("cannot set OSTRAND_HOME");
}

void leaveUsersScreen()
{
}

Holdings::Holdings()
{
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    files = handles;

    const auto snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof(entry);
    for (auto found = Thread32First(snapshot, &entry); found != FALSE; found = Thread32Next(snapshot, &entry))
        threads += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    CloseHandle(snapshot);

    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
    kilobytes = static_cast<long long>(memory.WorkingSetSize / 1024);
}

std::string inShell(const std::string& commandLine)
{
    // The shell removes the first quote and the last.
    return '"' + commandLine + '"';
}

#else

void* openLibrary(const fs::path& file)
{
    return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* findInLibrary(void* library, const char* name)
{
    return dlsym(library, name);
}

void closeLibrary(void* library)
{
    dlclose(library);
}

fs::path libraryOf(const void* address)
{
    Dl_info info{};
    dladdr(address, &info);
    return info.dli_fname;
}

void letPluginsRun(int millis)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(millis));
}

fs::path makeScratchFolder()
{
    auto pattern = (fs::temp_directory_path() / "quorel-user-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("cannot create " + pattern);
    return pattern;
}

void adoptUser(const fs::path& prefix)
{
    setenv("XDG_CONFIG_HOME", (prefix / "config").c_str(), 1);
    setenv("XDG_DATA_HOME", (prefix / "data").c_str(), 1);
}

void leaveUsersScreen()
{
    // With none set the plug-in would still try ":0.0": name one that can't exist.
    const auto* display = std::getenv("QUOREL_TEST_DISPLAY");
    setenv("DISPLAY", display != nullptr ? display : ":9999", 1);
}

Holdings::Holdings()
{
    const auto entries = [](const char* folder)
    { return std::distance(fs::directory_iterator(folder), fs::directory_iterator()); };
    files = entries("/proc/self/fd");
    threads = entries("/proc/self/task");

    long long total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    kilobytes = resident * sysconf(_SC_PAGESIZE) / 1024;
}

std::string inShell(const std::string& commandLine)
{
    return commandLine;
}

#endif

} // namespace quorel::test
