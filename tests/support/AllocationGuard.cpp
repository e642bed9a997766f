// SPDX-License-Identifier: GPL-3.0-or-later
#include "AllocationGuard.h"

#include <cstdlib>
#include <new>

namespace
{
thread_local bool counting = false;
thread_local int calls = 0;

void count() noexcept
{
    calls += counting ? 1 : 0;
}
} // namespace

#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

extern "C"
{
    void* __libc_malloc(size_t);
    void* __libc_calloc(size_t, size_t);
    void* __libc_realloc(void*, size_t);
    void __libc_free(void*);

    void* malloc(size_t size)
    {
        count();
        return __libc_malloc(size);
    }

    void* calloc(size_t number, size_t size)
    {
        count();
        return __libc_calloc(number, size);
    }

    void* realloc(void* memory, size_t size)
    {
        count();
        return __libc_realloc(memory, size);
    }

    void free(void* memory)
    {
        if (memory != nullptr)
            count();
        __libc_free(memory);
    }
}

#else

#if defined(__GNUC__) && !defined(__clang__)
// Where GCC inlines one of the two but not the other, it takes them for a mismatched pair.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

void* operator new(std::size_t size)
{
    count();
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    if (memory != nullptr)
        count();
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    operator delete(memory);
}

#endif

namespace quorel::test
{

AllocationGuard::AllocationGuard() noexcept
{
    calls = 0;
    counting = true;
}

AllocationGuard::~AllocationGuard()
{
    counting = false;
}

int AllocationGuard::heapCalls() const noexcept
{
    return calls;
}

} // namespace quorel::test
