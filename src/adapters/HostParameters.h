// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace quorel
{

class PluginProcessor;

/** The parameters as the hosts of VST3 and LV2 see them: in groups, each with a name of its own, and those without a
    name not for automation. They stand at their indices, which their IDs are made of. Message thread. */
class HostParameters : private juce::Timer
{
public:
    /** Adds them to the processor, which outlives this. Before a host asks for them. */
    explicit HostParameters(PluginProcessor& instrument);
    ~HostParameters() override;

private:
    void timerCallback() override;
    juce::String namesThatChange() const;

    PluginProcessor& processor;
    juce::String toldNames;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(HostParameters)
};

} // namespace quorel
