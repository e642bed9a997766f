// SPDX-License-Identifier: GPL-3.0-or-later
#include "SongPlayHead.h"

namespace quorel
{

SongPlayHead::SongPlayHead(const TempoMap& tempoMap, double sampleRate)
    : tempos(tempoMap)
    , rate(sampleRate)
{
}

void SongPlayHead::moveTo(juce::int64 samplePosition, bool playing) noexcept
{
    sample = samplePosition;
    isPlaying = playing;
}

juce::Optional<juce::AudioPlayHead::PositionInfo> SongPlayHead::getPosition() const
{
    const double seconds = static_cast<double>(sample) / rate;
    const double quarters = tempos.quartersAt(seconds);
    const auto bar = tempos.barAt(quarters);

    PositionInfo info;
    info.setTimeInSamples(static_cast<std::int64_t>(sample));
    info.setTimeInSeconds(seconds);
    info.setPpqPosition(quarters);
    info.setBpm(tempos.bpmAt(quarters));
    info.setTimeSignature(TimeSignature{bar.numerator, bar.denominator});
    info.setBarCount(bar.bar);
    info.setPpqPositionOfLastBarStart(bar.barStart);
    info.setIsPlaying(isPlaying);
    return info;
}

} // namespace quorel
