// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <malloc.h>

namespace quorel::test
{

/** The bytes that this process has taken from the heap and not given back. */
inline std::size_t heldMemory()
{
#if defined(_WIN32)
    std::size_t bytes = 0;
    _HEAPINFO entry{};

    while (_heapwalk(&entry) == _HEAPOK)
        if (entry._useflag == _USEDENTRY)
            bytes += entry._size;

    return bytes;
#else
    return mallinfo2().uordblks;
#endif
}

} // namespace quorel::test
