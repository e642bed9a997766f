// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterLayout.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>

namespace quorel
{

/** What is still to pass between a layer's Easy values and its instrument: the newest write of each, and
    which are to take over what the instrument holds. Writers leave it here without waiting, and whoever gets
    hold of the instrument's lock passes it on. Any thread, lock-free. */
class EasyHandover
{
public:
    struct Write
    {
        /** Number of the hosted parameter, from 1; 0 for no write. */
        int target;
        float value;
    };

    /** Replaces an older write of the same Easy value that hasn't been passed on. */
    void write(int easy, int target, float value) noexcept
    {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof(bits));
        writes[cell(easy)].store((static_cast<std::uint64_t>(target) << 32) | bits);
    }

    /** The Easy value is to show what its hosted parameter holds, after all writes. */
    void pull(int easy) noexcept { pulls.fetch_or(1u << easy); }

    bool isPending() const noexcept
    {
        if (pulls.load() != 0)
            return true;

        for (const auto& waiting : writes)
            if (waiting.load() != 0)
                return true;

        return false;
    }

    Write takeWrite(int easy) noexcept
    {
        const auto taken = writes[cell(easy)].exchange(0);
        const auto bits = static_cast<std::uint32_t>(taken);
        Write write{static_cast<int>(taken >> 32), 0.0f};
        std::memcpy(&write.value, &bits, sizeof(bits));
        return write;
    }

    /** A bit for each Easy value, the first in bit 0. */
    std::uint32_t takePulls() noexcept { return pulls.exchange(0); }

    void clear() noexcept
    {
        for (auto& waiting : writes)
            waiting.store(0);

        pulls.store(0);
    }

private:
    static constexpr std::size_t cell(int easy) noexcept { return static_cast<std::size_t>(easy); }

    /** Target in the upper half, the value's bits in the lower; 0 for none. */
    std::array<std::atomic<std::uint64_t>, numEasyParameters> writes{};
    std::atomic<std::uint32_t> pulls{0};

    static_assert(std::atomic<std::uint64_t>::is_always_lock_free);
};

} // namespace quorel
