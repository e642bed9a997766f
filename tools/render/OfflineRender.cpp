// SPDX-License-Identifier: GPL-3.0-or-later
#include "OfflineRender.h"

#include "common/MessagePump.h"

#include <cmath>

namespace quorel
{

namespace
{
constexpr int numChannels = 2;
/** Long enough for the engine's timers (50 ms) to fire several times. */
constexpr int settleMillis = 300;
constexpr int settleSliceMillis = 20;
/** How often the message loop gets its turn during a render, in wall time. */
constexpr double pumpIntervalMillis = 20.0;
constexpr double progressInterval = 0.01;
} // namespace

OfflineRender::OfflineRender(PluginProcessor& processorIn, const MidiSong& songIn, SoundInput* inputIn,
                             double rateIn, int blockSizeIn)
    : processor(processorIn)
    , song(songIn)
    , input(inputIn)
    , rate(rateIn)
    , blockSize(blockSizeIn)
    , playHead(songIn.tempoMap(), rateIn)
    , buffer(numChannels, blockSizeIn)
    , sendBuffer(numChannels, blockSizeIn)
{
    sendBuffer.clear();
    processor.setNonRealtime(true);
    processor.setPlayHead(&playHead);
    processor.setRateAndBufferSizeDetails(rate, blockSize);
    processor.prepareToPlay(rate, blockSize);
    if (input != nullptr)
        processor.getGraph().setSendInput(&sendBuffer);
}

OfflineRender::~OfflineRender()
{
    processor.getGraph().setSendInput(nullptr);
    processor.releaseResources();
    processor.setPlayHead(nullptr);
}

void OfflineRender::playEmptyBlock()
{
    buffer.clear();
    midi.clear();
    playHead.moveTo(0, false);
    processor.processBlock(buffer, midi);
}

bool OfflineRender::playSoundChange(int timeoutMillis)
{
    // Fades are counted in blocks: many at a time make them short. While the instruments are loaded and settle, which takes
    // time and no blocks, none are played: their number would be another one each time, and free-running modulation
    // at another place when the song starts.
    constexpr int blocksPerTurn = 16;
    const auto& change = processor.getSoundChange();
    const auto isFading = [&fade = processor.getSoundChange().getFade()]
    { return fade.getState() == ChangeState::fadingOut || fade.getState() == ChangeState::fadingIn; };
    return pumpUntil(
        [&]
        {
            for (int i = 0; i < blocksPerTurn && isFading(); ++i)
                playEmptyBlock();
            return !change.isUnderWay();
        },
        timeoutMillis);
}

void OfflineRender::settle()
{
    for (int millis = 0; millis < settleMillis; millis += settleSliceMillis)
    {
        pumpUntil([] { return false; }, settleSliceMillis);
        playEmptyBlock();
    }
}

juce::int64 OfflineRender::numSamples(const MidiSong& song, const SoundInput* input, double tailSeconds,
                                      double rate)
{
    const double length = input != nullptr ? input->lengthSeconds() : song.lengthSeconds();
    return static_cast<juce::int64>(std::ceil((length + tailSeconds) * rate));
}

juce::Result OfflineRender::run(SoundFile& file, double tailSeconds,
                                const std::function<void(double)>& progress, RenderReport& report)
{
    const double start = juce::Time::getMillisecondCounterHiRes();
    const auto total = numSamples(song, input, tailSeconds, rate);
    double squares = 0.0;
    double nextProgress = 0.0;
    nextEvent = 0;

    for (juce::int64 position = 0; position < total; position += blockSize)
    {
        // The last block is a whole one, as in any host; what is too much isn't written.
        const int wanted = static_cast<int>(std::min<juce::int64>(blockSize, total - position));
        collectEvents(position, blockSize);
        playHead.moveTo(position, true);
        if (input != nullptr)
            input->read(sendBuffer);
        buffer.clear();
        processor.processBlock(buffer, midi);

        for (int channel = 0; channel < numChannels; ++channel)
        {
            auto* samples = buffer.getWritePointer(channel);
            for (int i = 0; i < wanted; ++i)
            {
                if (!std::isfinite(samples[i]))
                {
                    samples[i] = 0.0f;
                    report.hadBadSamples = true;
                }
                report.peak = std::max(report.peak, std::abs(samples[i]));
                squares += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
            }
        }
        if (!file.write(buffer, wanted))
            return juce::Result::fail("the sound could not be written: is the disk full?");

        pumpIfDue();
        if (const double done = static_cast<double>(position + wanted) / static_cast<double>(total);
            done >= nextProgress)
        {
            progress(done);
            nextProgress = done + progressInterval;
        }
    }

    report.seconds = static_cast<double>(total) / rate;
    report.rms = total > 0 ? std::sqrt(squares / (static_cast<double>(total) * numChannels)) : 0.0;
    report.wallSeconds = (juce::Time::getMillisecondCounterHiRes() - start) * 0.001;
    return juce::Result::ok();
}

void OfflineRender::collectEvents(juce::int64 blockStart, int numSamples)
{
    midi.clear();
    const auto& events = song.events();
    for (; nextEvent < events.size(); ++nextEvent)
    {
        const auto sample =
            static_cast<juce::int64>(std::llround(events[nextEvent].seconds * rate)) - blockStart;
        if (sample >= numSamples)
            break;
        midi.addEvent(events[nextEvent].message, static_cast<int>(std::max<juce::int64>(0, sample)));
    }
}

void OfflineRender::pumpIfDue()
{
    const double now = juce::Time::getMillisecondCounterHiRes();
    if (now - lastPumpMillis < pumpIntervalMillis)
        return;
    lastPumpMillis = now;
    juce::MessageManager::getInstance()->runDispatchLoopUntil(0);
}

} // namespace quorel
