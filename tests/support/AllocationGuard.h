// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel::test
{

/** Counts what its thread asks of the heap from its making on, taking and giving back alike: an audio thread may do
    neither. With glibc that is every call, of JUCE and hosted instruments too; under a sanitizer, which stands in the
    C library's place, and elsewhere it is new and delete of this program. One at a time in a thread. */
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
