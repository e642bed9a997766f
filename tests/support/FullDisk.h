// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#if !JUCE_WINDOWS
#include <csignal>
#include <sys/resource.h>
#endif

namespace quorel::test
{

/** While it lives, this process can't make a file grow beyond some bytes, as on a disk that is nearly full. Windows has
    no such limit: `isThere` is false. */
class FullDisk
{
public:
#if JUCE_WINDOWS
    explicit FullDisk(int)
    {
    }

    bool isThere() const noexcept
    {
        return false;
    }
#else
    explicit FullDisk(rlim_t bytes)
        : handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit now{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &now);
    }

    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }

    bool isThere() const noexcept
    {
        return true;
    }

private:
    rlimit before{};
    void (*handler)(int);
#endif

private:
    JUCE_DECLARE_NON_COPYABLE(FullDisk)
};

} // namespace quorel::test
