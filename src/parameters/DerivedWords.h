// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>

namespace quorel
{

/** Keeps words that are worked out from parameters true to them, whichever threads write the parameters at
    once, without a lock that a block could wait for.

    A thread that works the words out from values that have been overtaken finds that another write has been
    counted since it began, and works them out once more. So the last of all stores comes from a thread that
    has counted every write before it read: had one been counted only after its look back, that writer's own
    store would come later still. This takes one order of all counts, looks and stores, hence the default
    memory order. A thread goes round again only when another one has finished counting. */
class DerivedWords
{
public:
    /** To be called after a parameter is stored. `workOut` reads the parameters and stores the words, these
        in the default memory order; it may run several times. */
    template <typename WorkOut>
    void refresh(WorkOut&& workOut) noexcept
    {
        std::uint32_t seen = writes.fetch_add(1) + 1;

        while (true)
        {
            workOut();
            const std::uint32_t now = writes.load();

            if (now == seen)
                return;

            seen = now;
        }
    }

private:
    std::atomic<std::uint32_t> writes{0};
};

} // namespace quorel
