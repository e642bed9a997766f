// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{

/** The last sample rate and block size that any instance in this process was prepared with. All instances
    share them: a play head computes its bar lengths at this rate, and an instrument loaded later starts with
    both. */
struct HostRate
{
    /** Any thread. */
    static void store(double sampleRate, int blockSize) noexcept;
    /** Hz; 0 until the first `store`. Any thread. */
    static double sampleRate() noexcept;
    /** Samples; 0 until the first `store`. Any thread. */
    static int blockSize() noexcept;
};

} // namespace quorel
