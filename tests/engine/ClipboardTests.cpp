// SPDX-License-Identifier: GPL-3.0-or-later
// Layers and effect blocks as a whole: copied, pasted, exchanged and reset, judged by what is heard.
#include "engine/EffectClipboard.h"
#include "engine/LayerClipboard.h"
#include "parameters/ParameterCodings.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

namespace quorel::test
{

class ClipboardTest : public testing::Test
{
protected:
    static constexpr int lowNote = 48;
    static constexpr int highNote = 72;

    VirtualInstrument& layer(int i) { return rig.processor.getLayer(i); }

    /** An instrument with another program than its first, on one side. */
    void fill(int i, const char* name, int program, float pan)
    {
        ASSERT_TRUE(rig.load(i, name));
        layer(i).chooseProgram(program);
        rig.setLayer(i, layerSlot::pan, pan);
        rig.pump(200);
    }

    Sound heard(int note)
    {
        // What has been silenced before must not count, nor the block that a new transpose costs.
        rig.send(juce::MidiMessage::allSoundOff(1));
        rig.playSeconds(2.0);
        rig.noteOn(note);
        auto sound = rig.playSeconds(0.5);
        rig.noteOff(note);
        return sound;
    }

    /** By the sides' levels, and the two lowest partials: what tells one instrument from another. */
    static void expectAlike(const Sound& a, const Sound& b, int note)
    {
        const auto alike = [](double first, double second)
        { EXPECT_NEAR(first, second, 0.1 * first + 0.002); };
        SCOPED_TRACE(note);
        const double hz = juce::MidiMessage::getMidiNoteInHertz(note);

        for (const int channel : {0, 1})
            alike(static_cast<double>(a.peak(channel)), static_cast<double>(b.peak(channel)));

        for (const double partial : {hz, 2.0 * hz})
            alike(a.amplitudeAt(partial, 44100.0), b.amplitudeAt(partial, 44100.0));
    }

    ProcessorRig rig;
};

TEST_F(ClipboardTest, SwappedLayersSoundAsBefore)
{
    fill(0, "Hexley", 3, 0.0f);
    fill(2, "Glasson", 2, 1.0f);
    rig.setLayer(0, layerSlot::keyMax, 60.0f / 127.0f);
    rig.setLayer(2, layerSlot::keyMin, 60.6f / 127.0f);
    rig.setLayer(2, layerSlot::eq + eqSlot::on, 1.0f);
    rig.setLayer(2, layerSlot::eq + eqSlot::lowPassOn, 1.0f);
    rig.setLayer(2, layerSlot::eq + eqSlot::lowPassFreq, 0.6f);
    layer(0).loadEasyMapping({"7"});
    // A knob on the first layer's volume, one on its first Easy value, a third one on the layer between.
    const int targets[] = {1, 7, 18 + 1};

    for (int t = 0; t < 3; ++t)
    {
        rig.set(slot::multiAssignment + t, encodeParamInt(targets[t]));
        rig.set(slot::multiKnob + t, 0.4f);
    }

    rig.set(slot::multiFader, 0.5f);
    const auto low = heard(lowNote);
    const auto high = heard(highNote);
    ASSERT_GT(low.peak(0), 0.01f);
    ASSERT_GT(high.peak(1), 0.005f);
    const float volume = rig.getLayer(0, layerSlot::volume);

    rig.processor.getSession().markSaved();
    ASSERT_TRUE(swapLayers(rig.processor, 0, 2));
    EXPECT_TRUE(rig.processor.getSession().isEdited());
    EXPECT_EQ(layer(0).getPluginName(), "Glasson");
    EXPECT_EQ(layer(2).getPluginName(), "Hexley");
    EXPECT_EQ(decodeParamInt(rig.getLayer(2, layerSlot::easyMapping)), 7);
    expectAlike(low, heard(lowNote), lowNote);
    expectAlike(high, heard(highNote), highNote);

    // The knobs have gone along and stand where they stood.
    const auto& multi = rig.processor.multiControls();
    EXPECT_EQ(multi.targetParameter(0), layerParameter(2, layerSlot::volume));
    EXPECT_EQ(multi.targetParameter(1), layerParameter(2, layerSlot::easyValue));
    EXPECT_EQ(multi.targetParameter(2), layerParameter(1, layerSlot::volume));
    EXPECT_EQ(rig.get(slot::multiKnob), 0.4f);
    EXPECT_EQ(rig.getLayer(2, layerSlot::volume), volume);
    rig.set(slot::multiFader, 0.0f);
    EXPECT_NEAR(rig.getLayer(2, layerSlot::volume), volume + 0.1f, 1e-5f);

    // One step takes it back: the move of the fader above is a test's, not the user's.
    ASSERT_TRUE(rig.processor.getUndo().undo());
    EXPECT_TRUE(rig.playUntil([&] { return layer(0).getPluginName() == "Hexley"; }));
}

TEST_F(ClipboardTest, APastedLayerIsThereTwice)
{
    fill(0, "Hexley", 6, 0.0f);
    fill(1, "Tarn", 2, 0.0f);
    rig.set(slot::multiAssignment, encodeParamInt(18 + 7));
    rig.setLayer(1, layerSlot::on, 0.0f);
    const auto alone = heard(highNote);
    copyLayer(rig.processor, 0);
    rig.setLayer(0, layerSlot::volume, 0.0f);
    ASSERT_TRUE(hasCopiedLayer());
    ASSERT_TRUE(pasteLayer(rig.processor, 1));
    EXPECT_EQ(layer(1).getPluginName(), "Hexley");
    EXPECT_EQ(rig.getLayer(1, layerSlot::on), 1.0f);
    EXPECT_EQ(rig.processor.multiControls().targetParameter(0), noParameter) << "it was the old instrument's";
    expectAlike(alone, heard(highNote), highNote);

    // Into another instance, and over a missing instrument; an empty layer empties.
    ProcessorRig other;
    other.processor.getLayer(3).setMissing("Nothing like it");
    ASSERT_TRUE(pasteLayer(other.processor, 3));
    EXPECT_EQ(other.processor.getLayer(3).getPluginName(), "Hexley");
    copyLayer(rig.processor, 3);
    ASSERT_TRUE(pasteLayer(rig.processor, 1));
    EXPECT_FALSE(layer(1).hasInstance());

    // Reset keeps the instrument and what it plays.
    rig.setLayer(0, layerSlot::pan, 0.9f);
    rig.setLayer(0, layerSlot::eq, 1.0f);
    ASSERT_TRUE(resetLayerSettings(rig.processor, 0));
    EXPECT_EQ(rig.getLayer(0, layerSlot::pan), 0.5f);
    EXPECT_EQ(rig.getLayer(0, layerSlot::eq), 0.0f);
    EXPECT_NEAR(rig.getLayer(0, layerSlot::volume), 0.63f, 1e-6f);
    EXPECT_EQ(layer(0).getPluginName(), "Hexley");
    EXPECT_GT(heard(highNote).peak(), 0.01f);
}

TEST_F(ClipboardTest, SwappedEffectsSoundAsBefore)
{
    fill(0, "Hexley", 1, 0.5f);
    const auto setUp = [this](int block, int type, float send)
    {
        rig.set(slot::fxType + block, static_cast<float>(type) / 32.0f);
        rig.set(slot::fxOn + block, 1.0f);
        rig.setLayer(0, layerSlot::sendLevel + block, send);

        for (int j = 0; j < numFxParameters; ++j)
            rig.set(fxParameter(block, j), 0.5f);
    };
    setUp(0, 15, 0.8f);
    setUp(3, 20, 0.3f);
    rig.setLayer(0, layerSlot::sendPreFader + 3, 1.0f);
    const auto before = heard(lowNote);
    ASSERT_TRUE(swapEffects(rig.processor, 0, 3));
    EXPECT_FLOAT_EQ(rig.get(slot::fxType), 20.0f / 32.0f);
    EXPECT_EQ(rig.getLayer(0, layerSlot::sendPreFader), 1.0f);
    EXPECT_FLOAT_EQ(rig.getLayer(0, layerSlot::sendLevel + 3), 0.8f);
    expectAlike(before, heard(lowNote), lowNote);

    copyEffect(rig.processor, 3);
    ASSERT_TRUE(pasteEffect(rig.processor, 1));
    EXPECT_FLOAT_EQ(rig.get(slot::fxType + 1), 15.0f / 32.0f);
    EXPECT_EQ(rig.get(fxParameter(1, 9)), 0.5f);
    EXPECT_EQ(rig.getLayer(0, layerSlot::sendLevel + 1), 0.0f) << "what is sent stays";
    ASSERT_TRUE(resetEffect(rig.processor, 1));
    EXPECT_EQ(rig.get(slot::fxType + 1), 0.0f);
    EXPECT_EQ(rig.get(slot::fxOn + 1), 0.0f);
}

TEST_F(ClipboardTest, NothingIsPastedWhileAnotherSoundIsOnItsWay)
{
    copyLayer(rig.processor, 0);
    copyEffect(rig.processor, 0);
    rig.play();
    ASSERT_TRUE(rig.processor.getSoundChange().requestPreset("99 Default Preset", "Default Preset"));
    EXPECT_FALSE(pasteLayer(rig.processor, 1));
    EXPECT_FALSE(swapLayers(rig.processor, 0, 1));
    EXPECT_FALSE(resetLayerSettings(rig.processor, 0));
    EXPECT_FALSE(pasteEffect(rig.processor, 1));
    EXPECT_FALSE(swapEffects(rig.processor, 0, 1));
    EXPECT_EQ(rig.interaction.alerts.size(), 5);
}

} // namespace quorel::test
