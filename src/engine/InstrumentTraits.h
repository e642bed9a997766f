// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterLayout.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace quorel
{

/** What a host is told that never changes: a stereo instrument that takes MIDI, gives none, has one program,
    and neither a latency nor a tail. */
class InstrumentTraits : public juce::AudioProcessor
{
public:
    InstrumentTraits()
        : juce::AudioProcessor(BusesProperties()
                                   .withInput("Input", juce::AudioChannelSet::stereo())
                                   .withOutput("Output", juce::AudioChannelSet::stereo()))
    {
    }

    const juce::String getName() const override { return "Quorel"; }

    /** Two channels both ways: the block addresses them by number. The input is thrown away. */
    bool isBusesLayoutSupported(const BusesLayout& layouts) const override
    {
        return layouts.getMainInputChannelSet() == juce::AudioChannelSet::stereo() &&
               layouts.getMainOutputChannelSet() == juce::AudioChannelSet::stereo();
    }

    const juce::String getInputChannelName(int channel) const override { return juce::String(channel + 1); }

    const juce::String getOutputChannelName(int channel) const override { return juce::String(channel + 1); }

    bool isInputChannelStereoPair(int) const override { return true; }

    bool isOutputChannelStereoPair(int) const override { return true; }

    bool silenceInProducesSilenceOut() const override { return false; }

    double getTailLengthSeconds() const override { return 0.0; }

    bool acceptsMidi() const override { return true; }

    bool producesMidi() const override { return false; }

    int getNumParameters() override { return numHostParameters; }

    /** Any parameter may be tied to others. */
    bool isMetaParameter(int) const override { return true; }

    /** Presets live in files: the host sees a single program, called like the preset. */
    int getNumPrograms() override { return 1; }

    int getCurrentProgram() override { return 0; }

    void setCurrentProgram(int) override {}

    void changeProgramName(int, const juce::String&) override {}

    /** Hosted instruments stay prepared. */
    void releaseResources() override {}

    void reset() override {}

    using juce::AudioProcessor::processBlockBypassed;

    void processBlockBypassed(juce::AudioBuffer<float>&, juce::MidiBuffer&) override {}
};

} // namespace quorel
