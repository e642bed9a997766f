// SPDX-License-Identifier: GPL-3.0-or-later
#include "JucePeers.h"

#include <algorithm>
#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_dsp/juce_dsp.h>

namespace quorel::peers
{
namespace
{
struct ReverbPeer : Candidate
{
    ReverbPeer() { reverb.setSampleRate(sampleRate); }

    void process(const float* inL, const float* inR, float* outL, float* outR, int numSamples) override
    {
        std::copy_n(inL, numSamples, outL);
        std::copy_n(inR, numSamples, outR);
        reverb.processStereo(outL, outR, numSamples);
    }

    juce::Reverb reverb;
};

/** Any of juce::dsp's processors, in place. */
template <typename Processor>
struct DspPeer : Candidate
{
    template <typename Set>
    DspPeer(int blockLength, Set&& set)
    {
        processor.prepare({sampleRate, static_cast<juce::uint32>(blockLength), 2});
        set(processor);
    }

    void process(const float* inL, const float* inR, float* outL, float* outR, int numSamples) override
    {
        std::copy_n(inL, numSamples, outL);
        std::copy_n(inR, numSamples, outR);
        float* channels[] = {outL, outR};
        juce::dsp::AudioBlock<float> block(channels, 2, static_cast<std::size_t>(numSamples));
        processor.process(juce::dsp::ProcessContextReplacing<float>(block));
    }

    Processor processor;
};

template <typename Processor, typename Set>
std::unique_ptr<Candidate> dsp(int blockLength, Set&& set)
{
    return std::make_unique<DspPeer<Processor>>(blockLength, std::forward<Set>(set));
}

using Peak =
    juce::dsp::ProcessorDuplicator<juce::dsp::IIR::Filter<float>, juce::dsp::IIR::Coefficients<float>>;
using ThreePeaks = juce::dsp::ProcessorChain<Peak, Peak, Peak>;
} // namespace

std::unique_ptr<Candidate> makeJucePeer(const std::string& name, int blockLength)
{
    namespace fx = juce::dsp;

    if (name == "Reverb")
        return std::make_unique<ReverbPeer>();
    if (name == "Chorus")
        return dsp<fx::Chorus<float>>(blockLength, [](auto&) {});
    if (name == "Chorus as flanger")
        return dsp<fx::Chorus<float>>(blockLength,
                                      [](auto& chorus)
                                      {
                                          chorus.setCentreDelay(2.0f);
                                          chorus.setFeedback(0.5f);
                                      });
    if (name == "Phaser")
        return dsp<fx::Phaser<float>>(blockLength, [](auto& phaser) { phaser.setFeedback(0.5f); });
    if (name == "Compressor")
        return dsp<fx::Compressor<float>>(blockLength,
                                          [](auto& compressor)
                                          {
                                              compressor.setThreshold(-20.0f);
                                              compressor.setRatio(4.0f);
                                          });
    if (name == "NoiseGate")
        return dsp<fx::NoiseGate<float>>(blockLength, [](auto& gate) { gate.setThreshold(-30.0f); });
    if (name == "LadderFilter")
        return dsp<fx::LadderFilter<float>>(blockLength,
                                            [](auto& filter)
                                            {
                                                filter.setMode(fx::LadderFilterMode::LPF24);
                                                filter.setCutoffFrequencyHz(2000.0f);
                                                filter.setResonance(0.5f);
                                            });
    if (name == "LadderFilter pair")
        return dsp<fx::ProcessorChain<fx::LadderFilter<float>, fx::LadderFilter<float>>>(
            blockLength,
            [](auto& chain)
            {
                chain.template get<0>().setMode(fx::LadderFilterMode::LPF24);
                chain.template get<0>().setCutoffFrequencyHz(10000.0f);
                chain.template get<1>().setMode(fx::LadderFilterMode::HPF24);
                chain.template get<1>().setCutoffFrequencyHz(50.0f);
            });
    if (name == "StateVariableTPTFilter")
        return dsp<fx::StateVariableTPTFilter<float>>(blockLength, [](auto& filter)
                                                      { filter.setCutoffFrequency(2000.0f); });
    if (name == "IIR peaks")
        return dsp<ThreePeaks>(
            blockLength,
            [](auto& chain)
            {
                const auto peak = [](float frequency)
                { return *fx::IIR::Coefficients<float>::makePeakFilter(sampleRate, frequency, 1.0f, 2.0f); };
                *chain.template get<0>().state = peak(250.0f);
                *chain.template get<1>().state = peak(1000.0f);
                *chain.template get<2>().state = peak(4000.0f);
            });
    return nullptr;
}
} // namespace quorel::peers
