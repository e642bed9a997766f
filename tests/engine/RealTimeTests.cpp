// SPDX-License-Identifier: GPL-3.0-or-later
// What the audio thread may not do, and what several threads may do at once.
#include "parameters/ParameterCodings.h"
#include "support/AllocationGuard.h"
#include "support/FaultyInstruments.h"

#include <gtest/gtest.h>

#include <thread>

namespace quorel::test
{

TEST(AudioThread, TheGuardOfTheNextTestSeesTheHeap)
{
    const AllocationGuard guard;
    EXPECT_EQ(guard.heapCalls(), 0);
    {
        const auto text = std::make_unique<juce::String>("on the heap");
        EXPECT_EQ(text->length(), 11);
    }
    EXPECT_GE(guard.heapCalls(), 2);
}

TEST(AudioThread, TakesNoMemory)
{
    ProcessorRig rig;
    int layer = 0;

    for (const char* name : {"Orlen", "Dorvik", "Hexley2"})
        ASSERT_TRUE(rig.load(layer++, name));

    // One with 32 outputs.
    const auto folder = useFaulty(rig, {"Tarn"});
    setFaults(folder, "Tarn", "channels");
    ASSERT_TRUE(rig.load(layer, "Tarn"));

    for (int l = 0; l < numLayers; ++l)
    {
        for (int n = layerSlot::eq; n <= layerSlot::eqEnd; ++n)
            rig.setLayer(l, n, 0.6f);

        rig.setLayer(l, layerSlot::sendLevel + l, 0.6f);
    }

    for (int n = slot::masterEq; n <= slot::masterEqEnd; ++n)
        rig.set(n, 0.6f);

    for (int k = 0; k < numFxBlocks; ++k)
        rig.set(slot::fxOn + k, 1.0f);

    rig.set(slot::controllerMap + 74, encodeParamInt(233));
    juce::AudioBuffer<float> buffer(2, rig.block);
    std::vector<juce::MidiBuffer> blocks(200);
    juce::Random random(5);

    for (auto& midi : blocks)
    {
        midi.ensureSize(8192);

        for (int i = 0; i < 12; ++i)
        {
            midi.addEvent(juce::MidiMessage::noteOn(1 + random.nextInt(16), random.nextInt(128), 0.7f), i);
            midi.addEvent(juce::MidiMessage::noteOff(1, random.nextInt(128)), i);
            midi.addEvent(juce::MidiMessage::controllerEvent(1, 74, random.nextInt(128)), i);
        }
    }

    int audioHeapCalls = -1;
    std::thread audio(
        [&]
        {
            // The densest block there is lets every list of events grow to its largest: a panic into a drum
            // layer.
            rig.processor.getMidiInput().requestPanic();
            rig.processor.processBlock(buffer, blocks[0]);
            const AllocationGuard guard;

            for (size_t i = 1; i < blocks.size(); ++i)
            {
                // New types, silencing, and values that move at once.
                if (i % 16 == 0)
                {
                    rig.set(slot::fxType + static_cast<int>(i) / 16 % 4, static_cast<float>(i) / 200.0f);
                    rig.setLayer(static_cast<int>(i) % 4, layerSlot::transpose, 0.6f);
                    rig.processor.getMidiInput().requestPanic();
                }

                rig.processor.processBlock(buffer, blocks[i]);
            }

            audioHeapCalls = guard.heapCalls();
        });
    audio.join();
    EXPECT_EQ(audioHeapCalls, 0);
}

TEST(Threads, InstrumentsComeAndGoUnderARunningBlock)
{
    ProcessorRig rig;
    std::atomic<bool> done{false};
    std::thread audio(
        [&]
        {
            juce::AudioBuffer<float> buffer(2, 64);
            juce::Random random(11);

            while (!done.load())
            {
                juce::MidiBuffer midi;
                midi.addEvent(juce::MidiMessage::noteOn(1, 30 + random.nextInt(60), 0.8f), 0);
                midi.addEvent(juce::MidiMessage::noteOff(1, 30 + random.nextInt(60)), 5);
                rig.processor.processBlock(buffer, midi);
            }
        });
    std::thread automation(
        [&]
        {
            juce::Random random(12);

            while (!done.load())
            {
                rig.processor.setParameter(random.nextInt(numParameterSlots), random.nextFloat());
                rig.processor.getParameterName(random.nextInt(numParameterSlots));
                rig.processor.getParameter(random.nextInt(numParameterSlots));
                std::this_thread::yield();
            }
        });
    std::thread saver(
        [&]
        {
            while (!done.load())
                for (int l = 0; l < numLayers; ++l)
                {
                    rig.processor.getLayer(l).stateToSave();
                    rig.processor.getLayer(l).programToSave();
                }
        });
    juce::Random random(13);
    const auto types = rig.processor.getKnownPlugins().getTypes();

    for (int i = 0; i < 24; ++i)
    {
        const int layer = random.nextInt(numLayers);

        if (random.nextInt(3) == 0)
            rig.processor.chooseInstrument(layer, nullptr);
        else
            EXPECT_TRUE(
                rig.processor.getLayer(layer).loadPlugin(types.getReference(random.nextInt(types.size()))));

        ProcessorRig::pump(20);
    }

    done.store(true);
    audio.join();
    automation.join();
    saver.join();
}

TEST(Threads, TwoInstancesKeepTheirOwnRates)
{
    ProcessorRig slow(22050.0, 128);
    ProcessorRig fast(96000.0, 512);
    ASSERT_TRUE(slow.load(0, "Tarn"));
    ASSERT_TRUE(fast.load(0, "Tarn"));

    for (ProcessorRig* rig : {&slow, &fast})
    {
        rig->noteOn(69);
        rig->playSeconds(0.2);
        const auto sound = rig->playSeconds(0.5);
        EXPECT_GT(sound.amplitudeAt(440.0, rig->rate), 10.0 * sound.amplitudeAt(700.0, rig->rate));
    }
}

} // namespace quorel::test
