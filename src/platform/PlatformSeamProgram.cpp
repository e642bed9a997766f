// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PlatformSeamProgram.h"

#if !JUCE_WINDOWS
#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace quorel
{

#if JUCE_WINDOWS

void removeFilesAtSignals()
{
}

FileUntilSignal::FileUntilSignal(const juce::File&)
{
}

FileUntilSignal::~FileUntilSignal() = default;

void catchTermination()
{
}

bool isTerminationAsked()
{
    return false;
}

void keepStandardStreams()
{
}

bool hasUserPlaces()
{
    return true;
}

#else

namespace
{
/** A sound file, and the notes of instruments: those that open others in the message loop are rare, and hardly go
    this deep. */
constexpr std::size_t mostFiles = 8;
std::array<std::atomic<const char*>, mostFiles> filesToRemove;
static_assert(std::atomic<const char*>::is_always_lock_free, "the signal handler reads them");

/** The main thread runs this, as it blocks no signals; it is also the one that changes the table. */
void removeFilesAndEnd(int signalNumber)
{
    for (const auto& file : filesToRemove)
        if (const char* path = file.load())
            ::unlink(path);

    // It isn't handled any more: as soon as this returns it ends the process.
    ::raise(signalNumber);
}

volatile std::sig_atomic_t terminationAsked = 0;

/** Handles once, in this way, the signals by which users end a program, but for those that are switched off. */
void handleEnds(void (*handler)(int))
{
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP})
    {
        struct sigaction action = {};

        if (sigaction(signalNumber, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
            continue;

        action = {};
        action.sa_handler = handler;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signalNumber, &action, nullptr);
    }
}

bool isAbsolute(const char* variable)
{
    return juce::SystemStats::getEnvironmentVariable(variable, {}).startsWithChar('/');
}
} // namespace

void removeFilesAtSignals()
{
    handleEnds(removeFilesAndEnd);
}

void catchTermination()
{
    handleEnds([](int) { terminationAsked = 1; });
}

bool isTerminationAsked()
{
    return terminationAsked != 0;
}

FileUntilSignal::FileUntilSignal(const juce::File& file)
    : path(file.getFullPathName().toStdString())
{
    for (auto& place : filesToRemove)
    {
        const char* none = nullptr;

        if (place.compare_exchange_strong(none, path.c_str()))
            return;
    }
}

FileUntilSignal::~FileUntilSignal()
{
    for (auto& place : filesToRemove)
    {
        const char* own = path.c_str();
        place.compare_exchange_strong(own, nullptr);
    }
}

void keepStandardStreams()
{
    // What is opened takes the lowest number that is free; for reading alone, so that writing to it fails.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) == -1)
            juce::ignoreUnused(::open("/dev/null", O_RDONLY));
}

bool hasUserPlaces()
{
    return juce::File::getSpecialLocation(juce::File::userHomeDirectory) != juce::File() ||
           (isAbsolute("XDG_CONFIG_HOME") && isAbsolute("XDG_DATA_HOME"));
}

#endif

} // namespace quorel
