// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace quorel::test
{

/** While it lives, the leak checker ignores what is allocated: for code that isn't ours and never frees its
    memory, such as a third-party instrument. */
class ForeignLeaks
{
public:
#if defined(__SANITIZE_ADDRESS__)
    ForeignLeaks()
    {
        __lsan_disable();
    }

    ~ForeignLeaks()
    {
        __lsan_enable();
    }
#else
    ForeignLeaks()
    {
    }

    ~ForeignLeaks()
    {
    }
#endif
    ForeignLeaks(const ForeignLeaks&) = delete;
    ForeignLeaks& operator=(const ForeignLeaks&) = delete;
};

} // namespace quorel::test
