// SPDX-License-Identifier: GPL-3.0-or-later
// The block: graph, fades, controllers, what it leaves alone.
#include "parameters/ParameterCodings.h"
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

    for (int i = 0; i < 256; ++i)
        buffer.setSample(0, i, 0.5f);

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
    const auto ratio = [&] { return level() / reference; };
    const float masterAt = cubicGain(0.4f) / cubicGain(0.63f);
    rig.set(slot::masterVolume, 0.4f);
    EXPECT_NEAR(ratio(), masterAt, 0.15f * masterAt);
    rig.set(slot::masterVolume, 0.63f);
    rig.setLayer(0, layerSlot::pan, 0.0f);
    const auto left = rig.play(10);
    EXPECT_GT(left.peak(0), 0.001f);
    EXPECT_EQ(left.peak(1), 0.0f);
    rig.setLayer(0, layerSlot::pan, 0.5f);
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
    const double before = rig.play(40).amplitudeAt(329.63, rig.rate);
    rig.setLayer(0, 380, 1.0f);
    rig.setLayer(0, 395, 1.0f);
    rig.setLayer(0, 396, 0.9f); // high-pass at 10 kHz
    rig.play(40);
    EXPECT_LT(rig.play(40).amplitudeAt(329.63, rig.rate), 0.2 * before);
    rig.setLayer(0, 380, 0.0f);
    rig.set(slot::masterEq, 1.0f);
    rig.set(slot::masterEq + 15, 1.0f);
    rig.set(slot::masterEq + 16, 0.9f);
    rig.play(40);
    EXPECT_LT(rig.play(40).amplitudeAt(329.63, rig.rate), 0.2 * before);
}

TEST_F(BlockTest, AControllerIsLearnedByTheMessageThatTeachesIt)
{
    rig.processor.getControllerMap().latch(layerParameter(1, layerSlot::pan));
    rig.send(juce::MidiMessage::controllerEvent(9, 74, 127));
    rig.play();
    EXPECT_EQ(rig.processor.getControllerMap().waitingParameter(), 0);
    EXPECT_EQ(rig.processor.getControllerMap().controllerOf(layerParameter(1, layerSlot::pan)), 74);
    EXPECT_EQ(rig.getLayer(1, layerSlot::pan), 1.0f);
    EXPECT_TRUE(rig.processor.getSession().isEdited());
    rig.send(juce::MidiMessage::controllerEvent(1, 74, 0));
    rig.play();
    EXPECT_EQ(rig.getLayer(1, layerSlot::pan), 0.0f);
    EXPECT_EQ(rig.processor.getMidiInput().getMonitor().lastControllerNumber(), 74);
}

TEST_F(BlockTest, ControllerCommandsBindAndFree)
{
    auto& map = rig.processor.getControllerMap();
    map.assign(233, " 20 ");
    EXPECT_EQ(map.controllerOf(233), 20);

    for (const char* text : {"128", "-1", "", "x", "20x", "99999999999"})
        map.assign(234, text);

    EXPECT_EQ(map.controllerOf(234), -1);
    map.assign(233, "7");
    EXPECT_EQ(map.controllerOf(233), 7);
    EXPECT_EQ(decodeParamInt(rig.get(slot::controllerMap + 20)), 0);

    // Several controllers may name one parameter: the highest shows. Entries outside the table do nothing.
    rig.set(slot::controllerMap + 90, encodeParamInt(233));
    EXPECT_EQ(map.controllerOf(233), 90);
    rig.set(slot::controllerMap + 5, encodeParamInt(1507));
    rig.send(juce::MidiMessage::controllerEvent(1, 5, 64));
    rig.play();

    map.latch(300);
    map.unlatch(301);
    EXPECT_EQ(map.waitingParameter(), 300);
    map.unlatch(300);
    EXPECT_EQ(map.waitingParameter(), 0);

    const auto lines = map.exportTable();
    map.clearControllerTable();
    EXPECT_EQ(map.controllerOf(233), -1);
    map.importTable(lines);
    EXPECT_EQ(map.controllerOf(233), 90);
}

TEST_F(BlockTest, AuditionPlaysAndPanicSilences)
{
    ASSERT_TRUE(rig.load(0, "Tarn"));
    rig.processor.getMidiInput().startAudition();
    EXPECT_GT(rig.playSeconds(0.3).peak(), 0.001f);
    const auto& monitor = rig.processor.getMidiInput().getMonitor();
    EXPECT_EQ(monitor.lastNoteNumber(), 60);
    EXPECT_EQ(monitor.lastNoteVelocity(), 127);
    rig.processor.getMidiInput().requestPanic();
    rig.playSeconds(1.0);
    EXPECT_LT(rig.playSeconds(1.0).peak(), 1e-4f);

    // Data bytes above 127 that a careless host passes on.
    rig.send(juce::MidiMessage(0x95, 0xc0, 0xff));
    rig.send(juce::MidiMessage(0xb0, 0x87, 0xfe));
    rig.play();
    EXPECT_EQ(monitor.lastNoteChannel(), 6);
    EXPECT_EQ(monitor.lastNoteNumber(), 127);
    EXPECT_EQ(monitor.lastNoteVelocity(), 127);
    EXPECT_EQ(monitor.lastControllerNumber(), 127);
    EXPECT_EQ(monitor.lastControllerValue(), 127);
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
        float largest = 0.0f;

        for (int i = 1; i < sound.samples.getNumSamples(); ++i)
            largest = std::max(largest,
                               std::abs(sound.samples.getSample(0, i) - sound.samples.getSample(0, i - 1)));

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
    // One note split into blocks of odd lengths, against blocks of 256.
    const auto render = [](const std::vector<int>& sizes)
    {
        ProcessorRig player;
        EXPECT_TRUE(player.load(0, "Orlen"));
        // Until what the load leaves behind has died away.
        player.play(4);
        std::vector<float> out;
        size_t next = 0;

        while (out.size() < 8192)
        {
            const int size = sizes[next++ % sizes.size()];
            juce::AudioBuffer<float> buffer(2, size);
            juce::MidiBuffer midi;

            if (out.empty())
                midi.addEvent(juce::MidiMessage::noteOn(1, 60, 0.8f), 0);

            player.processor.processBlock(buffer, midi);
            out.insert(out.end(), buffer.getReadPointer(0), buffer.getReadPointer(0) + size);
        }

        out.resize(8192);
        return out;
    };
    const auto a = render({256});
    const auto b = render({1, 255, 64, 700, 1000, 32});
    float difference = 0.0f;
    float peak = 0.0f;

    for (size_t i = 0; i < a.size(); ++i)
    {
        difference = juce::jmax(difference, std::abs(a[i] - b[i]));
        peak = juce::jmax(peak, std::abs(a[i]));
    }

    EXPECT_GT(peak, 0.01f);
    EXPECT_LT(difference, 1e-3f);
}

} // namespace quorel::test
