// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundInput.h"

#include "common/Tool.h"

namespace quorel
{

namespace
{
constexpr int numChannels = 2;
constexpr int largestBlock = 65536;
constexpr double lowestRate = 1000.0;
constexpr double highestRate = 1.0e6;
constexpr double longestSeconds = 24.0 * 3600.0;
} // namespace

juce::Result SoundInput::open(const juce::File& file, double rate, std::unique_ptr<SoundInput>& input)
{
    const auto cannot = [&](const juce::String& what)
    { return juce::Result::fail(file.getFullPathName() + ": " + what); };
    if (!file.existsAsFile())
        return cannotRead(file);

    juce::AudioFormatManager formats;
    formats.registerFormat(new juce::WavAudioFormat(), true);
    formats.registerFormat(new juce::AiffAudioFormat(), false);
    formats.registerFormat(new juce::FlacAudioFormat(), false);
    std::unique_ptr<juce::AudioFormatReader> reader(formats.createReaderFor(file));
    if (reader == nullptr)
        return cannot("no WAV, AIFF or FLAC file, or damaged");
    if (reader->numChannels < 1 || reader->numChannels > numChannels)
        return cannot("has " + juce::String(reader->numChannels) + " channels, not one or two");
    if (!(reader->sampleRate >= lowestRate && reader->sampleRate <= highestRate))
        return cannot("has no usable sample rate");
    const double seconds = static_cast<double>(reader->lengthInSamples) / reader->sampleRate;
    if (!(seconds > 0.0))
        return cannot("holds no sound");
    if (seconds > longestSeconds)
        return cannot("is longer than a day");

    input.reset(new SoundInput(std::move(reader), rate));
    return juce::Result::ok();
}

SoundInput::SoundInput(std::unique_ptr<juce::AudioFormatReader> reader, double rate)
    : length(static_cast<double>(reader->lengthInSamples) / reader->sampleRate)
    , samples(reader.get(), true)
{
    const double fileRate = reader.release()->sampleRate; // the source has it
    if (juce::approximatelyEqual(fileRate, rate))
        return;
    converter = std::make_unique<juce::ResamplingAudioSource>(&samples, false, numChannels);
    converter->setResamplingRatio(fileRate / rate);
    converter->prepareToPlay(largestBlock, rate);
}

void SoundInput::read(juce::AudioBuffer<float>& block)
{
    const juce::AudioSourceChannelInfo whole(block);
    if (converter != nullptr)
        converter->getNextAudioBlock(whole);
    else
        samples.getNextAudioBlock(whole);
}

} // namespace quorel
