// SPDX-License-Identifier: GPL-3.0-or-later
// The block: graph, fades, what it leaves alone.
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

namespace quorel::test
{

class BlockTest : public testing::Test
{
protected:
    /** A held note on layer 1, past its attack. */
    void startTone()
    {
        ASSERT_TRUE(rig.load(0, "Tarn"));
        rig.noteOn(64, 0.8f);
        rig.playSeconds(0.5);
    }

    float level() { return rig.play(40).rms(); }

    ProcessorRig rig;
};

TEST_F(BlockTest, WithoutInstrumentsIsSilentWhateverComesIn)
{
    juce::AudioBuffer<float> buffer(2, 256);
    buffer.setSample(0, 100, 0.5f);
    rig.noteOn(60);
    rig.processor.processBlock(buffer, rig.midi);
    EXPECT_EQ(buffer.getMagnitude(0, 256), 0.0f);
    EXPECT_TRUE(rig.midi.isEmpty());
}

TEST_F(BlockTest, FadersPanAndMasterScaleTheSound)
{
    startTone();
    const float reference = level();
    ASSERT_GT(reference, 0.001f);
    const float masterAt = std::pow(0.4f / 0.63f, 3.0f);
    rig.set(slot::masterVolume, 0.4f);
    EXPECT_NEAR(level() / reference, masterAt, 0.15f * masterAt);
    rig.set(slot::masterVolume, 0.63f);

    // Up to the middle a side keeps its level, and then falls in a straight line to nothing.
    for (const auto& [pan, left, right] :
         {std::tuple(0.0f, 1.0f, 0.0f), std::tuple(0.25f, 1.0f, 0.5f), std::tuple(0.75f, 0.5f, 1.0f)})
    {
        rig.setLayer(0, layerSlot::pan, 0.5f);
        const float gain = rig.processor.getGains().layerGain(0, 0);
        rig.setLayer(0, layerSlot::pan, pan);
        EXPECT_FLOAT_EQ(rig.processor.getGains().layerGain(0, 0), left * gain) << pan;
        EXPECT_FLOAT_EQ(rig.processor.getGains().layerGain(1, 0), right * gain) << pan;
    }

    rig.setLayer(0, layerSlot::pan, 0.0f);
    const auto sound = rig.play(10);
    EXPECT_GT(sound.peak(0), 0.001f);
    EXPECT_EQ(sound.peak(1), 0.0f);
    rig.set(slot::masterMute, 0.5f);
    EXPECT_GT(level(), 0.001f);
    rig.set(slot::masterMute, 1.0f);
    EXPECT_EQ(level(), 0.0f);
}

TEST_F(BlockTest, SoloAndOnDecideWhoPlays)
{
    startTone();
    rig.setLayer(1, layerSlot::solo, 1.0f);
    EXPECT_EQ(level(), 0.0f);
    rig.setLayer(0, layerSlot::solo, 0.1f);
    EXPECT_GT(level(), 0.001f);
    rig.setLayer(0, layerSlot::on, 0.0f);
    EXPECT_EQ(level(), 0.0f);
    rig.setLayer(1, layerSlot::solo, 0.0f);
    EXPECT_EQ(level(), 0.0f);
}

TEST_F(BlockTest, SendsReachTheirEffectBlocks)
{
    // "None" passes its input dry when the mix stands at 0: the send alone is then heard, at the block's
    // level.
    startTone();
    rig.set(slot::fxVolume + 1, 0.75f);
    rig.set(slot::fxMix + 1, 0.0f);
    const float direct = level();
    rig.setLayer(0, layerSlot::sendLevel + 1, 0.5f);
    EXPECT_NEAR(level(), direct, 0.05f * direct) << "a block that is off drops its send";
    rig.set(slot::fxOn + 1, 1.0f);
    // Post-fader: 4 * 0.5^3 = 0.5 on top of the direct sound.
    EXPECT_NEAR(level() / direct, 1.5f, 0.1f);
    // Pre-fader: the plain knob value, whatever the fader does.
    rig.setLayer(0, layerSlot::sendPreFader + 1, 1.0f);
    rig.setLayer(0, layerSlot::volume, 0.0f);
    EXPECT_NEAR(level() / direct, 0.5f, 0.05f);
    rig.setLayer(0, layerSlot::solo, 0.0f);
    rig.set(slot::fxPan + 1, 1.0f);
    const auto panned = rig.play(10);
    EXPECT_LT(panned.peak(0), 1e-6f);
    EXPECT_GT(panned.peak(1), 1e-3f);
}

TEST_F(BlockTest, LayerEqAndMasterEqAreHeard)
{
    startTone();
    const auto fundamental = [&] { return rig.play(40).amplitudeAt(329.63, rig.rate); };
    const double before = fundamental();

    for (const int eq : {layerParameter(0, layerSlot::eq), slot::masterEq})
    {
        rig.set(eq, 1.0f);
        rig.set(eq + 15, 1.0f);
        rig.set(eq + 16, 0.9f); // high-pass at 10 kHz
        rig.play(40);
        EXPECT_LT(fundamental(), 0.2 * before) << eq;
        rig.set(eq, 0.0f);
    }
}

TEST_F(BlockTest, AuditionPlaysAndPanicSilences)
{
    ASSERT_TRUE(rig.load(0, "Tarn"));
    auto& input = rig.processor.getMidiInput();
    input.startAudition();
    EXPECT_GT(rig.playSeconds(0.3).peak(), 0.001f);
    EXPECT_EQ(input.getMonitor().lastNoteNumber(), 60);
    EXPECT_EQ(input.getMonitor().lastNoteVelocity(), 127);
    input.requestPanic();
    rig.playSeconds(1.0);
    EXPECT_LT(rig.playSeconds(1.0).peak(), 1e-4f);

    // Data bytes above 127 that a careless host passes on.
    rig.send(juce::MidiMessage(0x95, 0xc0, 0xff));
    rig.send(juce::MidiMessage(0xb0, 0x87, 0xfe));
    rig.play();
    EXPECT_EQ(input.getMonitor().lastNoteChannel(), 6);
    EXPECT_EQ(input.getMonitor().lastNoteNumber(), 127);
    EXPECT_EQ(input.getMonitor().lastNoteVelocity(), 127);
    EXPECT_EQ(input.getMonitor().lastControllerNumber(), 127);
    EXPECT_EQ(input.getMonitor().lastControllerValue(), 127);
}

TEST_F(BlockTest, FadesAreCountedInBlocksOfUpTo64SamplesAndLastNoLongerInBiggerOnes)
{
    struct Case
    {
        double rate;
        int block;
        /** How many blocks the two fades take, the last of them included. */
        int out;
        int in;
    };

    // 0.668 s and 0.268 s at most: from blocks of 64 at 48 kHz on, the count falls as the length rises.
    for (const auto& [rate, block, out, in] :
         {Case{48000.0, 64, 501, 201}, Case{44100.0, 17, 501, 201}, Case{48000.0, 512, 63, 25},
          Case{96000.0, 2048, 32, 13}, Case{44100.0, 48000, 1, 1}})
    {
        ProcessorRig other(rate, block);
        auto& change = other.processor.getSoundChange();
        const auto state = [&] { return change.getFade().getState(); };
        ASSERT_TRUE(change.requestPreset("99 Default Preset", "Default Preset"));
        other.play(out - 1);
        EXPECT_EQ(state(), ChangeState::fadingOut) << block;

        // The block that ends the fade does nothing at all: neither output nor events are touched.
        juce::AudioBuffer<float> buffer(2, block);
        buffer.setSample(0, 3, 0.25f);
        other.noteOn(60);
        other.processor.processBlock(buffer, other.midi);
        EXPECT_EQ(state(), ChangeState::waiting) << block;
        EXPECT_EQ(change.getFade().gain(), 0.0f);
        EXPECT_EQ(buffer.getSample(0, 3), 0.25f);
        EXPECT_FALSE(other.midi.isEmpty());

        ASSERT_TRUE(pumpUntil([&] { return state() == ChangeState::fadingIn; }, 5000));
        other.play(in - 1);
        EXPECT_EQ(state(), ChangeState::fadingIn) << block;
        other.play(1);
        EXPECT_EQ(state(), ChangeState::idle) << block;
        EXPECT_EQ(change.getFade().gain(), 1.0f);
    }
}

TEST_F(BlockTest, BigStepsOfAFadeAreSmoothed)
{
    ProcessorRig big(48000.0, 2048);
    ASSERT_TRUE(big.load(0, "Tarn"));
    big.noteOn(64, 0.8f);
    big.playSeconds(0.5);
    const auto steady = big.play(8);
    ASSERT_TRUE(big.processor.getSoundChange().requestPreset("99 Default Preset", "Default Preset"));
    const auto fading = big.play(8);

    const auto largestStep = [](const Sound& sound)
    {
        const auto* left = sound.samples.getReadPointer(0);
        float largest = 0.0f;

        for (int i = 1; i < sound.samples.getNumSamples(); ++i)
            largest = std::max(largest, std::abs(left[i] - left[i - 1]));

        return largest;
    };

    EXPECT_LT(fading.peak(), steady.peak() * 1.05f);
    EXPECT_LT(largestStep(fading), 1.1f * largestStep(steady)) << "no click between blocks";
}

TEST_F(BlockTest, MetersRiseInTheBlockAndFallInTheTimer)
{
    startTone();
    const auto& meter = rig.processor.getMeter();
    const float peak = rig.play(100).peak(0);
    EXPECT_GE(meter.peakLeft(), 0.99f * peak);
    const float before = meter.peakLeft();
    rig.setLayer(0, layerSlot::on, 0.0f);
    ProcessorRig::pump(500);
    EXPECT_LT(meter.peakLeft(), 0.3f * before);
    EXPECT_GT(meter.cpuPercent(), 0.0f);
    EXPECT_LE(meter.cpuPercent(), 100.0f);
}

TEST_F(BlockTest, AnyBlockSizeSoundsTheSame)
{
    constexpr size_t length = 8192;
    const auto render = [](const std::vector<int>& sizes)
    {
        ProcessorRig player;
        EXPECT_TRUE(player.load(0, "Orlen"));
        // Until what the load leaves behind has died away.
        player.play(4);
        juce::MidiBuffer midi(juce::MidiMessage::noteOn(1, 60, 0.8f));
        std::vector<float> out;

        for (size_t next = 0; out.size() < length; ++next)
        {
            juce::AudioBuffer<float> buffer(2, sizes[next % sizes.size()]);
            player.processor.processBlock(buffer, midi);
            midi.clear();
            out.insert(out.end(), buffer.getReadPointer(0),
                       buffer.getReadPointer(0) + buffer.getNumSamples());
        }

        return out;
    };
    const auto even = render({256});
    const auto odd = render({1, 255, 64, 700, 1000, 32});
    EXPECT_GT(*std::max_element(even.begin(), even.end()), 0.01f);

    for (size_t i = 0; i < length; ++i)
        ASSERT_NEAR(even[i], odd[i], 1e-3f) << i;
}

} // namespace quorel::test
