// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

namespace quorel
{

/** The fade around a preset's load, and the waits within it. A load replaces instruments and the whole table,
    so the output fades out first, the load runs on the message thread's timer, and after a settling time the
    output fades in.

    Three actors share it, each word written by one of them at a time: whoever asks for a preset (message
    thread), the audio block (the fades) and the processor's 50 ms timer (the countdowns). Fades are counted
    in blocks, not in time: 501 out, 201 in. Without blocks a fade never ends, and nothing is loaded. */
class PresetTransition
{
public:
    /** State of a countdown in timer ticks. It has elapsed on the one tick after it has reached 0. */
    enum class Countdown
    {
        idle,
        running,
        elapsed
    };

    /** Timer: counts `ticks` down; -1 is idle. */
    static Countdown tick(std::atomic<int>& ticks) noexcept
    {
        const int left = ticks.load();

        if (left < 0)
            return Countdown::idle;

        ticks.store(left - 1);
        return left > 0 ? Countdown::running : Countdown::elapsed;
    }

    /** Timer ticks, 2.5 seconds, that an instrument's open window is given to go away. */
    static constexpr int windowTicks = 50;

    //==========================================================================================================
    // Message thread

    /** Starts the fade-out towards a load. False while another preset is on its way. */
    bool request() noexcept;

    /** The wait after the fade-out is to be `windowTicks` long: an instrument's window was open. */
    void waitForWindows() noexcept { longerFadeWait.store(true); }

    /** From a request until the fade-in has finished: further requests are refused. */
    bool isBusy() const noexcept { return presetBusy.load(); }

    /** From a request until the settling time ends: the editor keeps its picture. */
    bool holdsDisplay() const noexcept { return displayHold.load(); }

    void holdDisplay() noexcept { displayHold.store(true); }

    /** Gives the display back at once, unless a preset holds it: no settling time will follow. */
    void releaseDisplay() noexcept { displayHold.store(presetBusy.load()); }

    /** Starts the settling time, at the end of which the output fades in. */
    void settle() noexcept { settleDelay.store(settleTicks); }

    //==========================================================================================================
    // Audio thread, at the top of a block

    /** Moves the fade on. False for the one block that ends a fade-out: it does no work at all. */
    bool advanceBlock() noexcept;

    /** 0 to 1. Any thread. */
    float gain() const noexcept { return fadeGain.load(); }

    bool isFading() const noexcept { return fadeOutActive.load() || fadeInActive.load(); }

    /** Silent: the fade-out has ended, and the fade-in hasn't begun. Any thread. */
    bool isFadedOut() const noexcept { return faded.load(); }

    //==========================================================================================================
    // Timer

    /** Counts the wait between the fade-out and the load. A later tick is then given the load. */
    Countdown tickLoadDelay() noexcept;

    /** Counts the settling time. True when it ends, with the fade-in on its way. */
    bool tickSettling() noexcept;

    /** True once after each wait that `tickLoadDelay` has counted. */
    bool takeLoad() noexcept { return loadRequested.exchange(false); }

    /** The load has run: what is left of a fade-out ends, and the sound settles. */
    void loadDone() noexcept;

    /** Nothing fades, waits or is held. */
    bool isAtRest() const noexcept;

private:
    /** Timer ticks from a load to the fade-in: one second. */
    static constexpr int settleTicks = 20;

    std::atomic<float> fadeGain{1.0f};
    std::atomic<bool> fadeOutActive{false};
    std::atomic<bool> fadeInActive{false};
    std::atomic<bool> faded{false};
    std::atomic<bool> presetBusy{false};
    std::atomic<bool> displayHold{false};
    std::atomic<bool> loadRequested{false};
    std::atomic<bool> longerFadeWait{false};

    /** Countdowns in timer ticks, -1 when idle. */
    std::atomic<int> loadDelay{-1};
    std::atomic<int> settleDelay{-1};
};

} // namespace quorel
