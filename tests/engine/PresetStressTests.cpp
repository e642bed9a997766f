// SPDX-License-Identifier: GPL-3.0-or-later
// Hundreds of preset loads in random order, on their real road: the audio callback, the 50 ms timer and an
// automating host work on many processors at once, because each load waits for some 25 ticks. Meant for the
// sanitizers too: leaks and races show there.
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/StateChunk.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

#include <thread>

namespace quorel::test
{

class PresetStressTest : public testing::Test
{
protected:
    static constexpr int numProcessors = 25;
    static constexpr int numLoads = 500;
    static constexpr double rate = 44100.0;
    /** Fades count blocks, whatever their length. */
    static constexpr int blockSize = 8;
    static constexpr const char* folder = "Stress";
    static constexpr const char* finalPreset = "Final";

    using Processor = std::unique_ptr<PluginProcessor>;

    Processor makeProcessor()
    {
        auto processor = std::make_unique<PluginProcessor>(user.makeStore(), interaction);
        processor->prepareToPlay(rate, blockSize);
        return processor;
    }

    /** One to three instruments, effects and moving multi-controls in a file, and its name. */
    juce::String writePreset(PluginProcessor& processor, int number, const juce::StringArray& instruments)
    {
        processor.resetAllParameters();

        for (int layer = 0; layer < numLayers; ++layer)
            processor.getLayer(layer).unloadPlugin();

        for (int layer = 0; layer < instruments.size(); ++layer)
            for (const auto& type : processor.getKnownPlugins().getTypes())
                if (type.name == instruments[layer])
                {
                    EXPECT_TRUE(processor.getLayer(layer).loadPlugin(type));
                    writeParamText(processor, layerParameter(layer, layerSlot::pluginNameText), type.name,
                                   slot::nameTextLength);
                    processor.setParameter(layerParameter(layer, layerSlot::sendLevel), 0.5f);
                }

        for (int block = 0; block < 2; ++block)
        {
            processor.setParameter(slot::fxOn + block, 1.0f);
            processor.setParameter(slot::fxType + block,
                                   static_cast<float>((number * 7 + block * 11) % 33) / 32.0f);
        }

        processor.setParameter(slot::multiAssignment, encodeParamInt(1 + number));
        processor.setParameter(slot::multiAssignment + 5, encodeParamInt(7 + number));
        const auto name = "Stress " + juce::String(number);
        processor.setNames(name, folder);
        EXPECT_TRUE(processor.getPresetStorage().save({}, true));
        return name;
    }

    void writePresets()
    {
        const auto processor = makeProcessor();
        const juce::StringArray all{"Orlen", "Tarn", "Tarn2",   "Hexley",   "Hexley2",   "Dorvik", "Dorvik-K",
                                    "Zeph",  "Imre", "Glasson", "Glasson2", "Tarn-Mini", "Fenn2"};

        for (int number = 0; number < all.size(); ++number)
            names.add(writePreset(
                *processor, number,
                {all[number], number % 3 == 0 ? all[(number + 5) % all.size()] : juce::String()}));

        // One whose instrument isn't there, one cut short, one of another format, and one that doesn't exist.
        const auto file = [&](const juce::String& name)
        { return presetFileFor(user.banksFolder(), folder, name); };
        juce::MemoryBlock bytes;
        StateChunk chunk;
        ASSERT_TRUE(readWholeFile(file(names[0]), bytes));
        ASSERT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);
        chunk.parameters[200] = encodeParamChar('X');
        juce::MemoryBlock changed;
        writeStateChunk(chunk, changed);
        ASSERT_TRUE(replaceFile(file("Missing instrument"), changed));
        ASSERT_TRUE(replaceFile(file("Short"), juce::MemoryBlock(bytes.getData(), 1000)));
        ASSERT_TRUE(replaceFile(file("Foreign"), juce::MemoryBlock("not one of ours", 15)));
        names.addArray({"Missing instrument", "Short", "Foreign", "Nowhere"});

        // A plain sound to end with.
        processor->resetAllParameters();
        writePreset(*processor, 100, {"Tarn", "Orlen"});
        processor->setParameter(slot::fxOn, 0.0f);
        processor->setParameter(slot::fxOn + 1, 0.0f);
        EXPECT_TRUE(processor->getPresetStorage().save(finalPreset, true));
    }

    /** The host's audio thread: fades run as fast as they can, what waits for the timer gets a block now and
        then. */
    void runAudio(const std::vector<Processor>& processors)
    {
        juce::Random random(11);
        juce::AudioBuffer<float> buffer(2, blockSize);
        juce::MidiBuffer midi;

        for (int round = 0; !stop.load(); ++round)
        {
            bool anyFading = false;

            for (const auto& processor : processors)
            {
                const auto state = processor->getSoundChange().getFade().getState();
                const bool fading = state == ChangeState::fadingOut || state == ChangeState::fadingIn;

                anyFading = anyFading || fading;

                if (!fading && round % 16 != 0)
                    continue;

                midi.clear();
                midi.addEvent(juce::MidiMessage::controllerEvent(1, random.nextInt(128), random.nextInt(128)),
                              0);
                midi.addEvent(juce::MidiMessage::noteOn(1 + random.nextInt(2), 30 + random.nextInt(60), 0.7f),
                              1);
                midi.addEvent(juce::MidiMessage::noteOff(1, 30 + random.nextInt(60)), 2);
                processor->processBlock(buffer, midi);

                if (!std::isfinite(buffer.getMagnitude(0, blockSize)))
                    wild.store(true);
            }

            if (!anyFading)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    /** The host's automation: anything that sounds, and the multi-controls with their targets. */
    void runAutomation(const std::vector<Processor>& processors)
    {
        juce::Random random(12);
        const std::vector<juce::Range<int>> ranges{{232, 265},   {432, 500},   {680, 697},   {1200, 1260},
                                                   {1300, 1317}, {1330, 1346}, {1350, 1370}, {1050, 1178}};

        while (!stop.load())
        {
            const auto& range = ranges[static_cast<size_t>(random.nextInt(static_cast<int>(ranges.size())))];
            const int index = range.getStart() + random.nextInt(range.getLength());
            const bool isNumber = index >= slot::multiAssignment && index < slot::multiFader;
            processors[static_cast<size_t>(random.nextInt(numProcessors))]->setParameter(
                index, isNumber ? encodeParamInt(random.nextInt(80)) : random.nextFloat());
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    }

    static bool isIdle(PluginProcessor& processor)
    {
        return processor.getSoundChange().getFade().getState() == ChangeState::idle;
    }

    /** Half a second of a note, and how loud it still is two seconds after its end. */
    static std::pair<juce::AudioBuffer<float>, float> listen(PluginProcessor& processor)
    {
        constexpr int length = 2750 * blockSize;
        juce::AudioBuffer<float> sound(2, length);
        juce::AudioBuffer<float> block(2, blockSize);
        juce::MidiBuffer midi;
        float after = 0.0f;
        // Until what a restore leaves behind has died away.
        processor.processBlock(block, midi);
        processor.processBlock(block, midi);
        midi.addEvent(juce::MidiMessage::noteOn(1, 60, 0.8f), 0);

        for (int position = 0; position < 5 * length; position += blockSize)
        {
            processor.processBlock(block, midi);
            midi.clear();

            if (position < length)
            {
                for (int channel = 0; channel < 2; ++channel)
                    sound.copyFrom(channel, position, block, channel, 0, blockSize);
            }
            else if (position == length)
            {
                midi.addEvent(juce::MidiMessage::noteOff(1, 60), 0);
            }

            after = block.getMagnitude(0, blockSize);
        }

        return {sound, after};
    }

    UserRig user;
    RecordingInteraction interaction;
    juce::StringArray names;
    std::atomic<bool> stop{false};
    std::atomic<bool> wild{false};
};

TEST_F(PresetStressTest, HundredsOfLoadsLeaveNothingStuck)
{
    writePresets();
    std::vector<Processor> processors;

    for (int i = 0; i < numProcessors; ++i)
        processors.push_back(makeProcessor());

    std::thread audio([&] { runAudio(processors); });
    std::thread automation([&] { runAutomation(processors); });
    juce::Random random(13);
    int started = 0;
    constexpr int timeoutMillis = 300000;
    const auto loadAll = [&](int howMany, const std::function<juce::String()>& nextName)
    {
        started = 0;
        std::vector<int> perProcessor(processors.size(), 0);
        return pumpUntil(
            [&]
            {
                bool allIdle = true;

                for (size_t i = 0; i < processors.size(); ++i)
                {
                    if (!isIdle(*processors[i]))
                    {
                        allIdle = false;
                    }
                    else if (perProcessor[i] < howMany / numProcessors)
                    {
                        allIdle = false;
                        // Of two the later one is loaded, unless it can't be.
                        processors[i]->getSoundChange().requestPreset(folder, nextName());
                        processors[i]->getSoundChange().requestPreset(folder, nextName());
                        ++perProcessor[i];
                        ++started;
                    }
                }

                return allIdle && started == howMany;
            },
            timeoutMillis);
    };

    EXPECT_TRUE(loadAll(numLoads, [&] { return names[random.nextInt(names.size())]; }));
    EXPECT_TRUE(loadAll(numProcessors, [] { return juce::String(finalPreset); }));
    stop.store(true);
    audio.join();
    automation.join();
    EXPECT_FALSE(wild.load());
    EXPECT_TRUE(interaction.alerts.contains("|Could not load Presert file: Stress/Nowhere"));
    EXPECT_TRUE(interaction.alerts.contains("|Could not load Presert file: Stress/Short"));

    // Whatever each of them went through, all sound like one that has loaded nothing else.
    const auto fresh = makeProcessor();
    fresh->setNames(finalPreset, folder);
    ASSERT_TRUE(fresh->getSoundChange().loadPresetFile());
    const auto [expected, expectedEnd] = listen(*fresh);
    EXPECT_GT(expected.getMagnitude(0, expected.getNumSamples()), 0.01f);
    EXPECT_LT(expectedEnd, 1e-4f);

    for (auto& processor : processors)
    {
        // Automation went on after the load.
        processor->getSoundChange().loadPresetFile();
        EXPECT_EQ(processor->getSoundChange().getFade().gain(), 1.0f);
        const auto [sound, end] = listen(*processor);
        EXPECT_LT(end, 1e-4f);

        for (int i = 0; i < expected.getNumSamples(); ++i)
            ASSERT_NEAR(sound.getSample(0, i), expected.getSample(0, i), 1e-4f) << i;

        processor = nullptr;
    }
}

} // namespace quorel::test
