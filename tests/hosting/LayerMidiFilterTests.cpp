// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/LayerMidiFilter.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <vector>

namespace quorel
{

namespace
{
/** A message and its place in the block. */
struct Event
{
    std::vector<int> bytes;
    int position = 0;

    bool operator==(const Event& other) const { return bytes == other.bytes && position == other.position; }
};

using Events = std::vector<Event>;

void PrintTo(const Event& event, std::ostream* out)
{
    *out << "@" << event.position << std::hex;
    for (int byte : event.bytes)
        *out << " " << byte;
    *out << std::dec;
}

juce::MidiBuffer bufferOf(const Events& events)
{
    juce::MidiBuffer buffer;
    for (const auto& event : events)
    {
        std::vector<juce::uint8> bytes;
        for (int byte : event.bytes)
            bytes.push_back(static_cast<juce::uint8>(byte));
        buffer.addEvent(bytes.data(), static_cast<int>(bytes.size()), event.position);
    }
    return buffer;
}

Events eventsOf(const juce::MidiBuffer& buffer)
{
    Events events;
    for (const auto message : buffer)
        events.push_back({{message.data, message.data + message.numBytes}, message.samplePosition});
    return events;
}

class Filter
{
public:
    Filter()
    {
        settings.keyMin = 0;
        settings.velocityMin = 0;
    }

    Events operator()(const Events& in)
    {
        juce::MidiBuffer out;
        filterLayerMidi(settings, held, std::exchange(silence, false), bufferOf(in), out);
        return eventsOf(out);
    }

    bool passes(const std::vector<int>& bytes) { return (*this)({{bytes, 0}}).size() == 1; }

    LayerMidiSettings settings;
    ZoneHeldNotes held;
    bool silence = false;
};
} // namespace

TEST(LayerMidiFilter, channelsAndRangesPassTheirOwn)
{
    const std::vector<int> sysex{0xf0, 0x43, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0xf7};
    const std::vector<int> clock{0xf8};

    struct Case
    {
        std::function<void(LayerMidiSettings&)> set;
        std::vector<std::vector<int>> passing, stopped;
    };

    const Case cases[] = {
        {[](auto&) {}, {{0x90, 60, 100}, {0x9f, 60, 100}, sysex, clock}, {}},
        {[](auto& s) { s.midiChannel = 16; },
         {{0x9f, 60, 100}, {0xdf, 60}},
         {{0x90, 60, 100}, {0xb0, 7, 100}, sysex, clock}},
        {[](auto& s) { s.keyMin = s.keyMax = 60; },
         {{0x90, 60, 100}, {0x80, 60, 100}},
         {{0x90, 0, 100}, {0x90, 59, 100}, {0x90, 61, 100}, {0x90, 127, 100}, {0x80, 59, 0}, {0x80, 61, 0}}},
        // Velocity 0 is a note-off.
        {[](auto& s) { s.velocityMin = s.velocityMax = 10; },
         {{0x90, 60, 10}, {0x90, 60, 0}, {0x80, 60, 1}, {0x80, 60, 127}},
         {{0x90, 60, 1}, {0x90, 60, 9}, {0x90, 60, 11}, {0x90, 60, 127}}},
        // The key range is that of the keys played, not of the notes sent.
        {[](auto& s) { s.keyMin = 60, s.transpose = -24; }, {{0x90, 60, 100}}, {{0x90, 59, 100}}},
    };
    for (const auto& c : cases)
    {
        Filter filter;
        c.set(filter.settings);
        for (const auto& bytes : c.passing)
            EXPECT_TRUE(filter.passes(bytes)) << &c - cases << ": " << testing::PrintToString(bytes);
        for (const auto& bytes : c.stopped)
            EXPECT_FALSE(filter.passes(bytes)) << &c - cases << ": " << testing::PrintToString(bytes);
    }
}

TEST(LayerMidiFilter, transposeWrapsRoundAndTouchesNotesAlone)
{
    Filter filter;
    const auto noteFor = [&filter](int transpose, int note)
    {
        filter.settings.transpose = transpose;
        return filter({{{0x93, note, 77}, 5}});
    };
    EXPECT_EQ(noteFor(1, 127), (Events{{{0x93, 0, 77}, 5}}));
    EXPECT_EQ(noteFor(-1, 0), (Events{{{0x93, 127, 77}, 5}}));
    EXPECT_EQ(noteFor(12, 120), (Events{{{0x93, 4, 77}, 5}}));
    EXPECT_EQ(noteFor(-24, 60), (Events{{{0x93, 36, 77}, 5}}));

    const Events others{
        {{0xa0, 60, 1}, 0}, {{0xb0, 60, 1}, 1}, {{0xc0, 60}, 2}, {{0xd0, 60}, 3}, {{0xe0, 60, 1}, 4}};
    EXPECT_EQ(filter(others), others);
}

TEST(LayerMidiFilter, blockSwitchesStopTheirMessagesAndNoOther)
{
    using Switch = bool LayerMidiSettings::*;
    const std::map<std::string, std::pair<Switch, std::vector<std::vector<int>>>> cases{
        {"program change", {&LayerMidiSettings::blockProgramChange, {{0xc0, 5}}}},
        {"bank select", {&LayerMidiSettings::blockBankSelect, {{0xb0, 32, 5}}}},
        {"pitch wheel", {&LayerMidiSettings::blockPitchWheel, {{0xe0, 0, 64}}}},
        {"mod wheel", {&LayerMidiSettings::blockModWheel, {{0xb0, 1, 5}}}},
        {"aftertouch", {&LayerMidiSettings::blockAfterTouch, {{0xa0, 60, 5}}}},
        {"sustain", {&LayerMidiSettings::blockSustain, {{0xb0, 64, 127}, {0xb0, 64, 63}, {0xb0, 64, 0}}}},
        {"user 1", {&LayerMidiSettings::blockUserController1, {{0xb0, 39, 5}}}},
        {"user 2", {&LayerMidiSettings::blockUserController2, {{0xb0, 42, 5}}}},
    };
    const std::vector<std::vector<int>> neverBlocked{{0xb0, 0, 5}, {0xd0, 5}, {0xb0, 7, 5}, {0x90, 64, 5}};

    for (const auto& [name, theCase] : cases)
    {
        Filter filter;
        filter.settings.*theCase.first = true;
        for (const auto& [otherName, other] : cases)
            for (const auto& bytes : other.second)
                EXPECT_EQ(filter.passes(bytes), name != otherName) << name << " on " << otherName;
        for (const auto& bytes : neverBlocked)
            EXPECT_TRUE(filter.passes(bytes)) << name;
    }

    Filter filter;
    filter.settings.blockUserController1 = true;
    filter.settings.userController1 = 0;
    EXPECT_FALSE(filter.passes({0xb0, 0, 5}));
}

TEST(LayerMidiFilter, freeControllerBlockLeavesSixControllers)
{
    Filter filter;
    filter.settings.freeControllerBlock = true;
    std::vector<int> passed;
    for (int number = 0; number < 128; ++number)
        if (filter.passes({0xb5, number, 1}))
            passed.push_back(number);
    EXPECT_EQ(passed, (std::vector<int>{0, 1, 2, 4, 64, 123}));
    EXPECT_TRUE(filter.passes({0xe0, 0, 64}));

    filter.settings.blockSustain = true;
    EXPECT_FALSE(filter.passes({0xb0, 64, 127}));
}

TEST(LayerMidiFilter, drumZonesPlayTheirPads)
{
    Filter filter;
    filter.settings.drumMode = true;
    const std::vector<int> pads{60, 62, 64, 65, 61, 63, 66, 67};
    for (std::size_t zone = 0; zone < pads.size(); ++zone)
    {
        const int low = 10 * static_cast<int>(zone);
        filter.settings.zones[zone] = {low, low + 4, 20, 100};
    }

    for (std::size_t zone = 0; zone < pads.size(); ++zone)
    {
        const int key = 10 * static_cast<int>(zone);
        const int pad = pads[zone];
        EXPECT_EQ(filter({{{0x92, key, 90}, 3}, {{0x92, key + 4, 90}, 4}}), (Events{{{0x92, pad, 90}, 3}}));
        EXPECT_EQ(filter({{{0x92, key, 0}, 5}}), Events{}) << "one key is still down";
        EXPECT_EQ(filter({{{0x82, key + 4, 30}, 6}}), (Events{{{0x82, pad, 0}, 6}}));
        EXPECT_EQ(filter({{{0x82, key, 0}, 7}}), (Events{{{0x82, pad, 0}, 7}})) << "an off of a silent zone";
        EXPECT_EQ(filter({{{0x92, key, 19}, 0}, {{0x92, key, 101}, 0}, {{0x92, key + 5, 90}, 0}}), Events{});
    }

    filter.settings.zoneOn[0] = false;
    EXPECT_EQ(filter({{{0x90, 0, 90}, 0}}), Events{});
    EXPECT_EQ(filter({{{0x80, 0, 0}, 0}}), (Events{{{0x80, 60, 0}, 0}}))
        << "an off goes to a zone that is off";

    // Zones look at their own ranges alone, and may overlap; they sound in their own order.
    filter.settings.midiChannel = 3;
    filter.settings.keyMin = 100;
    filter.settings.transpose = 7;
    filter.settings.zones[6] = filter.settings.zones[4];
    EXPECT_EQ(filter({{{0x90, 40, 90}, 1}}), (Events{{{0x90, 61, 90}, 1}, {{0x90, 66, 90}, 1}}));
    EXPECT_TRUE(filter.passes({0xb2, 7, 1}));
}

TEST(LayerMidiFilter, silencingSendsOffsForEveryNoteAndDropsTheBlock)
{
    Filter filter;
    filter.settings.drumMode = true;
    filter.settings.zones[0] = {60, 60, 0, 127};
    for (std::size_t zone = 1; zone < filter.settings.zones.size(); ++zone)
        filter.settings.zones[zone] = {127, 127, 0, 127};
    EXPECT_EQ(filter({{{0x90, 60, 90}, 0}}).size(), 1u);

    for (const auto& [midiChannel, status] : std::map<int, int>{{0, 0}, {1, 0}, {16, 15}})
    {
        filter.settings.midiChannel = midiChannel;
        filter.silence = true;
        const auto events = filter({{{0x90, 60, 90}, 7}, {{0x80, 60, 0}, 9}});
        ASSERT_EQ(events.size(), 256u);
        for (int note = 0; note < 128; ++note)
        {
            const auto i = static_cast<std::size_t>(2 * note);
            EXPECT_EQ(events[i], (Event{{0x80 + status, note, 0}, 0}));
            EXPECT_EQ(events[i + 1], (Event{{0xb0 + status, 123, 0}, 0}));
        }
    }
    filter.settings.midiChannel = 0;
    EXPECT_EQ(filter({{{0x90, 60, 90}, 0}}), (Events{{{0x90, 60, 90}, 0}})) << "the zone forgot its key";
}

TEST(LayerMidiFilter, parametersDecode)
{
    LayerMidiParameters parameters;
    const auto after = [&parameters](int n, float value)
    {
        parameters.write(n, value);
        return parameters.snapshot();
    };

    EXPECT_EQ(after(236, 0.0624f).midiChannel, 0);
    EXPECT_EQ(after(236, 0.0625f).midiChannel, 1);
    EXPECT_EQ(after(236, 1.0f).midiChannel, 16);
    EXPECT_EQ(after(251, 0.3046875f).userController1, 39);
    EXPECT_EQ(after(264, 0.0f).transpose, -24);
    EXPECT_EQ(after(264, 0.5f).transpose, 0);
    EXPECT_TRUE(after(250, 0.01f).blockUserController2);
    for (int n : {-1, 0, 200, 235, 237, 242, 253, 265, 269, 302, 399, 1 << 30})
        parameters.write(n, 1.0f);
    EXPECT_EQ(parameters.snapshot().midiChannel, 16);
}

// Keys and velocities are MIDI data: no end of a range, at any value of its parameter, may leave 0 to 127.
TEST(LayerMidiFilter, rangesStayWithinMidi)
{
    std::map<int, std::function<int(const LayerMidiSettings&)>> ends{
        {260, [](const auto& s) { return s.keyMin; }},
        {261, [](const auto& s) { return s.keyMax; }},
        {262, [](const auto& s) { return s.velocityMin; }},
        {263, [](const auto& s) { return s.velocityMax; }},
    };
    for (int zone = 0; zone < numZones; ++zone)
    {
        const auto z = static_cast<std::size_t>(zone);
        ends[270 + 2 * zone] = [z](const auto& s) { return s.zones[z].keyMin; };
        ends[271 + 2 * zone] = [z](const auto& s) { return s.zones[z].keyMax; };
        ends[286 + 2 * zone] = [z](const auto& s) { return s.zones[z].velocityMin; };
        ends[287 + 2 * zone] = [z](const auto& s) { return s.zones[z].velocityMax; };
    }

    LayerMidiParameters parameters;
    for (const auto& [n, end] : ends)
    {
        const int start = end(parameters.snapshot());
        EXPECT_TRUE(start >= 0 && start <= 127) << n << " starts at " << start;
        for (const auto& [value, decoded] :
             std::map<float, int>{{-1.0f, 0}, {0.0f, 0}, {0.5f, 63}, {1.0f, 127}, {9.0f, 127}})
        {
            parameters.write(n, value);
            EXPECT_EQ(end(parameters.snapshot()), decoded) << n << " at " << value;
        }
        // Half a step above each whole number, as the editor writes it.
        for (int whole = 0; whole < 127; ++whole)
        {
            parameters.write(n, (static_cast<float>(whole) + 0.5f) / 127.0f);
            ASSERT_EQ(end(parameters.snapshot()), whole) << n;
        }
    }
}

namespace
{
int randomNumber(std::mt19937& random, int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(random);
}

/** One to four bytes that are mostly a note, often cut short, and sometimes not MIDI at all. */
std::vector<int> randomMessage(std::mt19937& random, bool drumMode)
{
    const auto number = [&random](int low, int high) { return randomNumber(random, low, high); };
    std::vector<int> bytes(static_cast<std::size_t>(number(1, 4)));
    for (auto& byte : bytes)
        byte = number(0, number(0, 9) == 0 ? 255 : 127);
    if (number(0, 3) == 0)
        bytes[0] = number(0x8, 0xf) * 16 + number(0, 3);
    else
        bytes[0] = number(0, 1) == 0 ? 0x90 : 0x80;
    // The zones don't tell channels apart: what goes down on one channel has to come up on it.
    if (drumMode && (bytes[0] & 0xf0) == 0x90)
        bytes[0] = 0x90;
    return bytes;
}
} // namespace

// Whatever a host sends: positions stay in order, every message is whole, and once all keys are up nothing
// sounds.
TEST(LayerMidiFilter, randomEventsHangNoNote)
{
    std::mt19937 random(20240517);
    const auto number = [&random](int low, int high) { return randomNumber(random, low, high); };

    for (int round = 0; round < 300; ++round)
    {
        Filter filter;
        auto& s = filter.settings;
        s.midiChannel = number(0, 3);
        s.drumMode = number(0, 1) == 1;
        s.transpose = number(-24, 24);
        s.keyMin = number(0, 60);
        s.keyMax = number(60, 127);
        s.velocityMin = number(0, 60);
        s.velocityMax = number(60, 127);
        s.freeControllerBlock = number(0, 1) == 1;
        for (auto& zone : s.zones)
            zone = {number(0, 60), number(40, 127), number(0, 60), number(40, 127)};

        std::map<std::pair<int, int>, int> sounding;
        Events allUp;
        for (int block = 0; block < 6; ++block)
        {
            const bool last = block == 5;
            Events in;
            int position = 0;
            for (int i = 0; i < 40 && !last; ++i)
            {
                position += number(0, 3);
                in.push_back({randomMessage(random, s.drumMode), position});
            }
            if (last)
                for (int channel = 0; channel < 4; ++channel)
                    for (int note = 0; note < 128; ++note)
                        in.push_back({{0x80 + channel, note, 0}, 0});

            int lastPosition = 0;
            for (const auto& event : filter(in))
            {
                ASSERT_GE(event.position, lastPosition);
                lastPosition = event.position;
                const int status = event.bytes[0] & 0xf0;
                if (status == 0xf0)
                    continue;
                ASSERT_EQ(static_cast<int>(event.bytes.size()), status == 0xc0 || status == 0xd0 ? 2 : 3);
                ASSERT_LT(event.bytes[1], 128);
                const std::pair key{event.bytes[0] & 0xf, event.bytes[1]};
                if (status == 0x90 && event.bytes[2] > 0)
                    sounding[key] = 1;
                else if (status == 0x80 || status == 0x90)
                    sounding.erase(key);
            }
        }
        EXPECT_TRUE(sounding.empty()) << "round " << round;
        for (int zone = 0; zone < numZones; ++zone)
            EXPECT_TRUE(filter.held.isEmpty(zone));
    }
}

TEST(LayerMidiFilter, allocatesNothingIntoReservedOutput)
{
    Filter filter;
    filter.settings.drumMode = true;
    for (auto& zone : filter.settings.zones)
        zone = {0, 127, 0, 127};
    juce::MidiBuffer out;
    out.ensureSize(256 * 16);
    const auto* memory = out.data.begin();
    for (int block = 0; block < 50; ++block)
    {
        out.clear();
        filterLayerMidi(filter.settings, filter.held, block % 7 == 0,
                        bufferOf({{{0x90, block, 9}, 0}, {{0x80, block, 9}, 1}}), out);
        ASSERT_EQ(out.data.begin(), memory);
    }
}

} // namespace quorel
