// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FxMemory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>

namespace quorel
{
namespace
{
void* takeFromHeap(std::size_t bytes)
{
    void* memory = std::calloc(1, bytes);
    if (memory == nullptr)
        throw std::bad_alloc();

    return memory;
}

void giveBackToHeap(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
} // namespace

const FxPages heapPages = {takeFromHeap, giveBackToHeap};

void FxMemory::take(const FxPages& pages)
{
    static_assert(std::is_trivial_v<FxLines>, "all bytes zero must be an empty line");
    lines = {static_cast<FxLines*>(pages.take(sizeof(FxLines))), FxLinesDeleter{&pages}};
}

void FxMemory::clearLineStarts()
{
    // What lies further on stays: an old tail can come back with a long delay, and is meant to.
    constexpr int cleared = 16384;
    if (!lineStartsWritten)
        return;

    std::fill(lines->lineL, lines->lineL + cleared, 0.0f);
    std::fill(lines->lineR, lines->lineR + cleared, 0.0f);
    lineStartsWritten = false;
}

void FxMemory::clearModLines()
{
    if (!modLinesWritten)
        return;

    std::fill(lines->modLineL, lines->modLineL + fxModLineLength, 0.0f);
    std::fill(lines->modLineR, lines->modLineR + fxModLineLength, 0.0f);
    modLinesWritten = false;
}

void FxMemory::clearShared(std::size_t bytes)
{
    std::memset(&lines->shared, 0, std::min(bytes, sharedWritten));
    if (bytes >= sharedWritten)
        sharedWritten = 0;
}
} // namespace quorel
