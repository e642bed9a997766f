// SPDX-License-Identifier: GPL-3.0-or-later
// The sound as bytes: what comes back, what hostile bytes do, and the road of a preset file.
#include "parameters/ParameterText.h"
#include "presets/PresetFiles.h"
#include "presets/StateChunk.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

namespace quorel::test
{

class StateTest : public testing::Test
{
protected:
    /** Peak of a note, once what a restore leaves behind has died away. */
    float playNote()
    {
        rig.play();
        rig.noteOn(60);
        return rig.playSeconds(0.3).peak();
    }

    void loadFour()
    {
        int layer = 0;

        for (const char* name : {"Orlen", "Tarn2", "Dorvik-K", "Glasson2"})
            ASSERT_TRUE(rig.load(layer++, name));
    }

    static StateChunk parse(const juce::MemoryBlock& bytes)
    {
        StateChunk chunk;
        EXPECT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);
        return chunk;
    }

    /** Puts a little-endian integer into the bytes. */
    static void poke(juce::MemoryBlock& bytes, size_t offset, int value)
    {
        const auto le = juce::ByteOrder::swapIfBigEndian(static_cast<juce::uint32>(value));
        bytes.copyFrom(&le, static_cast<int>(offset), 4);
    }

    ProcessorRig rig;
};

TEST_F(StateTest, FourLayersComeBackInAnotherInstance)
{
    loadFour();
    rig.processor.getLayer(1).chooseProgram(6);
    // The instrument reports its new values, and the Easy values follow.
    ProcessorRig::pump(300);
    rig.setLayer(0, layerSlot::easyValue + 2, 0.3f);
    rig.setLayer(3, layerSlot::pan, 0.25f);
    rig.set(slot::masterVolume, 0.5f);
    rig.processor.setNames("My sound", "My folder");
    const auto state = rig.state();

    ProcessorRig other;
    other.restore(state);
    EXPECT_EQ(other.processor.getPresetName(), "My sound");
    EXPECT_EQ(other.processor.getFolderName(), "My folder");
    EXPECT_EQ(other.get(slot::masterVolume), 0.5f);
    EXPECT_EQ(other.getLayer(3, layerSlot::pan), 0.25f);

    for (int layer = 0; layer < numLayers; ++layer)
        EXPECT_EQ(other.processor.getLayer(layer).getPluginName(),
                  rig.processor.getLayer(layer).getPluginName());

    EXPECT_NEAR(other.getLayer(0, layerSlot::easyValue + 2), 0.3f, 1e-3f);
    const InstanceAccess::Use tarn(other.processor.getLayer(1).instanceAccess());
    EXPECT_EQ(tarn->getCurrentProgram(), 5);

    // The same bytes again, but for the page, which a restore sets, and the learnable linked values.
    auto again = parse(other.state());
    const auto first = parse(state);
    EXPECT_EQ(again.layerSizes, first.layerSizes);

    for (int i = 0; i < numHostParameters; ++i)
        EXPECT_EQ(again.parameters[static_cast<size_t>(i)], first.parameters[static_cast<size_t>(i)]) << i;

    for (size_t layer = 0; layer < 4; ++layer)
        EXPECT_TRUE(again.hostedStates[layer] == first.hostedStates[layer]) << layer;
}

TEST_F(StateTest, TheHeaderIsTheFormat)
{
    ASSERT_TRUE(rig.load(2, "Fenn2"));
    const auto bytes = rig.state();
    const auto* data = static_cast<const char*>(bytes.getData());
    EXPECT_EQ(std::string(data, 4), "dmtk");
    const auto word = [&](size_t offset)
    { return static_cast<int>(juce::ByteOrder::littleEndianInt(data + offset)); };
    EXPECT_EQ(word(8), 1);
    EXPECT_EQ(word(12), 1507);
    EXPECT_EQ(word(16), 4);
    EXPECT_EQ(word(20), 1);
    EXPECT_EQ(std::string(data + 24), "Default Preset");
    EXPECT_EQ(std::string(data + 56), "99 Default Preset");
    const int size = static_cast<int>(rig.processor.getLayer(2).stateToSave().getSize());
    EXPECT_EQ(word(88 + 8), size);
    EXPECT_EQ(bytes.getSize(), static_cast<size_t>(104 + 4 * 1507 + size));
    float volume = 0.0f;
    std::memcpy(&volume, data + 104 + 4, 4);
    EXPECT_EQ(volume, 0.63f);
}

TEST_F(StateTest, LongNamesAreCutAtACharacter)
{
    const auto fields =
        chunkName(juce::String(juce::CharPointer_UTF8("0123456789012345678901234567890\xc3\xa9")));
    EXPECT_EQ(std::string(fields.data(), 31), "0123456789012345678901234567890");
    EXPECT_EQ(fields[31], 0);
    const auto whole = chunkName("01234567890123456789012345678901");
    EXPECT_EQ(whole[31], '1');
}

TEST_F(StateTest, AMissingInstrumentCostsItsLayerAlone)
{
    loadFour();
    auto chunk = parse(rig.state());
    // "Orlem" is nowhere; its bytes are stepped over.
    chunk.parameters[204] = 'm' / 256.0f;
    juce::MemoryBlock bytes;
    writeStateChunk(chunk, bytes);
    ProcessorRig other;
    other.restore(bytes);
    ASSERT_EQ(other.interaction.alerts.size(), 1);
    EXPECT_EQ(other.interaction.alerts[0], "|Cant find plugin Orlem");
    EXPECT_TRUE(other.processor.getLayer(0).isMissing());
    EXPECT_EQ(other.processor.getLayer(1).getPluginName(), "Tarn2");
    EXPECT_EQ(other.processor.getLayer(3).getPluginName(), "Glasson2");
    EXPECT_TRUE(parse(other.state()).hostedStates[1] == chunk.hostedStates[1]);
}

TEST_F(StateTest, ForeignAndShortBytesCostNothing)
{
    ASSERT_TRUE(rig.load(0, "Orlen"));
    const auto good = rig.state();
    auto wrongMagic = good;
    poke(wrongMagic, 0, 0x12345678);
    auto wrongVersion = good;
    poke(wrongVersion, 20, 2);

    rig.processor.setNames("Mine", "Kept");
    auto shortened = good;
    shortened.setSize(3000);
    const juce::String unreadable = "|The project's sound can't be read. The present sound stays.";
    const std::pair<juce::MemoryBlock, juce::String> cases[] = {
        {{}, {}},
        {{"abc", 3}, unreadable},
        {wrongMagic, unreadable},
        {wrongVersion, unreadable},
        {shortened, "|restoring chunk too short"},
    };

    for (const auto& [bytes, alert] : cases)
    {
        rig.interaction.alerts.clear();
        rig.restore(bytes);
        EXPECT_EQ(rig.interaction.alerts.joinIntoString(","), alert);
        EXPECT_EQ(rig.processor.getPresetName(), "Mine");
        EXPECT_TRUE(rig.processor.getLayer(0).hasInstance());
        EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay());
    }

    rig.processor.setStateInformation(nullptr, 0);
}

TEST_F(StateTest, HostileNumbersNeverLeaveTheBytes)
{
    ASSERT_TRUE(rig.load(0, "Orlen"));
    const auto good = rig.state();

    for (const int layers : {0, 5, -1, 2147483647, -2147483647, 1000})
    {
        auto bytes = good;
        poke(bytes, 16, layers);
        rig.restore(bytes);
    }

    for (const int parameters : {0, 1, 1508, -1, 2147483647})
    {
        auto bytes = good;
        poke(bytes, 12, parameters);
        rig.restore(bytes);
    }

    for (const int size : {-1, 1, 2147483647, -2147483647, 100000})
    {
        auto bytes = good;
        poke(bytes, 88, size);
        rig.restore(bytes);
    }

    for (size_t length = 0; length < good.getSize(); length += 1 + length / 7)
    {
        auto bytes = good;
        bytes.setSize(length);
        rig.restore(bytes);
    }

    rig.restore(good);
    EXPECT_EQ(rig.processor.getLayer(0).getPluginName(), "Orlen");
    EXPECT_GT(playNote(), 0.001f);
}

TEST_F(StateTest, RandomBytesInAValidFrameLeaveAWorkingInstrument)
{
    ASSERT_TRUE(rig.load(0, "Orlen"));
    const auto good = rig.state();
    juce::Random random(20260);

    for (int round = 0; round < 60; ++round)
    {
        auto bytes = good;

        for (int i = 0; i < 400; ++i)
        {
            const auto at = static_cast<size_t>(24 + random.nextInt(static_cast<int>(bytes.getSize()) - 24));
            bytes[at] = static_cast<char>(random.nextInt(256));
        }

        rig.restore(bytes);
        rig.noteOn(60);
        EXPECT_TRUE(rig.play(4).isFinite());
    }

    rig.processor.resetAllParameters();
    rig.restore(good);
    rig.playSeconds(1.5);
    EXPECT_GT(playNote(), 0.001f);
}

TEST_F(StateTest, AHostMayRestoreFromAnyThreadWhileItPlays)
{
    loadFour();
    const auto state = rig.state();
    std::atomic<bool> done{false};
    std::thread host(
        [&]
        {
            for (int i = 0; i < 3; ++i)
            {
                rig.restore(state);
                juce::MemoryBlock bytes;
                rig.processor.getStateInformation(bytes);
                EXPECT_EQ(bytes.getSize(), state.getSize());
            }

            done.store(true);
        });
    std::thread audio(
        [&]
        {
            juce::AudioBuffer<float> buffer(2, 256);
            juce::Random random(3);

            while (!done.load())
            {
                juce::MidiBuffer midi;
                midi.addEvent(juce::MidiMessage::noteOn(1, 40 + random.nextInt(40), 0.8f), 0);
                midi.addEvent(juce::MidiMessage::controllerEvent(1, 1, random.nextInt(128)), 9);
                rig.processor.processBlock(buffer, midi);
            }
        });
    EXPECT_TRUE(pumpUntil([&] { return done.load(); }, 60000));
    host.join();
    audio.join();
    EXPECT_EQ(rig.processor.getLayer(3).getPluginName(), "Glasson2");
}

TEST_F(StateTest, TheFirstStartMakesADefaultPresetOnce)
{
    const auto file = rig.user.banksFolder().getChildFile("99 Default Preset/Default Preset.qrl");
    ASSERT_TRUE(file.existsAsFile());
    file.replaceWithText("a user's own");
    PluginProcessor second(rig.user.makeStore(), rig.interaction);
    EXPECT_EQ(file.loadFileAsString(), "a user's own");
}

TEST_F(StateTest, APresetIsSavedAndComesBackByItsRoad)
{
    ASSERT_TRUE(rig.load(0, "Imre"));
    rig.setLayer(0, layerSlot::pan, 0.75f);
    rig.processor.setNames("Default Preset", "My folder");
    ASSERT_TRUE(rig.processor.getPresetStorage().save("First", true));
    EXPECT_FALSE(rig.processor.getPresetStorage().save("First", false)) << "nobody here says yes";
    EXPECT_EQ(rig.interaction.questions.joinIntoString(","), "|preset First already exists. Replace ?");

    rig.setLayer(0, layerSlot::pan, 0.1f);
    rig.set(slot::controllerMap + 20, 0.51f);
    rig.noteOn(60);
    rig.playSeconds(0.3);
    ASSERT_TRUE(rig.processor.getSoundChange().requestPreset("My folder", "First"));
    EXPECT_TRUE(rig.playUntil([&] { return !rig.processor.getSoundChange().isUnderWay(); }, 20000));
    EXPECT_EQ(rig.getLayer(0, layerSlot::pan), 0.75f);
    EXPECT_EQ(rig.get(slot::controllerMap + 20), 0.51f)
        << "bindings belong to the project, not to the preset";
    EXPECT_EQ(rig.processor.getLayer(0).getPluginName(), "Imre");
    EXPECT_FALSE(rig.processor.getSession().isEdited());
    EXPECT_GT(playNote(), 0.001f);

    EXPECT_FALSE(rig.processor.getSoundChange().requestPreset("My folder", "Gone"));
    EXPECT_EQ(rig.interaction.alerts.joinIntoString(","), "|Could not load Presert file: My folder/Gone");
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay());
    EXPECT_EQ(rig.processor.getPresetName(), "First");
    EXPECT_EQ(rig.getLayer(0, layerSlot::pan), 0.75f) << "what plays goes on";
}

TEST_F(StateTest, AFailedSaveLeavesTheOldFileWhole)
{
    rig.processor.setNames("Default Preset", "99 Default Preset");
    const auto folder = rig.user.banksFolder().getChildFile("Blocked");
    folder.replaceWithText("a file where the folder should be");
    rig.processor.setNames("Old", "Blocked");
    EXPECT_FALSE(rig.processor.getPresetStorage().save("New", true));
    // The reason is in the system's words.
    const auto told = rig.interaction.alerts.joinIntoString(",");
    EXPECT_TRUE(told.startsWith("|Could not save Presert file: Blocked/New (File ")) << told;
    EXPECT_EQ(rig.processor.getPresetName(), "Old");
    EXPECT_EQ(folder.loadFileAsString(), "a file where the folder should be");
}

} // namespace quorel::test
