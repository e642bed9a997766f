// SPDX-License-Identifier: GPL-3.0-or-later
// Instruments that misbehave, and what is left of the sound around them; and what one hears of its host.
#include "LayerRig.h"
#include "hosting/HostedState.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"
#include "presets/StateChunk.h"
#include "support/TestLoop.h"

#include <limits>

namespace quorel::test
{

class FaultyInstrumentTest : public LayerRig
{
protected:
    float peakWithKey()
    {
        rig.play();
        rig.noteOn(60);
        return rig.play(4).peak();
    }

    int alertsWith(const juce::String& text) const
    {
        int count = 0;

        for (const auto& alert : rig.interaction.alerts)
            count += alert.contains(text) ? 1 : 0;

        return count;
    }

    juce::File folder = useFaulty(rig, {"Hexley", "Tarn"});
};

TEST_F(FaultyInstrumentTest, WhatItThrowsEndsAtItsLayer)
{
    ASSERT_TRUE(rig.load(1, "Tarn"));
    EXPECT_GT(peakWithKey(), 0.1f);
    const float alone = rig.play().peak();

    // Known from the scan, it fails later.
    for (const auto* fault : {"throw-entry", "throw-open"})
    {
        setFaults(folder, "Hexley", fault);
        EXPECT_FALSE(layer(0).loadPlugin(known("Hexley"))) << fault;
        EXPECT_EQ(layer(0).getState(), LayerState::failed);
        EXPECT_EQ(alertsWith("Error|Sorry, cannot load Hexley\n\n"), 1);
        rig.interaction.alerts.clear();
    }

    setFaults(folder, "Hexley", "");
    ASSERT_TRUE(rig.load(0, "Hexley"));
    EXPECT_GT(peakWithKey(), alone);

    // Its timer reads the file again.
    setFaults(folder, "Hexley", "throw-process throw-set throw-close");
    EXPECT_TRUE(rig.playUntil([&] { return layer(0).isSilenced(); }, 2000));
    EXPECT_EQ(rig.play().peak(), alone) << "the other layer goes on";
    rig.setLayer(0, layerSlot::easyMapping, encodeParamInt(5));
    rig.setLayer(0, layerSlot::easyValue, 0.9f);
    layer(0).unloadPlugin();
    EXPECT_EQ(layer(0).getState(), LayerState::empty);

    // At the scan.
    for (const auto* fault : {"throw-entry", "throw-open"})
    {
        setFaults(folder, "Hexley", fault);
        rig.processor.getInstallation().scan(false);
        EXPECT_EQ(rig.processor.getKnownPlugins().getNumTypes(), 1) << fault;
    }
}

TEST_F(FaultyInstrumentTest, NoNumbersAndDeafeningOnesAreSilenced)
{
    ASSERT_TRUE(rig.load(1, "Tarn"));

    for (const auto* fault : {"nan", "huge"})
    {
        setFaults(folder, "Hexley", fault);
        ASSERT_TRUE(rig.load(0, "Hexley"));
        EXPECT_FALSE(layer(0).isSilenced());
        rig.play();
        rig.noteOn(60);
        const auto sound = rig.play(4);
        EXPECT_TRUE(sound.isFinite()) << fault;
        EXPECT_GT(sound.peak(), 0.1f) << "the other layer goes on";
        EXPECT_LT(sound.peak(), 1.0f);
        EXPECT_TRUE(layer(0).isSilenced());
        EXPECT_FALSE(layer(1).isSilenced());
        rig.noteOff(60);
        rig.play();
        EXPECT_TRUE(pumpUntil([&] { return !layer(0).isSilenced(); }, 3000)) << "a second later it is over";
        layer(0).unloadPlugin();
    }
}

TEST_F(FaultyInstrumentTest, EachInstancePreparesItsInstrumentsItself)
{
    ProcessorRig other(22050.0, 128);
    rig.processor.getTempo().setBpm(90.0f);
    ASSERT_TRUE(rig.load(0, "Hexley"));
    EXPECT_EQ(told(0, 0), "44100/256") << "not the rate that the process was prepared with last";
    rig.play();
    EXPECT_EQ(told(0, 3), "90");

    // The host prepares again while the instrument is being made.
    setFaults(folder, "Tarn", "slow-prepare");
    std::atomic<bool> prepared{false};
    std::thread host(
        [&]
        {
            while (layer(1).getState() != LayerState::loading)
                std::this_thread::yield();

            std::this_thread::sleep_for(std::chrono::milliseconds(150));
            rig.processor.prepareToPlay(96000.0, 64);
            prepared = !layer(1).hasInstance();
        });
    EXPECT_TRUE(layer(1).loadPlugin(known("Tarn")));
    host.join();
    EXPECT_TRUE(prepared) << "too late to tell anything";
    EXPECT_EQ(told(0, 0), "96000/64");
    EXPECT_EQ(told(1, 0), "96000/64");
}

namespace
{
/** The standalone is an application with a name of its own. */
class NamedApplication final : public juce::JUCEApplication
{
public:
    const juce::String getApplicationName() override { return "Somebody Else"; }

    const juce::String getApplicationVersion() override { return "1"; }

    void initialise(const juce::String&) override {}

    void shutdown() override {}
};
} // namespace

TEST_F(FaultyInstrumentTest, ItsHostIsTheSameInEveryProgram)
{
    std::unique_ptr<NamedApplication> application;

    for (const bool isNamed : {false, true})
    {
        if (isNamed)
            application = std::make_unique<NamedApplication>();

        ASSERT_EQ(juce::JUCEApplicationBase::getInstance() != nullptr, isNamed);
        ASSERT_TRUE(rig.load(isNamed ? 1 : 0, isNamed ? "Tarn" : "Hexley"));
        EXPECT_EQ(told(isNamed ? 1 : 0, 77), "OS-QUOREL");
        EXPECT_EQ(told(isNamed ? 1 : 0, 78), "OS-QUOREL");
        EXPECT_EQ(told(isNamed ? 1 : 0, 79), "257");
    }
}

TEST_F(FaultyInstrumentTest, AStateThatGrowsTakesNoOtherWithIt)
{
    setFaults(folder, "Hexley", "growing-chunk");
    ASSERT_TRUE(rig.load(0, "Hexley"));
    ASSERT_TRUE(rig.load(1, "Tarn"));
    setHosted(0, 7, 0.3f);
    setHosted(1, 7, 0.6f);
    const auto bytes = rig.state();
    StateChunk chunk;
    ASSERT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);

    for (size_t i = 0; i < 2; ++i)
        EXPECT_EQ(chunk.hostedStates[i].getSize(), static_cast<size_t>(chunk.layerSizes[i]));

    rig.restore(bytes);
    EXPECT_EQ(hosted(0, 7), 0.3f);
    EXPECT_EQ(hosted(1, 7), 0.6f);
}

TEST_F(FaultyInstrumentTest, TheLastGoodStateStandsInForOneThatCantBeHad)
{
    ASSERT_TRUE(rig.load(0, "Hexley"));
    setHosted(0, 7, 0.3f);
    const auto good = layer(0).stateToSave();
    setHosted(0, 7, 0.4f);

    for (const auto* fault : {"throw-chunk", "big-chunk", "no-chunk"})
    {
        setFaults(folder, "Hexley", fault);
        EXPECT_TRUE(layer(0).stateToSave() == good) << fault;
        ProcessorRig::pump(120);
    }

    EXPECT_EQ(alertsWith("Hexley in layer 1 gives no state to save"), 1) << "once a load";

    // One that never gave any still comes back with the sound.
    ASSERT_TRUE(rig.load(1, "Tarn"));
    setFaults(folder, "Tarn", "no-chunk");
    layer(1).unloadPlugin();
    ASSERT_TRUE(rig.load(1, "Tarn"));
    const auto bytes = rig.state();
    ProcessorRig::pump(120);
    EXPECT_EQ(alertsWith("Tarn in layer 2 gives no state to save"), 1);
    setFaults(folder, "Hexley", "");
    layer(0).unloadPlugin();
    rig.restore(bytes);
    EXPECT_EQ(layer(1).getPluginName(), "Tarn");
    EXPECT_EQ(hosted(0, 7), 0.3f);
}

TEST_F(FaultyInstrumentTest, AllHundredProgramsComeBack)
{
    setFaults(folder, "Hexley", "hundred-programs");
    ASSERT_TRUE(rig.load(0, "Hexley"));
    const auto state = layer(0).stateToSave();

    for (int program = 0; program < 100; ++program)
    {
        const InstanceAccess::Use plugin(layer(0).instanceAccess());
        plugin->setCurrentProgram(program);
        const auto saved = layer(0).programToSave();
        ASSERT_TRUE(saved);
        EXPECT_TRUE(layer(0).giveState(state, *saved));
        EXPECT_EQ(plugin->getCurrentProgram(), program);
        // As a host may hold it, with six digits.
        EXPECT_TRUE(layer(0).giveState(state, juce::String(*saved, 6).getFloatValue()));
        EXPECT_EQ(plugin->getCurrentProgram(), program);
    }
}

// A block of exactly the bytes, so that a sanitizer sees each read beyond them.
TEST_F(FaultyInstrumentTest, OnlyWholeStatesReachTheInstrument)
{
    ASSERT_TRUE(rig.load(0, "Hexley"));
    const auto chunked = layer(0).stateToSave();
    EXPECT_TRUE(isWholeHostedState(chunked, 0));
    const auto cut = [](const juce::MemoryBlock& bytes, size_t size)
    { return juce::MemoryBlock(bytes.getData(), size); };
    const auto with = [](juce::MemoryBlock bytes, size_t offset, int number)
    {
        const auto big = juce::ByteOrder::swapIfLittleEndian(static_cast<juce::uint32>(number));
        bytes.copyFrom(&big, static_cast<int>(offset), 4);
        return bytes;
    };

    // Two programs of three values each.
    constexpr int header = 156;
    constexpr int program = 56 + 12;
    juce::MemoryBlock bank(header + 2 * program, true);
    bank.copyFrom("CcnK", 0, 4);
    bank.copyFrom("FxBk", 8, 4);
    bank = with(bank, 24, 2);

    for (int i = 0; i < 2; ++i)
    {
        bank.copyFrom("CcnK", header + i * program, 4);
        bank.copyFrom("FxCk", header + i * program + 8, 4);
        bank = with(bank, static_cast<size_t>(header + i * program + 24), 3);
    }

    EXPECT_TRUE(isWholeHostedState(bank, 0));
    EXPECT_TRUE(isWholeHostedState(bank, 1));
    EXPECT_TRUE(isWholeHostedState(cut(with(bank, 24, 0), header + program), 0));
    EXPECT_FALSE(isWholeHostedState(bank, -1));

    for (size_t size = 0; size < bank.getSize(); ++size)
        EXPECT_FALSE(isWholeHostedState(cut(bank, size), 0)) << size;

    for (size_t size = 0; size < chunked.getSize(); ++size)
        EXPECT_FALSE(layer(0).giveState(cut(chunked, size), 0.0f)) << size;

    for (const int absurd : {160, 1 << 20, std::numeric_limits<int>::max(), -1})
    {
        EXPECT_FALSE(isWholeHostedState(with(bank, 24, absurd), 0)) << absurd;
        EXPECT_FALSE(isWholeHostedState(with(bank, header + 24, absurd), 0)) << absurd;
        EXPECT_FALSE(isWholeHostedState(with(bank, header + program + 24, absurd), 0)) << absurd;
        const auto badChunk = with(chunked, header, absurd == 160 ? 1 << 10 : absurd);
        EXPECT_FALSE(layer(0).giveState(badChunk, 0.0f)) << absurd;
    }

    setHosted(0, 7, 0.3f);
    EXPECT_TRUE(layer(0).giveState(chunked, 0.0f));
    EXPECT_EQ(hosted(0, 7), 0.0f);
}

// While an instrument is inside a slow call on another thread, the block goes on, and what it moves arrives.
TEST_F(FaultyInstrumentTest, TheBlockNeverWaitsForAnInstrument)
{
    ASSERT_TRUE(rig.load(0, "Hexley"));
    rig.setLayer(0, layerSlot::easyMapping, encodeParamInt(7));
    const auto easy = layerParameter(0, layerSlot::easyValue);
    rig.set(slot::controllerMap + 74, encodeParamInt(easy));
    rig.play(2);
    setFaults(folder, "Hexley", "slow-chunk");
    std::atomic<bool> saving{false};
    std::atomic<int> numSaved{0};
    std::thread saver(
        [&]
        {
            saving = true;

            for (int i = 0; i < 3; ++i, ++numSaved)
                layer(0).stateToSave();
        });

    while (!saving)
        std::this_thread::yield();

    std::this_thread::sleep_for(std::chrono::milliseconds(50));

    for (const int value : {20, 40, 100})
    {
        rig.send(juce::MidiMessage::controllerEvent(1, 74, value));
        rig.play();
    }

    EXPECT_EQ(numSaved, 0) << "the block waited for the instrument";
    saver.join();
    const float last = rig.get(easy);
    EXPECT_NEAR(last, 100.0f / 127.0f, 0.01f);
    ProcessorRig::pump(150);
    EXPECT_EQ(hosted(0, 7), last);
    EXPECT_EQ(rig.get(easy), last);

    // With the lock free it arrives before the block sounds.
    rig.send(juce::MidiMessage::controllerEvent(1, 74, 10));
    rig.play();
    EXPECT_EQ(hosted(0, 7), rig.get(easy));

    // Two threads at once: table and instrument agree in the end.
    setFaults(folder, "Hexley", "");
    std::thread writer(
        [&]
        {
            for (int i = 0; i < 2000; ++i)
                rig.set(easy, static_cast<float>(i % 100) / 100.0f);
        });

    for (int i = 0; i < 200; ++i)
    {
        rig.set(layerParameter(0, layerSlot::easyMapping), encodeParamInt(7));
        rig.set(easy, static_cast<float>(i % 50) / 100.0f);
    }

    writer.join();
    ProcessorRig::pump(100);
    EXPECT_EQ(hosted(0, 7), rig.get(easy));

    // An unmapped control stays where it is when hosted parameter 0 moves.
    rig.setLayer(0, layerSlot::easyMapping, encodeParamInt(0));
    const float before = rig.get(easy);
    const InstanceAccess::Use plugin(layer(0).instanceAccess());
    layer(0).audioProcessorParameterChanged(plugin.get(), 0, 0.111f);
    EXPECT_EQ(rig.get(easy), before);
}

TEST_F(FaultyInstrumentTest, ManyOutputsAndEmptyNamesDoNoHarm)
{
    setFaults(folder, "Hexley", "channels empty-names");
    ASSERT_TRUE(rig.load(0, "Hexley"));
    EXPECT_EQ(layer(0).getParameterNames()[5], "---");
    rig.setLayer(0, layerSlot::volume, 0.63f);
    rig.play();
    rig.noteOn(60);
    const auto sound = rig.play(2);
    EXPECT_NEAR(sound.peak(1) / sound.peak(0), 2.0f, 0.01f) << "the first two of 32";
}

TEST_F(FaultyInstrumentTest, WhatItSaysOfItselfIsHeldToWhatThereIs)
{
    setFaults(folder, "Hexley", "far-program");
    ASSERT_TRUE(rig.load(0, "Hexley"));
    EXPECT_GT(rig.state().getSize(), 0u);
    EXPECT_GT(peakWithKey(), 0.1f);

    setFaults(folder, "Hexley", "more-outputs");
    ASSERT_TRUE(rig.load(0, "Hexley"));
    EXPECT_GT(peakWithKey(), 0.1f);

    ASSERT_TRUE(rig.load(1, "Tarn"));
    setFaults(folder, "Hexley", "most-outputs");
    ASSERT_TRUE(rig.load(0, "Hexley"));
    EXPECT_GT(peakWithKey(), 0.1f) << "the other layer goes on";

    layer(0).unloadPlugin();
    setFaults(folder, "Hexley", "no-process");
    EXPECT_FALSE(layer(0).loadPlugin(known("Hexley")));
    EXPECT_EQ(layer(0).getState(), LayerState::failed);
}

TEST_F(FaultyInstrumentTest, WhatItAsksForWaitsForNobody)
{
    // In a block, while the layer is emptied.
    setFaults(folder, "Hexley", "size-in-block");
    ASSERT_TRUE(rig.load(0, "Hexley"));
    std::atomic<bool> isDone{false};
    std::thread blocks(
        [&]
        {
            while (!isDone.load())
                rig.play();
        });
    ProcessorRig::pump(50);
    layer(0).unloadPlugin();
    isDone.store(true);
    blocks.join();
    EXPECT_EQ(layer(0).getState(), LayerState::empty);

    // In the midst of a call, where what our timers do might take it away.
    struct Counter final : juce::Timer
    {
        void timerCallback() override { ++ticks; }

        int ticks = 0;
    } counter;

    setFaults(folder, "Hexley", "idle-in-set");
    ASSERT_TRUE(rig.load(0, "Hexley"));
    counter.startTimer(1);
    juce::Thread::sleep(20);
    counter.ticks = 0;
    setHosted(0, 5, 0.5f);
    EXPECT_EQ(counter.ticks, 0);
}

} // namespace quorel::test
