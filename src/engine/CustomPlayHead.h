// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "midi/MidiLinkedValueObject.h"

#include <atomic>
#include <cstdint>
#include <juce_audio_basics/juce_audio_basics.h>

namespace quorel
{

/** The play head that the hosted instruments see, and the tempo of the effects. Follows the host's transport
    at every block, and its tempo, too; but a tempo that the user sets holds until the host plays. Nonsense from a
    host (a tempo of 0, a time signature with a 0, positions that are not numbers) does no harm: the last good
    value stays. */
class CustomPlayHead final : public juce::AudioPlayHead, public juce::Value::Listener
{
public:
    CustomPlayHead();
    ~CustomPlayHead() override;

    /** Where the instruments are. Audio thread. */
    juce::Optional<PositionInfo> getPosition() const override;

    /** Copies the host's transport, if there is a host play head. Audio thread, once a block, without
        allocation. */
    void updateFromHost();

    /** Not owned, may be null. Any thread; it must stay valid for the block that follows. */
    void setHostPlayHead(juce::AudioPlayHead* newHostPlayHead) noexcept;

    /** Sets the tempo in quarter notes per minute. What can't be a tempo is ignored; there is no other limit,
        as the range of the tempo box is the editor's business. It holds while the host stands, whatever the host
        says, and a playing host overrides it at its next block. Message thread. */
    void setBpm(float newBpm);

    /** `masterBpm` was moved from outside: its value becomes the tempo. */
    void valueChanged(juce::Value& changed) override;

    /** Tells the listeners of `beat` and `masterBpm` what the audio thread set. Message thread. */
    void deliverPending();

    /** Tempo now. Any thread. */
    double bpm() const noexcept
    {
        const double chosen = userTempo.load(std::memory_order_relaxed);
        return chosen > 0.0 ? chosen : hostTempo.load(std::memory_order_relaxed);
    }

    /** Length in samples of a bar of as many quarter notes as the signature has beats, at the process's last
        sample rate; 0 before the first tempo. Any thread. */
    std::uint32_t getSamplesPerBar() const noexcept { return samplesPerBar.load(std::memory_order_relaxed); }

    /** 0 to 1 within the bar; negative in a host's pre-roll. Audio thread. */
    double getBarFraction() const noexcept { return barFraction; }

    /** Samples into the bar. Audio thread. */
    float getPositionInBar() const noexcept { return positionInBar; }

    /** Quarter notes at the block before. Audio thread. */
    double getPreviousPpqPosition() const noexcept { return previousPpqPosition; }

private:
    void takePosition(const PositionInfo& host);
    void updateBarLength() noexcept;

    // Two words, so that a block can't undo what the user sets at that moment.
    std::atomic<double> hostTempo{120.0};
    /** 0 for none: the host has played since, or the user never set one. */
    std::atomic<double> userTempo{0.0};
    /** What the audio thread gave to `masterBpm`, as long as nobody else has moved it. */
    std::atomic<double> tempoToldByHost{0.0};
    /** Copy of the signature in `position` for the message thread. */
    std::atomic<int> beatsPerBar{4};
    std::atomic<std::uint32_t> samplesPerBar{0};
    float positionInBar = 0.0f;
    double barFraction = 0.0;
    double previousBarFraction = 0.0;
    double previousPpqPosition = 0.0;
    /** What is served. It belongs to the audio thread, but for the tempo, which `bpm` tells. */
    CurrentPositionInfo position;
    std::atomic<juce::AudioPlayHead*> hostPlayHead{nullptr};
    const double creationSeconds;
    const juce::ReferenceCountedObjectPtr<AtomicValueSource> beatSource;

public:
    /** Number of the beat in the bar, from 0, while the host plays. Listeners hear of each new beat on the
        message thread. */
    juce::Value beat;
    /** The tempo as a linked value. 1 until the first tempo is set, though 120 is served. */
    MidiLinkedValueObject masterBpm;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(CustomPlayHead)
};

} // namespace quorel
