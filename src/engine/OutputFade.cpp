// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputFade.h"

#include <algorithm>

namespace quorel
{

namespace
{
constexpr double fadeOutStep = 0.002;
constexpr double fadeInStep = 0.005;
/** Seconds of 64 samples at 48 kHz, up to which a block takes a step as it stands. */
constexpr double longestBlockOfOneStep = 64.0 / 48000.0;

double stepsOf(int numSamples, double sampleRate) noexcept
{
    return sampleRate > 0.0 ? std::max(1.0, numSamples / (sampleRate * longestBlockOfOneStep)) : 1.0;
}
} // namespace

bool OutputFade::move(ChangeState from, ChangeState to) noexcept
{
    return isLegal(from, to) && state.compare_exchange_strong(from, to);
}

void OutputFade::enter(ChangeState to) noexcept
{
    for (auto from = state.load(); from != to && isLegal(from, to);)
        if (state.compare_exchange_weak(from, to))
            return;
}

void OutputFade::countTick() noexcept
{
    const auto now = blocks.load(std::memory_order_relaxed);
    ticksWithoutBlock = now == blocksSeen ? std::min(ticksWithoutBlock + 1, stoppedTicks) : 0;
    blocksSeen = now;
}

bool OutputFade::advanceBlock(int numSamples, double sampleRate) noexcept
{
    blocks.fetch_add(1, std::memory_order_relaxed);
    const auto now = state.load();
    const float before = now == ChangeState::idle ? 1.0f : currentGain.load(std::memory_order_relaxed);
    float after = before;
    blockStartGain = before;

    if (now == ChangeState::fadingOut || now == ChangeState::fadingIn)
    {
        const double steps = stepsOf(numSamples, sampleRate);
        const double step = now == ChangeState::fadingOut ? -fadeOutStep : fadeInStep;
        after = static_cast<float>(static_cast<double>(before) + step * steps);

        // Steps as they stand are heard as steps, as they always were; bigger ones are smoothed by the block.
        if (steps <= 1.0)
            blockStartGain = after;
    }

    if (after < 0.0f)
    {
        currentGain.store(0.0f, std::memory_order_relaxed);
        auto expected = ChangeState::fadingOut;
        state.compare_exchange_strong(expected, ChangeState::waiting);
        return false;
    }

    if (after > 1.0f)
    {
        after = 1.0f;
        blockStartGain = std::min(blockStartGain, 1.0f);
        auto expected = ChangeState::fadingIn;
        state.compare_exchange_strong(expected, ChangeState::idle);
    }

    currentGain.store(after, std::memory_order_relaxed);
    return true;
}

} // namespace quorel
