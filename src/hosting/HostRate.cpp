// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/HostRate.h"

#include <atomic>

namespace quorel
{

namespace
{
std::atomic<double> lastSampleRate{0.0};
std::atomic<int> lastBlockSize{0};
} // namespace

void HostRate::store(double sampleRate, int blockSize) noexcept
{
    lastSampleRate.store(sampleRate, std::memory_order_relaxed);
    lastBlockSize.store(blockSize, std::memory_order_relaxed);
}

double HostRate::sampleRate() noexcept
{
    return lastSampleRate.load(std::memory_order_relaxed);
}

int HostRate::blockSize() noexcept
{
    return lastBlockSize.load(std::memory_order_relaxed);
}

} // namespace quorel
