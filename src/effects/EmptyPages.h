// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace quorel
{
/** Takes memory straight from the system: all zero, and none of it resident before it is used. (calloc may
    get memory that has been in use, and writes it.) Throws std::bad_alloc. */
void* takeEmptyPages(std::size_t bytes);

/** Gives back what takeEmptyPages() has returned for as many bytes. */
void returnPages(void* pages, std::size_t bytes) noexcept;
} // namespace quorel
