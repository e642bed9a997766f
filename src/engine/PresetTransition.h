// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

namespace quorel
{

/** The state machine of a preset change. A load replaces instruments and the whole table, so the output fades
   out first, the load runs on the message thread's timer, and after a settling time the output fades in.

    Three actors share it, each word written by one of them at a time: whoever asks for a preset (message
   thread), the audio block (the fades) and the processor's 50 ms timer (the countdowns). Fades are counted in
   blocks, not in time: 501 out, 201 in. */
class PresetTransition
{
public:
    static constexpr int timerMilliseconds = 50;
    /** Timer ticks from a load to the fade-in: one second. */
    static constexpr int settleTicks = 20;
    /** Timer ticks, 2.5 seconds, that an instrument's open window is given to go away. */
    static constexpr int windowTicks = 50;

    /** Audio thread, at the top of a block. False for the one block that ends a fade-out: it does no work at
     * all. */
    bool advanceBlock() noexcept
    {
        if (fadeOutActive.load())
        {
            const float gain = static_cast<float>(static_cast<double>(fadeGain.load()) - 0.002);
            fadeGain.store(gain);

            if (gain < 0.0f)
            {
                faded.store(true);
                fadeOutActive.store(false);
                fadeGain.store(0.0f);
                loadDelay.store(longerFadeWait.exchange(false) ? windowTicks : 1);
                return false;
            }
        }

        if (fadeInActive.load())
        {
            const float gain = static_cast<float>(static_cast<double>(fadeGain.load()) + 0.005);
            fadeGain.store(gain);

            if (gain > 1.0f)
            {
                fadeGain.store(1.0f);
                fadeInActive.store(false);
                presetBusy.store(false);
            }
        }

        return true;
    }

    /** Message thread: starts the fade-out towards a load. False while another change is under way. */
    bool request() noexcept
    {
        if (presetBusy.exchange(true))
            return false;

        displayHold.store(true);
        fadeOutActive.store(true);
        return true;
    }

    /** Timer: counts `ticks` down. True on the tick after it has reached 0, which also sets it idle. */
    enum class Countdown
    {
        idle,
        running,
        elapsed
    };

    static Countdown tick(std::atomic<int>& ticks) noexcept
    {
        const int left = ticks.load();

        if (left < 0)
            return Countdown::idle;

        ticks.store(left - 1);
        return left > 0 ? Countdown::running : Countdown::elapsed;
    }

    std::atomic<float> fadeGain{1.0f};
    std::atomic<bool> fadeOutActive{false};
    std::atomic<bool> fadeInActive{false};
    /** Marks the end of a fade-out. */
    std::atomic<bool> faded{false};
    /** From a request until the fade-in has finished: further requests are refused. */
    std::atomic<bool> presetBusy{false};
    /** From a request until the settling time ends: the editor keeps its picture. */
    std::atomic<bool> displayHold{false};
    /** The next timer tick loads the preset. */
    std::atomic<bool> loadRequested{false};
    /** A window of a hosted instrument was open at the request. */
    std::atomic<bool> longerFadeWait{false};

    /** Countdowns in timer ticks, -1 when idle. */
    std::atomic<int> loadDelay{-1};
    std::atomic<int> settleDelay{-1};
    std::atomic<int> chunkRestoreTicks{-1};
};

} // namespace quorel
