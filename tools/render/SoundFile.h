// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileReplacement.h"

#include <juce_audio_formats/juce_audio_formats.h>
#include <memory>

namespace quorel
{

/** A WAV or FLAC file that is written beside its place and moved there when it is whole: a render that fails
    leaves what was there before. */
class SoundFile
{
public:
    /** `target` ends in .wav or .flac. `bits` is 16 or 24, or 32 for floating point in WAV. Opens the file at
        once, so that a place that can't be written shows before the work. */
    static juce::Result create(const juce::File& target, double rate, int numChannels, int bits,
                               std::unique_ptr<SoundFile>& file);

    /** Appends `numSamples` of each channel. False where the disk is full or gone. */
    bool write(const juce::AudioBuffer<float>& buffer, int numSamples);

    /** Closes the file, reads its header back and moves it into place. Nothing can be written after. */
    juce::Result finish();

private:
    explicit SoundFile(const juce::File& target);

    const juce::File target;
    FileReplacement replacement;
    std::unique_ptr<juce::AudioFormat> format;
    std::unique_ptr<juce::AudioFormatWriter> writer;
    juce::int64 written = 0;
};

} // namespace quorel
