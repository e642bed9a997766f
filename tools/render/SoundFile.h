// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "OneWayWav.h"

#include "platform/FileReplacement.h"
#include "platform/PlatformSeamProgram.h"

#include <juce_audio_formats/juce_audio_formats.h>
#include <memory>
#include <optional>

namespace quorel
{

/** A WAV or FLAC file that is written beside its place and moved there when it is whole: a render that fails
    leaves what was there before. Or WAV that goes out as it comes. */
class SoundFile
{
public:
    /** `target` ends in .wav or .flac. `bits` is 16 or 24, or 32 for floating point in WAV. Opens the file at
        once, so that a place that can't be written shows before the work. */
    static juce::Result create(const juce::File& target, double rate, int numChannels, int bits,
                               std::unique_ptr<SoundFile>& file);

    /** WAV of as many samples for a stream that can't go back, such as a pipe; `name` is for messages. The same bytes
        as in a file. */
    static juce::Result createStream(std::shared_ptr<std::ostream> stream, const juce::String& name,
                                     double rate, int numChannels, int bits, juce::int64 numSamples,
                                     std::unique_ptr<SoundFile>& file);

    /** Appends `numSamples` of each channel. False where the disk is full or gone. */
    bool write(const juce::AudioBuffer<float>& buffer, int numSamples);

    /** Closes the file, reads its header back and moves it into place; sees that all of a stream went out. Nothing
        can be written after. */
    juce::Result finish();

private:
    SoundFile(const juce::String& name, std::unique_ptr<juce::AudioFormat> format);

    juce::Result open(juce::OutputStream& below, double rate, int numChannels, int bits);

    const juce::String name;
    /** One of these two. */
    std::unique_ptr<FileReplacement> replacement;
    /** A render that a user ends leaves nothing behind. */
    std::optional<FileUntilSignal> unfinished;
    std::unique_ptr<OneWayWav> oneWay;
    std::unique_ptr<juce::AudioFormat> format;
    std::unique_ptr<juce::AudioFormatWriter> writer;
    juce::int64 written = 0;
};

} // namespace quorel
