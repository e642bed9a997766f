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

juce::Result cannotWrite(const juce::File& file, const juce::Result& why)
{
    const auto reason = why.failed() ? " (" + why.getErrorMessage() + ")" : juce::String();
    return juce::Result::fail("cannot write " + file.getFullPathName() + reason);
}

/** A stream for a writer, which deletes what it is given. */
class Forwarding final : public juce::OutputStream
{
public:
    explicit Forwarding(juce::OutputStream& below)
        : stream(below)
    {
    }

    void flush() override { stream.flush(); }

    bool setPosition(juce::int64 position) override { return stream.setPosition(position); }

    juce::int64 getPosition() override { return stream.getPosition(); }

    bool write(const void* bytes, size_t numBytes) override { return stream.write(bytes, numBytes); }

private:
    juce::OutputStream& stream;
};
} // namespace

SoundFile::SoundFile(const juce::File& file)
    : target(file)
    , replacement(file)
    , format(formatFor(file))
{
}

juce::Result SoundFile::create(const juce::File& target, double rate, int numChannels, int bits,
                               std::unique_ptr<SoundFile>& file)
{
    // A folder that is missing is more likely mistyped than meant to be made.
    if (!target.getParentDirectory().isDirectory())
        return cannotWrite(target, juce::Result::fail("there is no such folder"));

    std::unique_ptr<SoundFile> created(new SoundFile(target));
    if (created->replacement.status().failed())
        return cannotWrite(target, created->replacement.status());
    auto stream = std::make_unique<Forwarding>(created->replacement.stream());
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
    replacement.stream().flush();
    // The header comes last, and JUCE doesn't say whether it got there.
    auto stream = replacement.temporaryFile().createInputStream();
    std::unique_ptr<juce::AudioFormatReader> reader(
        stream != nullptr ? format->createReaderFor(stream.release(), true) : nullptr);
    if (reader == nullptr || reader->lengthInSamples != written)
        return cannotWrite(target, replacement.status());
    const auto result = replacement.finish();
    return result.wasOk() ? result : cannotWrite(target, result);
}

} // namespace quorel
