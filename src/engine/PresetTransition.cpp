// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PresetTransition.h"

namespace quorel
{

namespace
{
constexpr double fadeOutStep = 0.002;
constexpr double fadeInStep = 0.005;
/** Timer ticks from the end of the fade-out to the load, where no window has to go away first. */
constexpr int shortLoadDelay = 1;
} // namespace

bool PresetTransition::request() noexcept
{
    if (presetBusy.exchange(true))
        return false;

    displayHold.store(true);
    fadeOutActive.store(true);
    return true;
}

bool PresetTransition::advanceBlock() noexcept
{
    if (fadeOutActive.load())
    {
        const float gain = static_cast<float>(static_cast<double>(fadeGain.load()) - fadeOutStep);
        fadeGain.store(gain);

        if (gain < 0.0f)
        {
            faded.store(true);
            fadeOutActive.store(false);
            fadeGain.store(0.0f);
            loadDelay.store(longerFadeWait.exchange(false) ? windowTicks : shortLoadDelay);
            return false;
        }
    }

    if (fadeInActive.load())
    {
        const float gain = static_cast<float>(static_cast<double>(fadeGain.load()) + fadeInStep);
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

PresetTransition::Countdown PresetTransition::tickLoadDelay() noexcept
{
    const auto state = tick(loadDelay);

    if (state == Countdown::elapsed)
        loadRequested.store(true);

    return state;
}

bool PresetTransition::tickSettling() noexcept
{
    if (settleDelay.load() <= 0 || settleDelay.fetch_sub(1) != 1)
        return false;

    settleDelay.store(-1);
    fadeInActive.store(true);
    faded.store(false);
    displayHold.store(false);
    return true;
}

void PresetTransition::loadDone() noexcept
{
    fadeOutActive.store(false);
    settle();
}

bool PresetTransition::isAtRest() const noexcept
{
    return !presetBusy.load() && !displayHold.load() && !isFading() && !loadRequested.load() &&
           loadDelay.load() < 0 && settleDelay.load() < 0;
}

} // namespace quorel
