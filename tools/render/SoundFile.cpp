// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundFile.h"

namespace quorel
{

namespace
{
std::unique_ptr<juce::AudioFormat> formatFor(const juce::File& target)
{
    if (target.hasFileExtension("flac"))
        return std::make_unique<juce::FlacAudioFormat>();
    return std::make_unique<juce::WavAudioFormat>();
}

juce::String cannotWrite(const juce::File& file)
{
    return "cannot write " + file.getFullPathName();
}
} // namespace

SoundFile::SoundFile(const juce::File& target)
    : temporary(target)
    , format(formatFor(target))
{
}

juce::Result SoundFile::create(const juce::File& target, double rate, int numChannels, int bits,
                               std::unique_ptr<SoundFile>& file)
{
    if (target.isDirectory() || (target.existsAsFile() && !target.hasWriteAccess()))
        return juce::Result::fail(cannotWrite(target));

    std::unique_ptr<SoundFile> created(new SoundFile(target));
    auto stream = std::make_unique<juce::FileOutputStream>(created->temporary.getFile());
    if (!stream->openedOk())
        return juce::Result::fail(cannotWrite(target));
    created->writer.reset(created->format->createWriterFor(
        stream.get(), rate, static_cast<unsigned int>(numChannels), bits, {}, 0));
    if (created->writer == nullptr)
        return juce::Result::fail(created->format->getFormatName() + "s cannot hold " + juce::String(bits) +
                                  " bits at " + juce::String(rate) + " Hz");
    juce::ignoreUnused(stream.release()); // the writer has it
    file = std::move(created);
    return juce::Result::ok();
}

bool SoundFile::write(const juce::AudioBuffer<float>& buffer, int numSamples)
{
    written += numSamples;
    return writer->writeFromAudioSampleBuffer(buffer, 0, numSamples);
}

juce::Result SoundFile::finish()
{
    writer.reset();
    // The header comes last, and JUCE doesn't say whether it got there.
    const auto target = temporary.getTargetFile();
    std::unique_ptr<juce::AudioFormatReader> reader(
        format->createReaderFor(temporary.getFile().createInputStream().release(), true));
    if (reader == nullptr || reader->lengthInSamples != written ||
        !temporary.overwriteTargetFileWithTemporary())
        return juce::Result::fail(cannotWrite(target));
    return juce::Result::ok();
}

} // namespace quorel
