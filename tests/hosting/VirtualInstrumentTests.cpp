// SPDX-License-Identifier: GPL-3.0-or-later
// What a layer does with its instrument, apart from sound and Easy parameters, which the engine's tests hear.
#include "hosting/HostedParameters.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

namespace quorel::test
{

class VirtualInstrumentTest : public testing::Test
{
protected:
    VirtualInstrument& layer() { return rig.processor.getLayer(0); }

    float hosted(int index)
    {
        const InstanceAccess::Use plugin(layer().instanceAccess());
        return plugin ? hostedParameter(*plugin.get(), index) : -1.0f;
    }

    ProcessorRig rig;
};

TEST_F(VirtualInstrumentTest, LinkedValuesMoveTheFirstTenParameters)
{
    layer().linkedValue(1).setValue(0.3);
    ProcessorRig::pump(100);
    // Tarn's parameters 1 to 12 are live.
    ASSERT_TRUE(rig.load(0, "Tarn"));

    for (const int index : {1, 5, 9})
    {
        const float neighbour = hosted(index + 1);
        layer().linkedValue(index).setValue(0.625);
        EXPECT_TRUE(pumpUntil([&] { return hosted(index) == 0.625f; }, 1000))
            << index << " is " << hosted(index);
        EXPECT_EQ(hosted(index + 1), neighbour);
    }
}

TEST_F(VirtualInstrumentTest, ALoadWaitsForTheUnloadAndCanBeDropped)
{
    ASSERT_TRUE(rig.load(0, "Tarn"));
    juce::PluginDescription zeph;
    for (const auto& type : rig.processor.getKnownPlugins().getTypes())
        if (type.name == "Zeph")
            zeph = type;

    EXPECT_FALSE(layer().requestUnload()) << "without a window it goes at once";
    layer().requestLoad(zeph);
    layer().cancelLoad();
    ProcessorRig::pump(400);
    EXPECT_FALSE(layer().hasInstance());
    EXPECT_EQ(layer().getState(), LayerState::empty);

    layer().requestLoad(zeph);
    EXPECT_TRUE(pumpUntil([&] { return layer().getPluginName() == "Zeph"; }, 3000));
    EXPECT_EQ(layer().getPluginFile(), juce::File(zeph.fileOrIdentifier));
    EXPECT_EQ(layer().getPluginIdentifier(), zeph.createIdentifierString());
}

// Programs and banks chosen by MIDI go past a filter that stops all others, and only once.
TEST_F(VirtualInstrumentTest, ChoicesPassTheFilterOnce)
{
    const auto setting = bankFolderSetting("Fenn2");
    makeUserStore()->write(setting->key, setting->valueName,
                           juce::File(QUOREL_TEST_BANKS).getChildFile("Fenn2").getFullPathName());
    ASSERT_TRUE(rig.load(0, "Fenn2"));
    rig.setLayer(0, layerSlot::blockProgramChange, 1.0f);
    rig.setLayer(0, layerSlot::blockProgramChange + 1, 1.0f);
    rig.setLayer(0, layerSlot::midiChannel, 1.0f);
    const auto program = [this]
    {
        const InstanceAccess::Use plugin(layer().instanceAccess());
        return plugin->getProgramName(0);
    };
    const auto first = program();
    layer().chooseProgram(4);
    rig.play();
    EXPECT_EQ(program(), "Full Organ");

    {
        const InstanceAccess::Use plugin(layer().instanceAccess());
        juce::MidiBuffer midi(juce::MidiMessage::programChange(1, 0));
        juce::AudioBuffer<float> audio(2, 64);
        plugin->processBlock(audio, midi);
    }
    ASSERT_EQ(program(), first);
    rig.play();
    EXPECT_EQ(program(), first) << "the choice was sent again";

    layer().chooseBank(2);
    rig.play();
    EXPECT_EQ(layer().getBankName(), "Rotor");
}

} // namespace quorel::test
