// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel::test
{

/** Counts its thread's calls to the heap while it lives, allocating and freeing alike: an audio thread may do
    neither. With glibc it sees every call, including those of JUCE and hosted instruments. Under a sanitizer,
    which takes malloc's place itself, and elsewhere it sees this program's new and delete. One at a time in a
    thread. */
class AllocationGuard
{
public:
    AllocationGuard() noexcept;
    ~AllocationGuard();
    AllocationGuard(const AllocationGuard&) = delete;
    AllocationGuard& operator=(const AllocationGuard&) = delete;

    int heapCalls() const noexcept;
};

} // namespace quorel::test
