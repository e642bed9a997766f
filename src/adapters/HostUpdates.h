// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterLayout.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <atomic>

namespace quorel
{

class PluginProcessor;

/** Tells a host of VST3 or LV2 what no single parameter's move tells it: the values that came with another sound, names
    that follow an effect or an instrument, and that there is something new to save. Message thread, but where a function
    says otherwise. */
class HostUpdates : private juce::Timer, private juce::AudioProcessorListener
{
public:
    /** What the host has read by now is what stands in the processor, which outlives this. */
    explicit HostUpdates(PluginProcessor& instrument);
    ~HostUpdates() override;

    /** Begins to tell; the processor has its parameters by now, which this walks on the message thread. */
    void begin();

    /** The host has just read all values. Any thread. */
    void hostHasReadAll() noexcept;

    /** The host itself has written this value. Any thread. */
    void hostHasWritten(int index, float value) noexcept { setKnown(index, value); }

private:
    void timerCallback() override;
    /** Any thread. */
    void audioProcessorParameterChanged(juce::AudioProcessor*, int index, float value) override;

    void audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&) override {}

    void setKnown(int index, float value) noexcept;
    bool isKnown(int index) const noexcept;
    bool takeValues();
    bool takeNames();
    bool takeEdits();
    juce::String namesThatChange() const;

    PluginProcessor& processor;
    /** What the host takes for each parameter's value. */
    std::array<std::atomic<float>, numHostParameters> known{};
    juce::String knownNames;
    int knownRevision;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(HostUpdates)
};

} // namespace quorel
