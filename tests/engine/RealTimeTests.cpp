// SPDX-License-Identifier: GPL-3.0-or-later
// What the audio thread may not do.
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

} // namespace quorel::test
