// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/ChangeState.h"

#include <atomic>

namespace quorel
{

/** The output's fade around a change of sound, and the word that both sides of it share: the state. The message
    thread moves the state on; the audio thread moves the gain, and ends the two states in which a fade runs. */
class OutputFade
{
public:
    /** Timer ticks, 250 ms, without a block: nothing plays, and there is nobody to end a fade. */
    static constexpr int stoppedTicks = 5;

    ChangeState getState() const noexcept { return state.load(); }

    /** Message thread. A step that isn't legal, or that the audio thread has overtaken, is not taken. */
    bool move(ChangeState from, ChangeState to) noexcept;

    /** Message thread: to a state that is legal from wherever the audio thread has got to by now. */
    void enter(ChangeState to) noexcept;

    /** Timer: notices whether blocks run. */
    void countTick() noexcept;

    /** Timer. */
    bool areBlocksRunning() const noexcept { return ticksWithoutBlock < stoppedTicks; }

    //==========================================================================================================
    // Audio thread

    /** At the top of a block of so many samples. False for the one block that ends a fade-out: it does no work
        at all. A fade out takes 501 blocks and a fade in 201, but no longer than with blocks of 64 samples
        at 48 kHz: longer ones take bigger steps. */
    bool advanceBlock(int numSamples, double sampleRate) noexcept;

    /** The gain at the start of the block. It is another one than `gain()` only where steps are bigger. */
    float gainBefore() const noexcept { return blockStartGain; }

    /** 0 to 1. Any thread. */
    float gain() const noexcept
    {
        return getState() == ChangeState::idle ? 1.0f : currentGain.load(std::memory_order_relaxed);
    }

private:
    std::atomic<ChangeState> state{ChangeState::idle};
    std::atomic<float> currentGain{1.0f};
    std::atomic<unsigned int> blocks{0};
    /** Audio thread. */
    float blockStartGain = 1.0f;
    /** Timer. */
    unsigned int blocksSeen = 0;
    int ticksWithoutBlock = 0;
};

} // namespace quorel
