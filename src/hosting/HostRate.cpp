// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/HostRate.h"

#include <atomic>

namespace quorel
{

namespace
{
std::atomic<double> lastSampleRate{0.0};
} // namespace

void HostRate::store(double sampleRate) noexcept
{
    lastSampleRate.store(sampleRate, std::memory_order_relaxed);
}

double HostRate::sampleRate() noexcept
{
    return lastSampleRate.load(std::memory_order_relaxed);
}

} // namespace quorel
