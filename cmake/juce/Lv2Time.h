// SPDX-License-Identifier: GPL-3.0-or-later
// Included by JUCE's LV2 client. Hosts of LV2 tell of a change of the transport; in between time goes on by itself.
#pragma once

#include <cmath>

namespace quorel
{

/** Moves a playing position on by `numSamples` at `speed`, which is 1 for the usual one and may be negative. What the host
    didn't tell stays unknown. */
inline void advancePosition(juce::AudioPlayHead::PositionInfo& position, double numSamples, double speed,
                            double sampleRate)
{
    const double seconds = numSamples * speed / sampleRate;

    if (const auto before = position.getTimeInSeconds())
    {
        position.setTimeInSeconds(*before + seconds);
        position.setTimeInSamples(std::llround((*before + seconds) * sampleRate));
    }

    const auto beats = position.getPpqPosition();
    const auto bpm = position.getBpm();

    if (!beats || !bpm)
        return;

    const double now = *beats + seconds * *bpm / 60.0;
    position.setPpqPosition(now);
    const auto bar = position.getBarCount();
    const auto signature = position.getTimeSignature();

    if (bar && signature && signature->numerator > 0)
    {
        const double length = signature->numerator;
        position.setBarCount(*bar + std::llround(std::floor(now / length) - std::floor(*beats / length)));
    }
}

} // namespace quorel
