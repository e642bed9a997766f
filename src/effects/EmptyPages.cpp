// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/EmptyPages.h"

#include <new>

#if defined(__unix__) || defined(__APPLE__)
#include <sys/mman.h>
#else
#include <cstdlib>
#endif

namespace quorel
{
#if defined(__unix__) || defined(__APPLE__)

void* takeEmptyPages(std::size_t bytes)
{
    void* pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED)
        throw std::bad_alloc();

    return pages;
}

void returnPages(void* pages, std::size_t bytes) noexcept
{
    munmap(pages, bytes);
}

#else

// Large blocks come from the system one by one here.
void* takeEmptyPages(std::size_t bytes)
{
    void* pages = std::calloc(1, bytes);
    if (pages == nullptr)
        throw std::bad_alloc();

    return pages;
}

void returnPages(void* pages, std::size_t) noexcept
{
    std::free(pages);
}

#endif
} // namespace quorel
