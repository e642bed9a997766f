// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/CustomPlayHead.h"

#include "hosting/HostRate.h"

#include <cmath>
#include <limits>

namespace quorel
{

namespace
{
/** What counts as a tempo: wide enough for any music, and far from where a division or a float gives out. */
constexpr double lowestTempo = 1.0e-3;
constexpr double highestTempo = 1.0e6;

/** In quarter notes: 34 years at a tempo of 120. What lies beyond is taken for an error. */
constexpr double furthestQuarter = 2147483647.0;

bool isTempo(double bpm) noexcept
{
    return bpm >= lowestTempo && bpm <= highestTempo;
}

double finiteOr(double candidate, double fallback) noexcept
{
    return std::isfinite(candidate) ? candidate : fallback;
}

/** Toward zero, limited to the type's range; NaN becomes 0. */
template <typename Integer>
Integer limitedTrunc(double x) noexcept
{
    constexpr auto low = static_cast<double>(std::numeric_limits<Integer>::min());
    constexpr auto high = static_cast<double>(std::numeric_limits<Integer>::max());
    return std::isnan(x) ? Integer(0) : static_cast<Integer>(juce::jlimit(low, high, x));
}
} // namespace

CustomPlayHead::CustomPlayHead()
    : creationSeconds(juce::Time::getMillisecondCounterHiRes() * 0.001)
    , beatSource(new AtomicValueSource(0.0, AtomicValueSource::Kind::integer))
    , beat(beatSource.get())
    , masterBpm(1.0)
{
    masterBpm.setName("masterBpm");
    masterBpm.addListener(this);
}

CustomPlayHead::~CustomPlayHead()
{
    masterBpm.removeListener(this);
}

void CustomPlayHead::setHostPlayHead(juce::AudioPlayHead* newHostPlayHead) noexcept
{
    hostPlayHead.store(newHostPlayHead, std::memory_order_release);
}

juce::Optional<juce::AudioPlayHead::PositionInfo> CustomPlayHead::getPosition() const
{
    PositionInfo info;
    info.setBpm(bpm());
    info.setTimeSignature(TimeSignature{position.timeSigNumerator, position.timeSigDenominator});
    info.setTimeInSamples(static_cast<std::int64_t>(position.timeInSamples));
    info.setTimeInSeconds(position.timeInSeconds);
    info.setEditOriginTime(position.editOriginTime);
    info.setPpqPosition(position.ppqPosition);
    info.setPpqPositionOfLastBarStart(position.ppqPositionOfLastBarStart);
    info.setFrameRate(position.frameRate);
    info.setLoopPoints(LoopPoints{position.ppqLoopStart, position.ppqLoopEnd});
    info.setIsPlaying(position.isPlaying);
    info.setIsRecording(position.isRecording);
    info.setIsLooping(position.isLooping);
    return info;
}

void CustomPlayHead::updateFromHost()
{
    auto* host = hostPlayHead.load(std::memory_order_acquire);
    if (host == nullptr)
        return;
    const auto info = host->getPosition();
    if (!info.hasValue())
        return;

    previousPpqPosition = position.ppqPosition;
    takePosition(*info);
    if (!position.isPlaying)
        return;

    tempoToldByHost.store(position.bpm);
    masterBpm.setValueEased(position.bpm);
    updateBarLength();

    // Bars count quarter notes, as many as the signature has beats, whatever its denominator.
    const int beats = position.timeSigNumerator;
    const double ppq = juce::jlimit(-furthestQuarter, furthestQuarter, position.ppqPosition);
    const int bar = limitedTrunc<int>(ppq) / beats;
    const double quartersIntoBar = ppq - static_cast<double>(bar) * beats;
    previousBarFraction = barFraction;
    barFraction = static_cast<double>(static_cast<float>(quartersIntoBar) / static_cast<float>(beats));
    positionInBar = static_cast<float>(static_cast<double>(getSamplesPerBar()) * barFraction);

    const int now = limitedTrunc<int>(barFraction * beats);
    if (now != limitedTrunc<int>(previousBarFraction * beats))
        beatSource->store(now);
}

void CustomPlayHead::takePosition(const PositionInfo& host)
{
    // The transport follows a stopped host, too. What the host leaves out or garbles keeps its last sensible
    // value.
    if (const double told = host.getBpm().orFallback(0.0); isTempo(told))
    {
        hostTempo.store(told, std::memory_order_relaxed);
        if (host.getIsPlaying())
            userTempo.store(0.0, std::memory_order_relaxed);
    }
    position.bpm = bpm();

    const auto signature = host.getTimeSignature().orFallback(TimeSignature{0, 0});
    if (signature.numerator > 0 && signature.denominator > 0)
    {
        position.timeSigNumerator = signature.numerator;
        position.timeSigDenominator = signature.denominator;
        beatsPerBar.store(signature.numerator, std::memory_order_relaxed);
    }

    position.timeInSamples = host.getTimeInSamples().orFallback(0);
    position.timeInSeconds = finiteOr(host.getTimeInSeconds().orFallback(0.0), position.timeInSeconds);
    position.editOriginTime = finiteOr(host.getEditOriginTime().orFallback(0.0), position.editOriginTime);
    position.ppqPosition = finiteOr(host.getPpqPosition().orFallback(0.0), position.ppqPosition);
    position.ppqPositionOfLastBarStart =
        finiteOr(host.getPpqPositionOfLastBarStart().orFallback(0.0), position.ppqPositionOfLastBarStart);
    position.frameRate = host.getFrameRate().orFallback(FrameRate(fps23976));
    const auto loop = host.getLoopPoints().orFallback(LoopPoints{});
    position.ppqLoopStart = finiteOr(loop.ppqStart, position.ppqLoopStart);
    position.ppqLoopEnd = finiteOr(loop.ppqEnd, position.ppqLoopEnd);
    position.isPlaying = host.getIsPlaying();
    position.isRecording = host.getIsRecording();
    position.isLooping = host.getIsLooping();
}

void CustomPlayHead::setBpm(float newBpm)
{
    const auto wanted = static_cast<double>(newBpm);
    if (!isTempo(wanted))
        return;
    tempoToldByHost.store(0.0);
    masterBpm.setValueEased(wanted);
    userTempo.store(wanted, std::memory_order_relaxed);
    updateBarLength();
}

void CustomPlayHead::valueChanged(juce::Value& changed)
{
    const auto wanted = static_cast<float>(changed.getValue());
    // The echo of a tempo that came from here. Setting it again, rounded to a float, would look like a new
    // one to the audio thread, which would answer it, and so on without end. One of the host's may come late,
    // when the host has stopped at another tempo: it isn't the user's choice.
    if (wanted == static_cast<float>(bpm()) || wanted == static_cast<float>(tempoToldByHost.load()))
        updateBarLength();
    else
        setBpm(wanted);
}

void CustomPlayHead::deliverPending()
{
    beatSource->deliverPending();
    masterBpm.deliverPending();
}

void CustomPlayHead::updateBarLength() noexcept
{
    const float minutes = static_cast<float>(beatsPerBar.load(std::memory_order_relaxed) / bpm());
    const double samples = static_cast<double>(minutes * 60.0f) * HostRate::sampleRate();
    samplesPerBar.store(limitedTrunc<std::uint32_t>(samples), std::memory_order_relaxed);
}

} // namespace quorel
