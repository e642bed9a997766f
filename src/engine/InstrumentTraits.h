// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterLayout.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace quorel
{

/** What a host is told that never changes: a stereo instrument that takes MIDI, gives none, has one program,
    no latency and, in VST2, no tail. */
class InstrumentTraits : public juce::AudioProcessor
{
public:
    InstrumentTraits()
        : juce::AudioProcessor(buses())
    {
    }

    /** Whether a host has it by a format whose lists hold names and groups, and that moves sounds to and from
        VST2. */
    static bool isVst3OrLv2()
    {
        const auto format = juce::PluginHostType::getPluginLoadedAs();
        return format == wrapperType_VST3 || format == wrapperType_LV2;
    }

    const juce::String getName() const override { return "Quorel"; }

    /** Two channels both ways: the block addresses them by number. The input is thrown away; where the format's
        instruments have none, there is none. */
    bool isBusesLayoutSupported(const BusesLayout& layouts) const override
    {
        const auto input =
            getBusCount(true) > 0 ? juce::AudioChannelSet::stereo() : juce::AudioChannelSet::disabled();
        return layouts.getMainInputChannelSet() == input &&
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

private:
    static BusesProperties buses()
    {
        const auto output = BusesProperties().withOutput("Output", juce::AudioChannelSet::stereo());
        return isVst3OrLv2() ? output : output.withInput("Input", juce::AudioChannelSet::stereo());
    }
};

} // namespace quorel
