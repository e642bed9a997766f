// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_devices/juce_audio_devices.h>
#include <juce_audio_formats/juce_audio_formats.h>
#include <memory>

namespace quorel
{

/** A sound file, read block by block at the rate of a render. Message thread. */
class SoundInput
{
public:
    /** WAV, AIFF or FLAC of one or two channels. Another rate than `rate` (Hz) is converted by linear
        interpolation behind a low-pass: good for listening, not for measuring. The error names the file and
        what is wrong with it. */
    static juce::Result open(const juce::File& file, double rate, std::unique_ptr<SoundInput>& input);

    /** Fills the next block, of two channels and at most 65536 samples; one channel becomes both. Silence
        after the end. */
    void read(juce::AudioBuffer<float>& block);

    double lengthSeconds() const noexcept { return length; }

private:
    SoundInput(std::unique_ptr<juce::AudioFormatReader> reader, double rate);

    double length;
    juce::AudioFormatReaderSource samples;
    std::unique_ptr<juce::ResamplingAudioSource> converter;
};

} // namespace quorel
