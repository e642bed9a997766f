// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "adapters/BoxInteraction.h"
#include "adapters/HostReads.h"
#include "adapters/HostUpdates.h"
#include "engine/PluginProcessor.h"

#include <memory>

namespace quorel
{

/** The processor as plug-in or standalone: with its editor, its way of talking to the user, and what VST3 and LV2
    want besides. */
class PluginInstance final : private BoxInteraction, public PluginProcessor, public HostReads
{
public:
    PluginInstance();
    ~PluginInstance() override;

    using PluginProcessor::processBlock;
    using PluginProcessor::processBlockBypassed;

    void prepareToPlay(double rate, int newBlockSize) override;
    void processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) override;

    /** Silence: notes end and none begins, all else goes on, so that the sound is where it would be when the
        bypass ends. Under VST2, where hosts bypass an instrument themselves, nothing. */
    void processBlockBypassed(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) override;

    /** Hosts of VST3 stop calling an instrument without a tail when its last note ends, and effects go on for as
        long as they like. */
    double getTailLengthSeconds() const override;

    void hostHasReadAll() override;

private:
    struct KeptForEditors;

    std::unique_ptr<KeptForEditors> kept;
    std::unique_ptr<HostUpdates> hostUpdates;
    juce::MidiBuffer midiInBypass;
    bool wasBypassed = false;
};

} // namespace quorel
