// SPDX-License-Identifier: GPL-3.0-or-later
// Instruments that come and go while others are asked for, and what is chosen in them.
#include "LayerRig.h"
#include "parameters/ParameterText.h"
#include "support/TestLoop.h"

namespace quorel::test
{

namespace
{
/** A window that takes its time to go away, as all do. */
class OpenWindow final : public InstrumentWindow
{
public:
    bool isShowing() const override { return true; }
};

constexpr int longerThanLeaving = 900;
} // namespace

class LayerStateTest : public LayerRig
{
protected:
    LayerStateTest() { useFaulty(rig, {"Hexley", "Tarn"}); }

    void choose(const char* name)
    {
        const auto description = name != nullptr ? known(name) : juce::PluginDescription();
        rig.processor.chooseInstrument(0, name != nullptr ? &description : nullptr);
    }

    /** Hexley with its window open and parameter 7 at 0.3. */
    void loadWithWindow()
    {
        ASSERT_TRUE(rig.load(0, "Hexley"));
        setHosted(0, 7, 0.3f);
        layer().setWindow(std::make_unique<OpenWindow>());
    }

    juce::String nameInSound()
    {
        return readParamText(rig.processor, layerParameter(0, layerSlot::pluginNameText),
                             slot::nameTextLength);
    }
};

TEST_F(LayerStateTest, NothingThatWasPendingReachesWhatCameSince)
{
    loadWithWindow();
    EXPECT_TRUE(layer().requestUnload());
    EXPECT_EQ(layer().getState(), LayerState::leaving);
    EXPECT_FALSE(layer().isWindowShowing());
    EXPECT_EQ(rig.play(4).peak(), 0.0f);

    // A sound asks for another one meanwhile: no countdown may hit that.
    ASSERT_TRUE(layer().loadPlugin(known("Tarn")));
    ProcessorRig::pump(longerThanLeaving);
    EXPECT_EQ(layer().getState(), LayerState::playing);
    EXPECT_EQ(layer().getPluginName(), "Tarn");

    // Nor may a requested load, or a program change, hit what a sound loads.
    layer().sendMidi(juce::MidiMessage::programChange(1, 5));
    choose("Hexley");
    ASSERT_TRUE(layer().loadPlugin(known("Tarn")));
    ProcessorRig::pump(400);
    rig.play(2);
    EXPECT_EQ(layer().getPluginName(), "Tarn");
    EXPECT_EQ(told(0, 2), "0") << "a program change meant for another instrument";
}

TEST_F(LayerStateTest, ChoosingTheOneThatLeavesKeepsIt)
{
    loadWithWindow();
    choose(nullptr);
    ASSERT_EQ(layer().getState(), LayerState::leaving);
    EXPECT_TRUE(layer().stateToSave().isEmpty()) << "no part of the sound any more";
    choose("Hexley");
    EXPECT_EQ(layer().getState(), LayerState::playing);
    EXPECT_FALSE(layer().stateToSave().isEmpty());
    ProcessorRig::pump(longerThanLeaving);
    EXPECT_EQ(layer().getState(), LayerState::playing);
    EXPECT_EQ(nameInSound(), "Hexley");
    EXPECT_EQ(hosted(0, 7), 0.3f);
}

TEST_F(LayerStateTest, TheNewestChoiceWaitsBehindTheOneThatLeaves)
{
    loadWithWindow();
    choose("Tarn");
    ASSERT_EQ(layer().getState(), LayerState::leaving);
    EXPECT_FALSE(layer().stateToSave().isEmpty()) << "saved now, the sound would lose Tarn";
    EXPECT_TRUE(pumpUntil([this] { return layer().getPluginName() == "Tarn"; }, 3000));

    layer().setWindow(std::make_unique<OpenWindow>());
    choose("Hexley");
    choose(nullptr);
    ProcessorRig::pump(longerThanLeaving);
    EXPECT_EQ(layer().getState(), LayerState::empty);
    EXPECT_EQ(nameInSound(), "");
    EXPECT_TRUE(layer().stateToSave().isEmpty());

    choose("Hexley");
    EXPECT_EQ(layer().getState(), LayerState::loading);
    EXPECT_FALSE(layer().stateToSave().isEmpty());
    choose("Tarn");
    EXPECT_TRUE(pumpUntil([this] { return layer().hasInstance(); }, 3000));
    EXPECT_EQ(layer().getPluginName(), "Tarn");
}

// No message loop runs here, so whatever waited for it would wait for ever.
TEST_F(LayerStateTest, AnyThreadSavesWhateverTheLayerDoes)
{
    ASSERT_TRUE(rig.load(0, "Hexley"));
    const auto onThread = [this]
    {
        juce::MemoryBlock state;
        std::optional<float> program;
        std::thread thread(
            [&]
            {
                state = layer().stateToSave();
                program = layer().programToSave();
            });
        thread.join();
        return std::make_pair(state.getSize() > 0, program.has_value());
    };
    EXPECT_EQ(onThread(), std::make_pair(true, true));
    choose("Tarn");
    EXPECT_EQ(onThread(), std::make_pair(true, false));
    layer().cancelLoad();
    EXPECT_EQ(onThread(), std::make_pair(false, false));
    layer().setMissing("Hexley");
    EXPECT_EQ(onThread(), std::make_pair(true, false));
    EXPECT_TRUE(layer().giveState(juce::MemoryBlock("bytes", 5), 0.5f));
    EXPECT_TRUE(layer().stateToSave() == juce::MemoryBlock("bytes", 5));
    layer().clearMissing();
    EXPECT_EQ(onThread(), std::make_pair(false, false));
}

using LayerChoiceTest = LayerRig;

TEST_F(LayerChoiceTest, LinkedValuesMoveTheFirstTenParameters)
{
    layer().linkedValue(1).setValue(0.3);
    ProcessorRig::pump(100);
    // Tarn's parameters 1 to 12 are live.
    ASSERT_TRUE(rig.load(0, "Tarn"));

    for (const int index : {1, 5, 9})
    {
        const float neighbour = hosted(0, index + 1);
        layer().linkedValue(index).setValue(0.625);
        EXPECT_TRUE(pumpUntil([&] { return hosted(0, index) == 0.625f; }, 1000))
            << index << " is " << hosted(0, index);
        EXPECT_EQ(hosted(0, index + 1), neighbour);
    }
}

// Programs and banks chosen by MIDI go past a filter that stops all others, and only once.
TEST_F(LayerChoiceTest, ChoicesPassTheFilterOnce)
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
