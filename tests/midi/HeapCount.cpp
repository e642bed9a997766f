// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestLoop.h"

#include <cstdlib>
#include <new>

namespace
{
thread_local std::size_t heapCalls = 0;
} // namespace

std::size_t quorel::test::heapCallsOnThisThread() noexcept
{
    return heapCalls;
}

void* operator new(std::size_t size)
{
    ++heapCalls;
    if (auto* memory = std::malloc(size != 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
