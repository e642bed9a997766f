// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{

/** The last sample rate that any instance in this process was prepared with. All instances share it: their
    play heads compute bar lengths at this rate. */
struct HostRate
{
    /** Any thread. */
    static void store(double sampleRate) noexcept;
    /** Hz; 0 until the first `store`. Any thread. */
    static double sampleRate() noexcept;
};

} // namespace quorel
