// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TempoMap.h"

#include <juce_audio_basics/juce_audio_basics.h>

namespace quorel
{

/** A host's transport that runs through a song: tempo, bars, beats and time signature from its tempo map. */
class SongPlayHead final : public juce::AudioPlayHead
{
public:
    /** `tempoMap` outlives this. `sampleRate` in Hz. */
    SongPlayHead(const TempoMap& tempoMap, double sampleRate);

    /** The block that follows starts at this sample of the song. */
    void moveTo(juce::int64 samplePosition, bool playing) noexcept;

    juce::Optional<PositionInfo> getPosition() const override;

private:
    const TempoMap& tempos;
    const double rate;
    juce::int64 sample = 0;
    bool isPlaying = false;
};

} // namespace quorel
