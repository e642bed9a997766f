// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxSlot.h"
#include "effects/LayerEq.h"
#include "parameters/EqSettings.h"
#include "parameters/MixGains.h"
#include "parameters/ParameterAccess.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <array>
#include <atomic>

namespace quorel
{

class VirtualInstrument;

/** The fixed graph of the block: four instruments into four layer strips, four send buses through four effect
    blocks, and the master EQ. Every stage handles the whole block at once. Large (the effect blocks are
    embedded, so that a change of type allocates nothing): it lives on the heap with its processor. */
class AudioGraph
{
public:
    using Layers = std::array<VirtualInstrument*, numLayers>;

    AudioGraph(const ParameterAccess& parameterTable, const MixGains& mixGains, const EqSettings& eqSettings);

    /** The layers to play; they outlive the graph's last block. */
    void setLayers(const Layers& newLayers) noexcept { layers = newLayers; }

    /** Starts every EQ unit and effect block afresh at `sampleRate` (Hz): all tails are dropped. While no
        block runs. */
    void initialise(double sampleRate);

    /** Any thread: the next block starts the EQ units and effect blocks afresh. */
    void requestReset() noexcept { resetRequested.store(true); }

    /** Makes room for blocks of this size, so that none of them allocates. While no block runs. */
    void reserve(int numChannels, int numSamples);

    /** For tools that measure the effects; audio thread. While a buffer is set, the layers are not rendered:
        every send bus starts from it at unity, and the effects' outputs alone are heard. It has two channels
        and at least the samples of the blocks that follow, and outlives them. Null goes back to the layers. */
    void setSendInput(const juce::AudioBuffer<float>* input) noexcept { sendInput = input; }

    /** Audio thread: adds everything up to the master EQ to `output`, which has been cleared. `bpm` is the
        tempo of the effects. */
    void render(juce::AudioBuffer<float>& output, const juce::MidiBuffer& midi, float bpm);

private:
    void applyReset();
    void renderLayers(juce::AudioBuffer<float>& output, const juce::MidiBuffer& midi);
    void renderSendInput();
    void playInstruments(const juce::MidiBuffer& midi);
    void addPreFaderSends();
    void processLayerEqs(int numSamples);
    void mixLayers(juce::AudioBuffer<float>& output);
    void processEffects(juce::AudioBuffer<float>& output, float bpm);
    /** Hands the settings of an EQ unit to it. */
    void updateEq(int unit);

    float layerValue(int layer, int n) const noexcept
    {
        return parameters.readParameter(layerParameter(layer, n));
    }

    const ParameterAccess& parameters;
    const MixGains& gains;
    const EqSettings& eqSettings;
    Layers layers{};
    const juce::AudioBuffer<float>* sendInput = nullptr;
    double rate = 44100.0;
    std::atomic<bool> resetRequested{false};

    std::array<bool, numLayers> active{};
    std::array<juce::AudioBuffer<float>, numLayers> layerBuffers;
    std::array<juce::AudioBuffer<float>, numSends> sendBuffers;
    std::array<LayerEq, numEqUnits> eqs;
    std::array<FxSlot, numFxBlocks> fxBlocks;
};

} // namespace quorel
