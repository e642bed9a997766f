// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

namespace quorel
{

/** Output peaks and processing load. The block raises them, the processor's timer lets them fall, the editor
    reads them. */
class BlockMeter
{
public:
    /** Audio thread: the size of the block that is being rendered. */
    void setBlock(int samples, int channels) noexcept;

    /** Audio thread: largest absolute samples of the block. */
    void addPeaks(float left, float right) noexcept;

    /** Audio thread: how long the block took; smoothed by 0.05 a block. */
    void addBlockTime(double milliseconds) noexcept;

    /** Timer: works out the load, and lets the peaks fall by a factor of 0.8. */
    void tick(double sampleRate) noexcept;

    float peakLeft() const noexcept { return left.load(std::memory_order_relaxed); }

    float peakRight() const noexcept { return right.load(std::memory_order_relaxed); }

    /** 0 to 100. */
    float cpuPercent() const noexcept { return cpu.load(std::memory_order_relaxed); }

    double averageBlockMillis() const noexcept { return averageMillis.load(std::memory_order_relaxed); }

    int numSamples() const noexcept { return samplesOfBlock.load(std::memory_order_relaxed); }

    int numChannels() const noexcept { return channelsOfBlock.load(std::memory_order_relaxed); }

private:
    std::atomic<float> left{0.0f};
    std::atomic<float> right{0.0f};
    std::atomic<float> cpu{0.0f};
    std::atomic<double> averageMillis{0.0};
    std::atomic<int> samplesOfBlock{0};
    std::atomic<int> channelsOfBlock{0};
};

} // namespace quorel
