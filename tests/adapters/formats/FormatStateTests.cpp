// SPDX-License-Identifier: GPL-3.0-or-later
// A sound is the same in all formats, by its bytes and by its samples, and moves between them.
#include "FormatHost.h"
#include "adapters/SavedSound.h"
#include "common/MessagePump.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <map>

namespace quorel::test
{

namespace
{
constexpr int controllerMap = 1050;

float numberAsValue(int n)
{
    return static_cast<float>(n / 65536.0 + 0.5);
}

/** Counts what a host would record as moves. */
struct Moves : juce::AudioProcessorParameter::Listener
{
    void parameterValueChanged(int, float) override { ++number; }

    void parameterGestureChanged(int, bool) override { ++number; }

    std::atomic<int> number{0};
};

/** Four instruments; controller 20 moves the first multi-control fader. */
juce::MemoryBlock sound()
{
    RawVst2Host host(QUOREL_PLUGIN_FILE);
    host.setParameter(controllerMap + 20, numberAsValue(1350));
    const auto bytes = soundOf(host, {{{"Orlen"}, {"Hexley2"}, {"Imre"}, {"Dorvik"}}}).bytes();
    return {bytes.data(), bytes.size()};
}

bool sameSamples(const juce::AudioBuffer<float>& a, const juce::AudioBuffer<float>& b)
{
    for (int channel = 0; channel < 2; ++channel)
        if (std::memcmp(a.getReadPointer(channel), b.getReadPointer(channel),
                        sizeof(float) * static_cast<size_t>(a.getNumSamples())) != 0)
            return false;

    return true;
}
} // namespace

TEST(FormatState, isTheSameInAllFormatsByBytesAndBySamples)
{
    juce::MemoryBlock bytes;
    juce::AudioBuffer<float> samples;
    const auto original = sound();

    for (const auto format : allFormats())
    {
        SCOPED_TRACE(nameOf(format));
        const auto plugin = load(format);
        restore(format, *plugin, original);
        const auto saved = soundOf(format, *plugin);
        // Effects and instruments from their beginning.
        plugin->prepareToPlay(44100.0, 512);
        const auto played = playChord(*plugin);
        EXPECT_GT(played.getMagnitude(0, played.getNumSamples()), 0.01f);

        if (format == Format::vst2)
        {
            bytes = saved;
            samples = played;
        }

        EXPECT_EQ(saved, bytes);
        EXPECT_TRUE(sameSamples(played, samples));
    }
}

TEST(FormatState, ofVst2IsTakenOverByVst3AsHostsHaveItStored)
{
    const auto original = sound();
    const auto plugin = load(Format::vst3);
    restore(Format::vst3, *plugin, original);
    const auto expected = soundOf(Format::vst3, *plugin);
    // A bank as hosts write it: magic, size, kind, version, the plug-in, its version, programs, 128 bytes, size.
    juce::MemoryOutputStream bank;
    const auto word = [&bank](const char* text) { bank.write(text, 4); };
    const int size = static_cast<int>(original.getSize());
    word("CcnK");
    bank.writeIntBigEndian(152 + size);
    word("FBCh");
    bank.writeIntBigEndian(2);
    word("Qrl1");
    bank.writeIntBigEndian(1);
    bank.writeIntBigEndian(1);
    bank.writeRepeatedByte(0, 128);
    bank.writeIntBigEndian(size);
    bank.write(original.getData(), original.getSize());
    auto* volume = parameter(*plugin, "Master Volume");
    ASSERT_NE(volume, nullptr);
    volume->setValueNotifyingHost(0.1f);
    restore(Format::vst3, *plugin, bank.getMemoryBlock());
    EXPECT_EQ(soundOf(Format::vst3, *plugin), expected);
    EXPECT_EQ(volume->getValue(), 0.63f) << "the host hears of it";
}

TEST(FormatState, thatIsDamagedLeavesThePresentOne)
{
    const auto original = sound();
    juce::Random random(5);

    for (const auto format : newerFormats())
    {
        SCOPED_TRACE(nameOf(format));
        const auto plugin = load(format);
        restore(format, *plugin, original);
        const auto before = soundOf(format, *plugin);

        // Each format's wrapping with numbers out of the data, and what is no sound at all.
        for (const char* beginning : {"VstW\x7f\xff\xff\xff", "CcnK", "VST3", "JUCEPrivateData", "dmtk", "x"})
        {
            for (const int size : {8, 47, 48, 100, 159, 160, 200, 4000})
            {
                juce::MemoryBlock cut(static_cast<size_t>(size), true);
                random.fillBitsRandomly(cut.getData(), cut.getSize());
                cut.copyFrom(beginning, 0, juce::jmin(std::strlen(beginning), cut.getSize()));

                if (size >= 12 && std::memcmp(beginning, "CcnK", 4) == 0)
                    cut.copyFrom("FBCh", 8, 4);

                restore(format, *plugin, cut);
            }
        }

        // Wrapped in a wrapping, again and again.
        juce::MemoryOutputStream wrappings;

        for (int i = 0; i < 1000000; ++i)
            wrappings.write("VstW\0\0\0\0", 8);

        restore(format, *plugin, wrappings.getMemoryBlock());
        EXPECT_EQ(soundOf(format, *plugin), before);
    }
}

TEST(FormatState, tellsTheHostOfTheValuesThatItBrings)
{
    constexpr int firstAssignment = 1330, firstFader = 1350, firstKnob = 1354;
    const std::map<juce::String, int> moved{
        {"Master Volume", 1}, {"Layer1 FX2 Send", 239}, {"Layer4 Pan", 833}, {"FX3 Mix", 1214}};
    RawVst2Host host(QUOREL_PLUGIN_FILE);
    auto stored = soundOf(host, {{{"Orlen"}, {"Hexley2"}, {"Imre"}, {"Dorvik"}}});

    for (const auto& [name, index] : moved)
        stored.parameters[static_cast<size_t>(index)] = 0.25f;

    // A fader and a knob move the volume of layer 1 when they come to their places.
    stored.parameters[firstAssignment] = numberAsValue(1);
    stored.parameters[firstFader] = 0.75f;
    stored.parameters[firstKnob] = 0.9f;

    const auto bytes = stored.bytes();

    for (const auto format : newerFormats())
    {
        SCOPED_TRACE(nameOf(format));
        const auto plugin = load(format);
        restore(format, *plugin, {bytes.data(), bytes.size()});
        juce::AudioBuffer<float> block(juce::jmax(plugin->getTotalNumInputChannels(), 2), 512);
        juce::MidiBuffer none;

        for (const auto& entry : moved)
        {
            auto* value = parameter(*plugin, entry.first);
            ASSERT_NE(value, nullptr) << entry.first;
            EXPECT_TRUE(pumpUntil(
                [&]
                {
                    plugin->processBlock(block, none);
                    return value->getValue() == 0.25f;
                },
                5000))
                << entry.first;
        }

        // JUCE's VST3 host passes all values on whenever it has brought a sound.
        if (format == Format::vst3)
            continue;

        const auto present = soundOf(format, *plugin);
        auto* moving = parameter(*plugin, "Layer1 Volume");
        ASSERT_NE(moving, nullptr);
        Moves moves;
        moving->addListener(&moves);
        restore(format, *plugin, present);
        pumpUntil(
            [&]
            {
                plugin->processBlock(block, none);
                return false;
            },
            1500);
        EXPECT_EQ(moves.number, 0) << "the same sound once more is no news";
        moving->removeListener(&moves);
    }
}

TEST(FormatState, hearsControllersOfMidi)
{
    const auto original = sound();

    for (const auto format : allFormats())
    {
        SCOPED_TRACE(nameOf(format));
        const auto plugin = load(format);
        restore(format, *plugin, original);
        auto* fader = parameter(*plugin, "Multi Fader 1");
        ASSERT_NE(fader, nullptr);
        juce::AudioBuffer<float> block(2, 512);

        for (int i = 0; i < 4; ++i)
        {
            juce::MidiBuffer midi;

            if (i == 1)
                midi.addEvent(juce::MidiMessage::controllerEvent(1, 20, 127), 0);

            plugin->processBlock(block, midi);
        }

        const auto after = soundOf(format, *plugin);
        float stored = 0.0f;
        constexpr size_t parametersOffset = 104;
        after.copyTo(&stored, static_cast<int>(parametersOffset + 4 * 1350), sizeof(stored));
        EXPECT_EQ(stored, 1.0f);
    }
}

TEST(FormatState, aBypassSilencesAndLeavesNoNoteHanging)
{
    const auto plugin = load(Format::vst3);
    restore(Format::vst3, *plugin, sound());
    ASSERT_TRUE(comesToSound(*plugin));
    auto* bypass = plugin->getBypassParameter();
    ASSERT_NE(bypass, nullptr);
    juce::AudioBuffer<float> block(2, 512);
    const auto levelAfter = [&](int blocks)
    {
        for (int i = 0; i < blocks; ++i)
        {
            juce::MidiBuffer none;
            plugin->processBlock(block, none);
        }

        return block.getMagnitude(0, block.getNumSamples());
    };
    EXPECT_GT(levelAfter(20), 0.0f);
    bypass->setValueNotifyingHost(1.0f);
    EXPECT_EQ(levelAfter(4), 0.0f);
    // Long enough for releases and tails.
    EXPECT_EQ(levelAfter(900), 0.0f);
    bypass->setValueNotifyingHost(0.0f);
    EXPECT_LT(levelAfter(4), 1e-3f);
    EXPECT_TRUE(comesToSound(*plugin));
}

} // namespace quorel::test
