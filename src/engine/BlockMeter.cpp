// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/BlockMeter.h"

#include <algorithm>

namespace quorel
{

namespace
{
constexpr auto relaxed = std::memory_order_relaxed;

/** The block and the timer both write a peak: a plain store would let one undo the other. */
void raise(std::atomic<float>& peak, float value) noexcept
{
    float held = peak.load(relaxed);

    while (value > held && !peak.compare_exchange_weak(held, value, relaxed))
    {
    }
}

void fall(std::atomic<float>& peak) noexcept
{
    float held = peak.load(relaxed);

    if (held > 0.0f)
        peak.compare_exchange_strong(held, held * 0.8f, relaxed);
}
} // namespace

void BlockMeter::setBlock(int samples, int channels) noexcept
{
    samplesOfBlock.store(samples, relaxed);
    channelsOfBlock.store(channels, relaxed);
}

void BlockMeter::addPeaks(float leftPeak, float rightPeak) noexcept
{
    raise(left, leftPeak);
    raise(right, rightPeak);
}

void BlockMeter::addBlockTime(double milliseconds) noexcept
{
    const double average = averageMillis.load(relaxed);
    averageMillis.store(average + (milliseconds - average) * 0.05, relaxed);
}

void BlockMeter::tick(double sampleRate) noexcept
{
    const int samples = numSamples();

    if (sampleRate > 0.0 && samples > 0)
    {
        const double blockMillis = samples * 1000.0 / sampleRate;
        const double blocksPerMilli = blockMillis > 0.0 ? 1.0 / blockMillis : 0.0;
        cpu.store(static_cast<float>(std::clamp(blocksPerMilli * averageBlockMillis() * 100.0, 0.0, 100.0)),
                  relaxed);
    }

    fall(left);
    fall(right);
}

} // namespace quorel
