// SPDX-License-Identifier: GPL-3.0-or-later
// A sound goes through a machine without one of its instruments, and comes back whole.
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"
#include "presets/StateChunk.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

namespace quorel::test
{

class MissingInstrumentTest : public testing::Test
{
protected:
    /** Leaves the rig with the instruments of these names alone. */
    void keepOnly(ProcessorRig& rig, const juce::StringArray& names)
    {
        const auto folder = rig.user.scratch.child("few/Ostrand");
        folder.createDirectory();

        for (const auto& name : names)
            ASSERT_TRUE(juce::File(QUOREL_TEST_INSTRUMENTS)
                            .getChildFile(name)
                            .copyDirectoryTo(folder.getChildFile(name)));

        rig.processor.getInstallation().changePluginFolder(folder);
        ASSERT_EQ(rig.processor.getKnownPlugins().getNumTypes(), names.size());
    }

    /** A sound of two layers, the first of them far from its instrument's defaults. */
    juce::MemoryBlock twoLayers()
    {
        ProcessorRig rig;
        EXPECT_TRUE(rig.load(0, "Orlen"));
        EXPECT_TRUE(rig.load(1, "Tarn"));
        rig.processor.getLayer(0).chooseProgram(5);
        ProcessorRig::pump(200);
        rig.setLayer(0, layerSlot::easyValue + 1, 0.9f);
        rig.setLayer(0, layerSlot::pan, 0.2f);
        rig.set(slot::multiAssignment, encodeParamInt(8));
        rig.set(slot::multiKnob, 0.7f);
        rig.set(slot::multiFader, 0.6f);
        return rig.state();
    }

    static StateChunk parse(const juce::MemoryBlock& bytes)
    {
        StateChunk chunk;
        EXPECT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);
        return chunk;
    }

    static juce::AudioBuffer<float> soundOf(const juce::MemoryBlock& bytes)
    {
        ProcessorRig rig;
        rig.restore(bytes);
        EXPECT_EQ(rig.processor.getLayer(0).getPluginName(), "Orlen");
        EXPECT_NEAR(rig.getLayer(0, layerSlot::easyValue + 1), rig.processor.multiControls().runningValue(0),
                    1e-3f);
        rig.setLayer(1, layerSlot::on, 0.0f);
        rig.play(2);
        rig.noteOn(57);
        return rig.playSeconds(0.5).samples;
    }
};

TEST_F(MissingInstrumentTest, ASoundComesBackWholeFromAMachineWithoutItsInstrument)
{
    const auto original = twoLayers();
    const auto expected = soundOf(original);
    EXPECT_GT(expected.getMagnitude(0, expected.getNumSamples()), 0.01f);

    for (const auto& present : {juce::StringArray{"Tarn"}, juce::StringArray{}})
    {
        ProcessorRig elsewhere;
        keepOnly(elsewhere, present);
        elsewhere.restore(original);
        const bool knowsOthers = !present.isEmpty();
        EXPECT_EQ(elsewhere.processor.getLayer(0).isMissing(), knowsOthers);
        EXPECT_EQ(elsewhere.interaction.alerts.contains("|Cant find plugin Orlen"), knowsOthers);
        EXPECT_EQ(elsewhere.processor.getLayer(1).hasInstance(), knowsOthers);

        // What is changed there while the instrument is away is kept too, and a second visit loses nothing.
        elsewhere.set(slot::masterVolume, 0.5f);
        elsewhere.restore(elsewhere.state());
        const auto saved = elsewhere.state();
        const auto before = parse(original);
        const auto after = parse(saved);
        EXPECT_EQ(after.layerSizes, before.layerSizes);
        EXPECT_TRUE(after.hostedStates[0] == before.hostedStates[0]);
        EXPECT_TRUE(after.hostedStates[1] == before.hostedStates[1]);
        EXPECT_EQ(saved.getSize(), original.getSize());

        for (int i = slot::view + 1; i < numHostParameters; ++i)
            EXPECT_EQ(after.parameters[static_cast<size_t>(i)], before.parameters[static_cast<size_t>(i)])
                << i;

        const auto heard = soundOf(saved);
        const float gain = std::pow(0.5f / 0.63f, 3.0f);

        for (int i = 0; i < expected.getNumSamples(); ++i)
            ASSERT_NEAR(heard.getSample(0, i), expected.getSample(0, i) * gain, 1e-5f) << i;
    }
}

TEST_F(MissingInstrumentTest, WhateverEmptiesOrRefillsTheLayerForgetsTheState)
{
    const auto original = twoLayers();
    ProcessorRig rig;
    keepOnly(rig, {"Tarn", "Zeph"});
    const auto declared = [&] { return parse(rig.state()).layerSizes[0]; };
    const std::vector<std::pair<const char*, std::function<void()>>> ways{
        {"emptied", [&] { rig.processor.chooseInstrument(0, nullptr); }},
        {"reset", [&] { rig.processor.resetAllParameters(); }},
        {"another sound", [&] { rig.restore(ProcessorRig().state()); }},
        {"refilled", [&] { ASSERT_TRUE(rig.load(0, "Zeph")); }}};

    for (const auto& [name, way] : ways)
    {
        SCOPED_TRACE(name);
        rig.restore(original);
        ASSERT_TRUE(rig.processor.getLayer(0).isMissing());
        ASSERT_EQ(declared(), parse(original).layerSizes[0]);
        way();
        EXPECT_NE(readParamText(rig.processor, 200, slot::nameTextLength), "Orlen");
        EXPECT_EQ(declared() > 0, rig.processor.getLayer(0).hasInstance());
        EXPECT_FALSE(parse(rig.state()).hostedStates[0] == parse(original).hostedStates[0]);
    }
}

TEST_F(MissingInstrumentTest, AnInstrumentThatWontLoadKeepsItsStateToo)
{
    const auto original = twoLayers();
    ProcessorRig rig;
    keepOnly(rig, {"Orlen"});
    // Cut short after the scan: the list still knows it.
    const auto file = rig.user.scratch.child("few/Ostrand/Orlen/Orlen" + pluginFileEnding());
    ASSERT_TRUE(file.existsAsFile());
    file.replaceWithText("no plug-in any more");
    rig.restore(original);
    EXPECT_TRUE(rig.interaction.alerts.contains("|Cant load plugin Orlen"));
    EXPECT_TRUE(parse(rig.state()).hostedStates[0] == parse(original).hostedStates[0]);

    // Repaired, it plays as before.
    ASSERT_TRUE(juce::File(QUOREL_TEST_INSTRUMENTS)
                    .getChildFile("Orlen/Orlen" + pluginFileEnding())
                    .copyFileTo(file));
    rig.restore(rig.state());
    EXPECT_EQ(rig.processor.getLayer(0).getPluginName(), "Orlen");
    EXPECT_TRUE(parse(rig.state()).hostedStates[0] == parse(original).hostedStates[0]);
}

} // namespace quorel::test
