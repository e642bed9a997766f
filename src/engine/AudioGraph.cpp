// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/AudioGraph.h"

#include "hosting/VirtualInstrument.h"
#include "platform/PlatformSeam.h"

namespace quorel
{

namespace
{
constexpr FxPages emptyPages = {takeEmptyPages, returnEmptyPages};

constexpr size_t cell(int i) noexcept
{
    return static_cast<size_t>(i);
}

void addBuffer(juce::AudioBuffer<float>& destination, const juce::AudioBuffer<float>& source, float gain)
{
    for (int channel = 0; channel < destination.getNumChannels(); ++channel)
        destination.addFrom(channel, 0, source, channel, 0, destination.getNumSamples(), gain);
}
} // namespace

AudioGraph::AudioGraph(const ParameterAccess& parameterTable, const MixGains& mixGains,
                       const EqSettings& settings)
    : parameters(parameterTable)
    , gains(mixGains)
    , eqSettings(settings)
{
    for (auto& block : fxBlocks)
        fxConstruct(block, emptyPages);

    initialise(rate);
}

void AudioGraph::initialise(double sampleRate)
{
    rate = sampleRate;
    resetRequested.store(false);
    applyReset();
}

void AudioGraph::applyReset()
{
    for (auto& eq : eqs)
        eqInit(eq, static_cast<float>(rate));

    for (auto& block : fxBlocks)
        fxInit(block, static_cast<float>(rate));
}

void AudioGraph::reserve(int numChannels, int numSamples)
{
    for (auto& buffer : layerBuffers)
        buffer.setSize(numChannels, numSamples, false, false, true);

    for (auto& buffer : sendBuffers)
        buffer.setSize(numChannels, numSamples, false, false, true);
}

void AudioGraph::render(juce::AudioBuffer<float>& output, const juce::MidiBuffer& midi, float bpm)
{
    if (resetRequested.exchange(false))
        applyReset();

    reserve(output.getNumChannels(), output.getNumSamples());

    if (sendInput != nullptr)
        renderSendInput();
    else
        renderLayers(output, midi);

    processEffects(output, bpm);

    if (parameters.readParameter(slot::masterEq) != 0.0f)
    {
        updateEq(masterEqUnit);
        eqProcessBlock(eqs[masterEqUnit], output.getWritePointer(0), output.getWritePointer(1),
                       output.getNumSamples());
    }
}

void AudioGraph::renderSendInput()
{
    for (auto& buffer : sendBuffers)
        for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
            buffer.copyFrom(channel, 0, *sendInput, channel, 0, buffer.getNumSamples());
}

void AudioGraph::renderLayers(juce::AudioBuffer<float>& output, const juce::MidiBuffer& midi)
{
    playInstruments(midi);

    for (auto& buffer : sendBuffers)
        buffer.clear();

    addPreFaderSends();
    processLayerEqs(output.getNumSamples());
    mixLayers(output);
}

void AudioGraph::playInstruments(const juce::MidiBuffer& midi)
{
    float solos = 0.0f;

    for (const int layer : {1, 0, 2, 3})
        solos += layerValue(layer, layerSlot::solo);

    const bool anySolo = solos != 0.0f;

    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto& buffer = layerBuffers[cell(layer)];
        buffer.clear();
        active[cell(layer)] = (!anySolo || layerValue(layer, layerSlot::solo) != 0.0f) &&
                              layerValue(layer, layerSlot::on) != 0.0f;

        if (active[cell(layer)])
            layers[cell(layer)]->processBlock(buffer, midi);
    }
}

void AudioGraph::addPreFaderSends()
{
    // The plain knob value, not cubed: a pre-fader and a post-fader send at one position differ.
    for (int layer = 0; layer < numLayers; ++layer)
        for (int send = 0; send < numSends; ++send)
            if (layerValue(layer, layerSlot::sendPreFader + send) != 0.0f)
                addBuffer(sendBuffers[cell(send)], layerBuffers[cell(layer)],
                          layerValue(layer, layerSlot::sendLevel + send));
}

void AudioGraph::processLayerEqs(int numSamples)
{
    if (numSamples == 0)
        return;

    static_assert(numLayers <= maxEqUnitsTogether);
    std::array<EqBlock, numLayers> blocks{};
    int numBlocks = 0;

    for (int layer = 0; layer < numLayers; ++layer)
    {
        if (!active[cell(layer)] || !eqSettings[cell(layer)].on.load(std::memory_order_relaxed))
            continue;

        auto& buffer = layerBuffers[cell(layer)];
        updateEq(layer);
        blocks[cell(numBlocks++)] = {&eqs[cell(layer)], buffer.getWritePointer(0), buffer.getWritePointer(1)};
    }

    eqProcessBlocks(blocks.data(), numBlocks, numSamples);
}

void AudioGraph::updateEq(int unit)
{
    constexpr auto relaxed = std::memory_order_relaxed;
    auto& eq = eqs[cell(unit)];
    const auto& settings = eqSettings[cell(unit)];
    eqSetSampleRate(eq, static_cast<float>(rate));
    eq.enabled = settings.on.load(relaxed) ? 1 : 0;

    for (int i = 0; i < numEqBands; ++i)
    {
        const auto& band = settings.bands[cell(i)];
        eqSetBand(eq, i, band.on.load(relaxed), band.gain.load(relaxed), band.freq.load(relaxed),
                  band.width.load(relaxed));
    }

    eqSetFilters(eq, settings.lowPassOn.load(relaxed), settings.lowPassFreq.load(relaxed),
                 settings.highPassOn.load(relaxed), settings.highPassFreq.load(relaxed));
}

void AudioGraph::mixLayers(juce::AudioBuffer<float>& output)
{
    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto& buffer = layerBuffers[cell(layer)];

        for (int channel = 0; channel < juce::jmin(2, buffer.getNumChannels()); ++channel)
            buffer.applyGain(channel, 0, buffer.getNumSamples(), gains.layerGain(channel, layer));

        for (int send = 0; send < numSends; ++send)
            if (layerValue(layer, layerSlot::sendPreFader + send) == 0.0f)
                addBuffer(sendBuffers[cell(send)], buffer, gains.sendGain(send, layer));

        addBuffer(output, buffer, 1.0f);
    }
}

void AudioGraph::processEffects(juce::AudioBuffer<float>& output, float bpm)
{
    for (int k = 0; k < numFxBlocks; ++k)
    {
        // What is sent into a block that is switched off is dropped.
        const float on = parameters.readParameter(slot::fxOn + k);

        if (on == 0.0f)
            continue;

        auto& block = fxBlocks[cell(k)];
        auto& buffer = sendBuffers[cell(k)];
        const int type = fxTypeFromParameter(parameters.readParameter(slot::fxType + k));
        fxSetMix(block, parameters.readParameter(slot::fxVolume + k),
                 parameters.readParameter(slot::fxMix + k), parameters.readParameter(slot::fxPan + k));

        if (type != block.type)
        {
            block.type = type;
            fxInit(block, block.sampleRate);
        }

        float values[numFxParameters];

        for (int j = 0; j < numFxParameters; ++j)
            values[j] = parameters.readParameter(fxParameter(k, j));

        fxUpdate(block, values, bpm);
        block.active = on > 0.5f ? 0 : 1;
        fxProcessBlock(block, buffer.getWritePointer(0), buffer.getWritePointer(1), buffer.getNumSamples());
        addBuffer(output, buffer, 1.0f);
    }
}

} // namespace quorel
