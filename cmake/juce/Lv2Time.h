// SPDX-License-Identifier: GPL-3.0-or-later
// Included by JUCE's LV2 client. Hosts of LV2 tell of a change of the transport; in between time goes on by itself.
#pragma once

#include <cmath>

namespace quorel
{

/** Sets where in the song and in its bars a position is, whose time signature is set. Hosts tell the beat within the
    song, or bar and beat within the bar, both counted from 0, in the signature's beats; the position counts quarters. */
inline void setBeats(juce::AudioPlayHead::PositionInfo& position, juce::Optional<double> beat,
                     juce::Optional<juce::int64> bar, juce::Optional<double> barBeat)
{
    const auto signature = position.getTimeSignature();
    position.setBarCount(bar);

    if (!signature || signature->numerator <= 0 || signature->denominator <= 0)
    {
        position.setPpqPosition(beat);
        return;
    }

    const double perBar = signature->numerator, quarters = 4.0 / signature->denominator;

    if (!beat && bar && barBeat)
        beat = static_cast<double>(*bar) * perBar + *barBeat;

    if (!beat)
        return;

    const double sinceBar = barBeat ? *barBeat : *beat - std::floor(*beat / perBar) * perBar;
    position.setPpqPosition(*beat * quarters);
    position.setPpqPositionOfLastBarStart((*beat - sinceBar) * quarters);
}

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
    const auto signature = position.getTimeSignature();
    const auto barStart = position.getPpqPositionOfLastBarStart();

    if (!barStart || !signature || signature->numerator <= 0 || signature->denominator <= 0)
        return;

    const double length = 4.0 * signature->numerator / signature->denominator;
    const double bars = std::floor((now - *barStart) / length);
    position.setPpqPositionOfLastBarStart(*barStart + bars * length);

    if (const auto bar = position.getBarCount())
        position.setBarCount(*bar + std::llround(bars));
}

} // namespace quorel
