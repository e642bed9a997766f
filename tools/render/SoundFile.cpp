// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundFile.h"

#include <utility>

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

juce::Result cannotWrite(const juce::String& name, const juce::Result& why)
{
    const auto reason = why.failed() ? " (" + why.getErrorMessage() + ")" : juce::String();
    return juce::Result::fail("cannot write " + name + reason);
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

SoundFile::SoundFile(const juce::String& fileName, std::unique_ptr<juce::AudioFormat> fileFormat)
    : name(fileName)
    , format(std::move(fileFormat))
{
}

juce::Result SoundFile::create(const juce::File& target, double rate, int numChannels, int bits,
                               std::unique_ptr<SoundFile>& file)
{
    const auto& name = target.getFullPathName();

    // A folder that is missing is more likely mistyped than meant to be made.
    if (!target.getParentDirectory().isDirectory())
        return cannotWrite(name, juce::Result::fail("there is no such folder"));

    std::unique_ptr<SoundFile> created(new SoundFile(name, formatFor(target)));
    created->replacement = std::make_unique<FileReplacement>(target);
    if (created->replacement->status().failed())
        return cannotWrite(name, created->replacement->status());
    created->unfinished.emplace(created->replacement->temporaryFile());
    const auto result = created->open(created->replacement->stream(), rate, numChannels, bits);
    file = std::move(created);
    return result;
}

juce::Result SoundFile::createStream(std::shared_ptr<std::ostream> stream, const juce::String& name,
                                     double rate, int numChannels, int bits, juce::int64 numSamples,
                                     std::unique_ptr<SoundFile>& file)
{
    std::unique_ptr<SoundFile> created(new SoundFile(name, std::make_unique<juce::WavAudioFormat>()));
    created->oneWay = std::make_unique<OneWayWav>(std::move(stream), numSamples * numChannels * (bits / 8));
    if (const auto result = created->open(*created->oneWay, rate, numChannels, bits); result.failed())
        return result;
    file = std::move(created);
    return juce::Result::ok();
}

juce::Result SoundFile::open(juce::OutputStream& below, double rate, int numChannels, int bits)
{
    auto stream = std::make_unique<Forwarding>(below);
    writer.reset(
        format->createWriterFor(stream.get(), rate, static_cast<unsigned int>(numChannels), bits, {}, 0));
    if (writer == nullptr)
        return juce::Result::fail(format->getFormatName() + "s cannot hold " + juce::String(bits) +
                                  " bits at " + juce::String(rate) + " Hz");
    juce::ignoreUnused(stream.release()); // the writer has it
    return juce::Result::ok();
}

bool SoundFile::write(const juce::AudioBuffer<float>& buffer, int numSamples)
{
    if (oneWay != nullptr)
        oneWay->sendHeader();
    written += numSamples;
    return writer->writeFromAudioSampleBuffer(buffer, 0, numSamples);
}

juce::Result SoundFile::finish()
{
    if (oneWay != nullptr)
        oneWay->sendHeader();
    writer.reset();

    if (oneWay != nullptr)
    {
        oneWay->flush();
        return oneWay->isWhole() ? juce::Result::ok() : cannotWrite(name, juce::Result::ok());
    }

    replacement->stream().flush();
    // The header comes last, and JUCE doesn't say whether it got there.
    auto stream = replacement->temporaryFile().createInputStream();
    std::unique_ptr<juce::AudioFormatReader> reader(
        stream != nullptr ? format->createReaderFor(stream.release(), true) : nullptr);
    if (reader == nullptr || reader->lengthInSamples != written)
        return cannotWrite(name, replacement->status());
    const auto result = replacement->finish();
    return result.wasOk() ? result : cannotWrite(name, result);
}

} // namespace quorel
