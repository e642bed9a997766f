// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi/MidiLinkedValueObject.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

namespace quorel
{
namespace
{

juce::MidiMessage at(double time, std::initializer_list<int> bytes)
{
    std::vector<juce::uint8> raw;
    for (const int byte : bytes)
        raw.push_back(static_cast<juce::uint8>(byte));
    return juce::MidiMessage(raw.data(), static_cast<int>(raw.size()), time);
}

TEST(MidiMapping, ReadsEveryKindOfMessage)
{
    struct Case
    {
        std::initializer_list<int> bytes;
        const char* type;
        int channel, number;
        double value;
    };

    // Controllers snap to 0 at their lower end, and wheels go to 129.
    const Case cases[] = {
        {{0x9f, 60, 100}, "NoteOn", 16, 60, 100.0},
        {{0x82, 61, 64}, "NoteOn", 3, 61, 0.0},
        {{0xb0, 7, 3}, "Control", 1, 7, 0.0},
        {{0xb0, 7, 4}, "Control", 1, 7, 4.0},
        {{0xc0, 42}, "Program", 1, 42, 42.0},
        {{0xe0, 127, 127}, "PitchWheel", 1, 127, 129.0},
        {{0xd0, 99}, "", 1, 99, 0.0},
        {{0xf8}, "", 0, 0, 0.0},
    };
    for (const auto& c : cases)
    {
        const MidiMapping mapping("Keys", at(1.5, c.bytes));
        EXPECT_EQ(mapping.type, c.type);
        EXPECT_EQ(mapping.channel, c.channel) << c.type;
        EXPECT_EQ(mapping.number, c.number) << c.type;
        EXPECT_NEAR(static_cast<double>(mapping.currentValue()), c.value, 1.0e-5) << c.type << c.number;
        EXPECT_EQ(mapping.timestamp, 1.5);
    }
}

TEST(MidiMapping, MatchesByDeviceKindChannelAndNumber)
{
    const auto control = [](const char* device, int status, int number) {
        return MidiMapping(device, at(0, {status, number, 64}));
    };
    const auto stored = control("Faders", 0xb0, 7);
    EXPECT_TRUE(stored.matches(control("Faders", 0xb0, 7), true));
    EXPECT_TRUE(stored.matches(control("USB Faders 1", 0xb0, 7), true));
    EXPECT_TRUE(stored.matches(control("Fad", 0xb0, 7), true));
    EXPECT_FALSE(stored.matches(control("Keys", 0xb0, 7), true));
    EXPECT_TRUE(stored.matches(control("Keys", 0xb0, 7), false));
    EXPECT_FALSE(stored.matches(control("Faders", 0xb1, 7), true));
    EXPECT_FALSE(stored.matches(control("Faders", 0xb0, 8), true));
    EXPECT_FALSE(stored.matches(control("Faders", 0x90, 7), true));
    EXPECT_FALSE(control("", 0xb0, 7).matches(control("", 0xb0, 7), true));
    EXPECT_TRUE(control("", 0xb0, 7).matches(control("", 0xb0, 7), false));
    // A wheel's first byte is the fine half of its position, not a number.
    EXPECT_TRUE(control("Keys", 0xe0, 1).matches(control("Keys", 0xe0, 90), true));
    // A message without a kind of its own matches any kind with that number, and never becomes a binding.
    EXPECT_TRUE(stored.matches(control("Faders", 0xa0, 7), true));
    EXPECT_FALSE(control("Faders", 0xa0, 7).matches(control("Faders", 0xa0, 7), true));
}

TEST(MidiLearner, LearnsOnAMidiThreadAndFollowsNewerMessages)
{
    std::vector<juce::String> shown;
    MidiLearner::displayBox() = [&](const juce::String& text) { shown.push_back(text); };

    MidiLinkedValueObject value;
    const auto receive = [&](const char* device, const juce::MidiMessage& message)
    {
        bool applied = false;
        test::onOtherThread([&] { applied = value.handleMessage(device, message); });
        return applied;
    };
    EXPECT_FALSE(receive("Faders", at(1.0, {0xb2, 21, 127})));
    value.learning = true;
    EXPECT_FALSE(receive("Faders", at(2.0, {0xb2, 21, 127})));
    EXPECT_FALSE(value.learning);
    EXPECT_EQ(value.getNumMappings(), 1);
    EXPECT_EQ(value.getNumber(), 0.0) << "the teaching message sets nothing";

    EXPECT_TRUE(receive("Faders", at(3.0, {0xb2, 21, 127})));
    EXPECT_EQ(value.getNumber(), 1.0);
    EXPECT_FALSE(receive("Faders", at(3.0, {0xb2, 21, 0}))) << "not newer";
    EXPECT_FALSE(receive("Faders", at(4.0, {0xb2, 22, 0})));
    EXPECT_TRUE(receive("Faders", at(4.0, {0xb2, 21, 3})));
    EXPECT_EQ(value.getNumber(), 0.0);

    // The process-wide buffer: no device, every event of the buffer.
    MidiLinkedValueObject other;
    const juce::SharedResourcePointer<GlobalMidi> midi;
    midi->addChangeListener(&other);
    other.learning = true;
    midi->addEvent(at(0, {0x90, 64, 1}), 0);
    midi->addEvent(at(0, {0x90, 64, 127}), 10);
    midi->sendChangeMessage();
    EXPECT_TRUE(test::pumpUntil([&] { return other.getNumber() == 1.0; }, 5000));
    midi->clear();

    MidiLearner::displayBox() = nullptr;
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0], "Midi Mapped (Faders ch:3 num:21)");
    EXPECT_EQ(shown[1], "Midi Mapped ( ch:1 num:64)");
}

TEST(MidiLinkedValueObject, BendsMidiValuesIntoItsRange)
{
    struct Case
    {
        float midi;
        double curve, minimum, maximum, expected;
    };

    for (const auto& c : {Case{127.0f, 1.0, 0.0, 1.0, 1.0}, Case{63.5f, 0.5, 0.0, 1.0, 0.25},
                          Case{31.75f, 2.0, 0.0, 1.0, 0.5}, Case{0.0f, 2.0, 0.25, 1.0, 0.25},
                          Case{127.0f, 3.0, 0.25, 0.75, 0.75}, Case{127.0f, 1.0, 1.0, 0.0, 0.0}})
    {
        MidiLinkedValueObject value(0.9);
        value.curve = c.curve;
        value.minimum = c.minimum;
        value.maximum = c.maximum;
        value.setValueFromMidi(c.midi);
        EXPECT_NEAR(value.getNumber(), c.expected, 1.0e-12) << c.midi << " curve " << c.curve;
    }

    MidiLinkedValueObject button;
    button.continuous = false;
    for (const auto& [sent, toggled] :
         {std::pair{127.0f, false}, {127.0f, true}, {0.0f, false}, {0.0f, false}})
    {
        button.setValueFromMidi(sent);
        EXPECT_EQ(button.toggled, toggled) << sent;
    }
}

} // namespace
} // namespace quorel
