// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ScratchFolder.h"

#if JUCE_LINUX
#include <sched.h>
#include <sys/mount.h>
#endif

namespace quorel::test
{

/** A disk of its own that only this process and those that it starts see, small enough to fill up. It takes
    the right to mount: without it `isThere` is false, and a test has to skip what it needs it for. */
class SmallDisk
{
public:
    explicit SmallDisk(int kibibytes)
    {
#if JUCE_LINUX
        const auto options = "size=" + juce::String(kibibytes) + "k";
        mounted = unshare(CLONE_NEWNS) == 0 &&
                  mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                  mount("tmpfs", place(), "tmpfs", 0, options.toRawUTF8()) == 0;
#else
        juce::ignoreUnused(kibibytes);
#endif
    }

    ~SmallDisk()
    {
#if JUCE_LINUX
        if (mounted)
            umount2(place(), MNT_DETACH);
#endif
    }

    bool isThere() const noexcept
    {
        return mounted;
    }

    juce::File child(const juce::String& relativePath) const
    {
        return scratch.child(relativePath);
    }

    /** Leaves no more than some bytes free, by a file called "ballast". */
    void fill(juce::int64 bytesLeft) const
    {
        child("ballast").deleteFile();
        const auto size = juce::jmax<juce::int64>(0, scratch.path().getBytesFreeOnVolume() - bytesLeft);
        child("ballast").replaceWithData(juce::MemoryBlock(static_cast<size_t>(size), true).getData(),
                                         static_cast<size_t>(size));
    }

private:
    JUCE_DECLARE_NON_COPYABLE(SmallDisk)

    const char* place() const
    {
        return scratch.path().getFullPathName().toRawUTF8();
    }

    ScratchFolder scratch;
    bool mounted = false;
};

} // namespace quorel::test
