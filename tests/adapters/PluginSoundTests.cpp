// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-in file plays: restored layers sound as their instruments do by themselves.
#include "RawVst2Host.h"
#include "SavedSound.h"
#include "ScratchUser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <future>
#include <random>

namespace quorel::test
{

// Programs without a vibrato that runs on between the notes: two renders are the same then.
static const std::array<InstrumentChoice, numLayers> fourInstruments{
    {{"Orlen", 4}, {"Hexley", 1}, {"Imre", 5}, {"Glasson", 2}}};

static const std::vector<MidiEvent> someNotes{
    {100, {0x90, 48, 90}}, {3000, {0x90, 64, 120}}, {9001, {0x80, 48, 0}}, {12000, {0x80, 64, 0}}};
static constexpr int someSamples = 20000;

static float peakOf(const StereoBuffer& audio)
{
    float peak = 0.0f;
    for (std::size_t i = 0; i < audio.left.size(); ++i)
        peak = std::max({peak, std::abs(audio.left[i]), std::abs(audio.right[i])});
    return peak;
}

static void expectSame(const StereoBuffer& actual, const StereoBuffer& expected, float tolerance)
{
    ASSERT_EQ(actual.left.size(), expected.left.size());
    float difference = 0.0f;
    for (std::size_t i = 0; i < actual.left.size(); ++i)
        difference = std::max({difference, std::abs(actual.left[i] - expected.left[i]),
                               std::abs(actual.right[i] - expected.right[i])});
    EXPECT_LE(difference, tolerance * peakOf(expected));
}

/** The first block after a restore silences whatever was held, and takes no notes. */
static void restore(RawVst2Host& host, const Bytes& sound)
{
    host.setChunk(sound);
    host.render(512);
}

/** The instrument on its own, at the level that layer fader and master fader have by default. */
static StereoBuffer playAlone(const InstrumentChoice& choice, double rate, int blockSize)
{
    RawVst2Host instrument(instrumentFile(choice.name), rate, blockSize);
    hostedState(instrument, choice);
    instrument.render(512);
    auto audio = instrument.render(someSamples, someNotes);
    const float fader = 4.0f * 0.63f * 0.63f * 0.63f;
    for (auto* channel : {&audio.left, &audio.right})
        for (float& x : *channel)
            x *= fader * fader;
    return audio;
}

static StereoBuffer play(const Bytes& sound, double rate = 44100.0, int blockSize = 512)
{
    RawVst2Host host(QUOREL_PLUGIN_FILE, rate, blockSize);
    restore(host, sound);
    return host.render(someSamples, someNotes);
}

static SavedSound fourLayers()
{
    RawVst2Host host(QUOREL_PLUGIN_FILE);
    return soundOf(host, fourInstruments);
}

TEST(PluginSound, each_restored_layer_sounds_like_its_instrument_alone_and_all_add_up)
{
    auto sound = fourLayers();
    const auto together = play(sound.bytes());
    StereoBuffer sum{std::vector<float>(someSamples), std::vector<float>(someSamples)};
    for (int layer = 0; layer < numLayers; ++layer)
    {
        const auto& choice = fourInstruments[static_cast<std::size_t>(layer)];
        SCOPED_TRACE(choice.name);
        auto soloed = sound;
        soloed.parameters[static_cast<std::size_t>(layerParameter(layer, 234))] = 1.0f;
        const auto audio = play(soloed.bytes());
        EXPECT_GT(peakOf(audio), 0.02f);
        expectSame(audio, playAlone(choice, 44100.0, 512), 1.0e-4f);
        for (std::size_t i = 0; i < sum.left.size(); ++i)
        {
            sum.left[i] += audio.left[i];
            sum.right[i] += audio.right[i];
        }
    }
    expectSame(together, sum, 1.0e-4f);
}

TEST(PluginSound, saves_what_it_restored_and_sounds_so_again)
{
    auto sound = fourLayers();
    sound.parameters[1] = 0.4f;
    sound.parameters[static_cast<std::size_t>(layerParameter(2, 264))] = 0.75f;
    std::copy_n("Round Trip", 11, sound.header.begin() + 24);

    RawVst2Host first(QUOREL_PLUGIN_FILE), second(QUOREL_PLUGIN_FILE);
    first.setChunk(sound.bytes());
    const auto chunk = first.chunk();
    const SavedSound saved(chunk);
    EXPECT_EQ(saved.layers, sound.layers);
    for (std::size_t i = 0; i < numHostParameters; ++i)
    {
        // The page shown, and values that mirror the instruments'.
        const bool moves = i == 2 || (i >= 200 && i < 1000 && i % 200 >= 110 && i % 200 < 122);
        EXPECT_TRUE(moves || saved.parameters[i] == sound.parameters[i]) << i;
    }

    restore(second, chunk);
    EXPECT_EQ(second.programName(0), "Round Trip");
    first.render(512);
    const auto audio = second.render(someSamples, someNotes);
    EXPECT_GT(peakOf(audio), 0.01f);
    expectSame(audio, first.render(someSamples, someNotes), 0.0f);

    // A chunk without layers empties them.
    for (auto& layer : sound.layers)
        layer.clear();
    restore(second, sound.bytes());
    EXPECT_EQ(peakOf(second.render(someSamples, someNotes)), 0.0f);

    // What a host writes: names and layer strips, EQ and effects, which nothing else is tied to.
    std::mt19937 random(1);
    for (const auto& [from, to] : {std::pair(100, 163), std::pair(232, 241), std::pair(380, 396),
                                   std::pair(832, 841), std::pair(1200, 1259), std::pair(1300, 1316)})
        for (int index = from; index <= to; ++index)
        {
            const float value = std::uniform_real_distribution<float>(0.0f, 1.0f)(random);
            first.setParameter(index, value);
            sound.parameters[static_cast<std::size_t>(index)] = value;
            EXPECT_EQ(first.parameter(index), value) << index;
        }
    const SavedSound written(first.chunk());
    for (std::size_t i = 1200; i < 1317; ++i)
        EXPECT_EQ(written.parameters[i], sound.parameters[i]) << i;
}

TEST(PluginSound, two_instances_at_once_play_at_their_own_rates)
{
    auto sound = fourLayers();
    sound.parameters[static_cast<std::size_t>(layerParameter(0, 234))] = 1.0f;
    const auto playAt = [](RawVst2Host& host) { return host.render(someSamples, someNotes); };

    RawVst2Host slow(QUOREL_PLUGIN_FILE, 44100.0, 512);
    restore(slow, sound.bytes());
    RawVst2Host fast(QUOREL_PLUGIN_FILE, 96000.0, 64);
    restore(fast, sound.bytes());
    auto slowAudio = std::async(std::launch::async, playAt, std::ref(slow));
    const auto fastAudio = playAt(fast);
    expectSame(slowAudio.get(), playAlone(fourInstruments[0], 44100.0, 512), 1.0e-4f);
    expectSame(fastAudio, playAlone(fourInstruments[0], 96000.0, 64), 1.0e-4f);
}

/** A chunk with one kind of damage. */
static Bytes damaged(const Bytes& chunk, int kind, std::mt19937& random)
{
    const auto below = [&random](std::size_t n)
    { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random); };
    auto bytes = chunk;
    switch (kind)
    {
    case 0: // anything at all
        bytes.resize(below(300));
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::uint8_t>(below(256)); });
        break;
    case 1: // cut off anywhere
        bytes.resize(below(bytes.size()));
        break;
    case 2: // wild counts, names and sizes
        for (std::size_t i = 4 * (1 + below(8)); i-- > 0;)
            bytes[8 + below(96)] = static_cast<std::uint8_t>(below(256));
        break;
    case 3: // one layer's size is extreme
    {
        constexpr std::array<std::uint32_t, 6> extremes{0, 1, 0x7fffffff, 0x80000000, 0xffffffff, 0xfffffff0};
        const auto size = extremes[below(extremes.size())];
        const auto offset = 88 + 4 * below(4);
        for (std::size_t i = 0; i < 4; ++i)
            bytes[offset + i] = static_cast<std::uint8_t>(size >> (8 * i));
        break;
    }
    case 4: // parameters that are no numbers from 0 to 1, among them the instruments' names
        for (int i = 0; i < 400; ++i)
            bytes[104 + below(4 * numHostParameters)] = static_cast<std::uint8_t>(below(256));
        break;
    default: // hosted states
        for (int i = 0; i < 40; ++i)
            bytes[104 + 4 * numHostParameters + below(bytes.size() - 104 - 4 * numHostParameters)] =
                static_cast<std::uint8_t>(below(256));
        break;
    }
    return bytes;
}

TEST(PluginSound, survives_damaged_chunks_and_plays_on)
{
    const auto good = fourLayers().bytes();
    RawVst2Host host(QUOREL_PLUGIN_FILE);
    std::mt19937 random(20);
    for (int i = 0; i < 120; ++i)
    {
        SCOPED_TRACE(i);
        host.setChunk(damaged(good, i % 6, random));
        for (int index = 0; index < numHostParameters; ++index)
        {
            const float value = host.parameter(index);
            ASSERT_TRUE(value >= 0.0f && value <= 1.0f) << "parameter " << index << " is " << value;
        }
        for (const float x : host.render(1024, {{0, {0x90, 60, 100}}}).left)
            ASSERT_TRUE(std::isfinite(x));
    }

    host.setChunk(good);
    const auto before = host.chunk();
    for (const auto& foreign : {Bytes{}, Bytes{'d', 'm', 't'}, Bytes(8000, 0), Bytes(8000, 0xff)})
        host.setChunk(foreign);
    EXPECT_EQ(host.chunk(), before);
    EXPECT_GT(peakOf(host.render(someSamples, someNotes)), 0.02f);
}

} // namespace quorel::test
