// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstrumentTestTools.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace quorel::test
{

constexpr double pi = 3.14159265358979323846;

/** Each test plays the built-in sounds of one name. */
class InstrumentSound : public testing::TestWithParam<StarterInstrument>
{
protected:
    bool isKit() const { return GetParam().engine == EngineKind::drums; }

    int anyNote() const { return isKit() ? 62 : 69; }

    TemporaryBanks noBanks{false};
    RawVst2Host host{binaryOf(GetParam().name)};
};

static bool isFinite(const std::vector<float>& samples)
{
    return std::all_of(samples.begin(), samples.end(), [](float x) { return std::isfinite(x); });
}

/** Strength of one frequency in a windowed stretch. */
static double strength(const std::vector<float>& x, std::size_t from, std::size_t n, double frequency,
                       double rate)
{
    double re = 0.0, im = 0.0;
    for (std::size_t i = 0; i < n; ++i)
    {
        const double w = 0.5 - 0.5 * std::cos(2.0 * pi * static_cast<double>(i) / static_cast<double>(n));
        const double phase = 2.0 * pi * frequency * static_cast<double>(i) / rate;
        re += w * static_cast<double>(x[from + i]) * std::cos(phase);
        im += w * static_cast<double>(x[from + i]) * std::sin(phase);
    }
    return std::hypot(re, im) / static_cast<double>(n);
}

/** Levels in third-octave bands from 60 Hz: decibels below the loudest, no less than -60. */
static std::vector<double> spectrumOf(const StereoBuffer& audio)
{
    std::vector<double> bands;
    for (double f = 60.0; f < 15000.0; f *= std::pow(2.0, 1.0 / 3.0))
    {
        double power = 1.0e-12;
        for (int i = 0; i < 6; ++i)
            power += std::pow(strength(audio.left, 0, 8192, f * std::pow(2.0, i / 18.0), 44100.0), 2.0);
        bands.push_back(10.0 * std::log10(power));
    }
    const double loudest = *std::max_element(bands.begin(), bands.end());
    for (double& band : bands)
        band = std::max(band - loudest, -60.0);
    return bands;
}

/** Leaves the organ one drawbar: its notes are sines then. */
static void drawOneBar(RawVst2Host& organ)
{
    const auto& info = instrumentFor("Fenn2");
    for (int live = 0; live < numLiveParameters; ++live)
        organ.setParameter(hostParameterOf(info, live), live == 2 ? 1.0f : (live == 11 ? 0.8f : 0.0f));
}

TEST_P(InstrumentSound, plays_at_a_sensible_level_and_louder_with_velocity)
{
    const auto soft = host.render(44100, {noteOn(0, anyNote(), 30)});
    host.setFormat(44100.0, 512);
    const auto loud = host.render(44100, {noteOn(0, anyNote(), 127)});
    host.setFormat(44100.0, 512);
    const auto usual = host.render(44100, {noteOn(0, anyNote(), 100)});
    EXPECT_GT(peakOf(loud), peakOf(soft) * 1.15f);
    EXPECT_GT(peakOf(usual), 0.06f);
    EXPECT_LT(peakOf(usual), 0.35f);
}

TEST_P(InstrumentSound, is_in_tune_and_bends_by_two_semitones)
{
    if (isKit())
        return;
    // Detuned choruses and vibratos have no one frequency: off with them, where the sound has them on an Easy
    // knob.
    const auto& info = GetParam();
    if (info.engine == EngineKind::analogue)
        host.setParameter(info.easyMapping[1], 0.0f);
    if (info.engine == EngineKind::organ || info.engine == EngineKind::analogue)
        host.setParameter(info.engine == EngineKind::organ ? 400 : 402, 0.0f);

    for (const int bend : {0x40, 0x7f})
    {
        host.setFormat(44100.0, 512);
        const auto audio =
            host.render(60000, {{0, {0xe0, 0x7f, static_cast<std::uint8_t>(bend)}}, noteOn(4410, 69)});
        const double expected = bend == 0x40 ? 440.0 : 440.0 * std::pow(2.0, 2.0 / 12.0);
        double best = 0.0, found = 0.0;
        for (double cents = -60.0; cents <= 60.0; cents += 1.0)
        {
            const double s =
                strength(audio.left, 12000, 32768, expected * std::pow(2.0, cents / 1200.0), 44100.0);
            if (s > best)
            {
                best = s;
                found = cents;
            }
        }
        EXPECT_NEAR(found, 0.0, 6.0) << "bend " << bend; // 0x40 0x7f is 3 cents sharp itself
        EXPECT_GT(best, 1.0e-4);
    }
}

TEST_P(InstrumentSound, starts_at_the_sample_of_the_event_and_without_a_step)
{
    const int start = 1000;
    const auto audio = host.render(22050, {noteOn(start, anyNote(), 127)});
    EXPECT_EQ(peakOf(audio, 0, start), 0.0f);
    EXPECT_GT(peakOf(audio, start, start + 44), 0.0f);
    EXPECT_LT(peakOf(audio, start, start + 4), 0.12f * peakOf(audio));
}

TEST_P(InstrumentSound, sounds_the_same_whatever_the_block_size)
{
    std::vector<MidiEvent> events;
    for (int i = 0; i < 12; ++i)
    {
        events.push_back(noteOn(700 * i + 13, 60 + i % 8, 40 + 7 * i));
        events.push_back(noteOff(700 * i + 900, 60 + i % 8));
    }
    events.push_back(controller(3001, 1, 90));
    events.push_back({5003, {0xe0, 0, 0x20}});
    std::sort(events.begin(), events.end(), [](const auto& a, const auto& b) { return a.sample < b.sample; });

    const auto reference = host.render(12000, events);
    for (const int block : {1, 37, 4096, 20000})
    {
        RawVst2Host other(binaryOf(GetParam().name), 44100.0, block);
        const auto audio = other.render(12000, events);
        EXPECT_EQ(audio.left, reference.left) << block;
        EXPECT_EQ(audio.right, reference.right) << block;
    }
}

TEST_P(InstrumentSound, stays_finite_at_any_rate_from_the_lowest_note_to_the_highest)
{
    for (const double rate : {8000.0, 44100.0, 384000.0})
    {
        host.setFormat(rate, 333);
        const std::vector<MidiEvent> events{noteOn(0, 0, 127),        noteOn(10, 127, 127),
                                            noteOn(20, 60, 127),      noteOn(30, 67, 127),
                                            {40, {0xe0, 0x7f, 0x7f}}, controller(50, 1, 127)};
        const auto audio = host.render(static_cast<int>(rate / 8.0), events);
        ASSERT_TRUE(isFinite(audio.left) && isFinite(audio.right)) << rate;
        EXPECT_GT(peakOf(audio), 0.01f) << rate;
        EXPECT_LT(peakOf(audio), 4.0f) << rate;
    }
}

TEST_P(InstrumentSound, survives_extreme_parameters_and_garbage)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> bytes(0, 255);
    const auto& info = GetParam();
    for (int round = 0; round < 40; ++round)
    {
        for (int live = 0; live < numLiveParameters; ++live)
            host.setParameter(hostParameterOf(info, live), bytes(random) < 128 ? 0.0f : 1.0f);
        host.setParameter(info.easyMapping[2], std::numeric_limits<float>::quiet_NaN());
        host.setParameter(-1, 1.0f);
        host.setParameter(info.parametersPerProgram, 1.0f);
        std::vector<MidiEvent> events;
        for (int i = 0; i < 60; ++i)
            events.push_back(
                {bytes(random),
                 {static_cast<std::uint8_t>(bytes(random)), static_cast<std::uint8_t>(bytes(random)),
                  static_cast<std::uint8_t>(bytes(random))}});
        const auto audio = host.render(1024, events);
        ASSERT_LT(peakOf(audio), 20.0f) << round;
        ASSERT_TRUE(isFinite(audio.left)) << round;
    }
}

TEST_P(InstrumentSound, ends_with_the_key_unless_the_pedal_holds_it)
{
    const int note = anyNote();
    // The default sounds die away within 12 s of their release at the latest.
    const std::vector<std::pair<const char*, std::vector<MidiEvent>>> endings{
        {"note off", {noteOn(0, note), noteOff(4000, note)}},
        {"note on at velocity 0", {noteOn(0, note), noteOn(4000, note, 0)}},
        {"all notes off", {noteOn(0, note), controller(4000, 123, 0)}},
        {"all sound off", {noteOn(0, note), controller(4000, 120, 0)}},
        {"pedal up",
         {noteOn(0, note), controller(1000, 64, 127), noteOff(2000, note), controller(4000, 64, 0)}}};
    for (const auto& [what, events] : endings)
    {
        host.setFormat(8000.0, 512);
        const auto audio = host.render(100000, events);
        EXPECT_EQ(peakOf(audio, 99000), 0.0f) << what;
    }
    if (isKit())
        return;
    const auto held = [&](int pedal)
    {
        host.setFormat(8000.0, 512);
        // All notes off that come for other keys, and note-offs that nothing answers, end nothing.
        const auto audio = host.render(
            12000, {controller(0, 64, pedal), noteOn(100, note), noteOff(2000, 30), noteOff(4000, note)});
        return peakOf(audio, 11000);
    };
    EXPECT_GT(held(127), 2.0f * held(0));
}

INSTANTIATE_TEST_SUITE_P(All, InstrumentSound, testing::ValuesIn(starterInstruments()), testName);

TEST(InstrumentSounds, differ_from_name_to_name)
{
    TemporaryBanks noBanks(false);
    std::vector<std::vector<double>> spectra;
    for (const auto& info : starterInstruments())
    {
        RawVst2Host host(binaryOf(info.name));
        spectra.push_back(spectrumOf(host.render(20000, {noteOn(0, 60)})));
        for (std::size_t i = 0; i + 1 < spectra.size(); ++i)
        {
            double difference = 0.0;
            for (std::size_t band = 0; band < spectra[i].size(); ++band)
                difference += std::abs(spectra[i][band] - spectra.back()[band]);
            difference /= static_cast<double>(spectra[i].size());
            EXPECT_GT(difference, 2.5) << info.name << " and " << starterInstruments()[i].name;
        }
    }
}

TEST(InstrumentSounds, pads_of_the_kits_differ)
{
    TemporaryBanks noBanks(false);
    for (const char* name : {"Dorvik", "Dorvik-K"})
    {
        std::vector<StereoBuffer> pads;
        for (int note = 60; note < 68; ++note)
        {
            RawVst2Host host(binaryOf(name));
            pads.push_back(host.render(22050, {noteOn(0, note)}));
            EXPECT_GT(peakOf(pads.back()), 0.03f) << name << ' ' << note;
            for (std::size_t i = 0; i + 1 < pads.size(); ++i)
                EXPECT_NE(pads[i].left, pads.back().left);
        }
        // Closing the hat ends the open sound.
        RawVst2Host host(binaryOf(name));
        const auto choked = host.render(22050, {noteOn(0, 65), noteOn(2000, 64)});
        EXPECT_LT(peakOf(choked, 16000), 0.1f * peakOf(pads[5], 16000)) << name;
    }
}

TEST(InstrumentSounds, voices_are_stolen_without_a_click)
{
    // One drawbar of the organ is a sine: how steep a sum of sines gets is known. A voice cut off in
    // mid-swing would step by up to its amplitude.
    TemporaryBanks noBanks(false);
    RawVst2Host host(binaryOf("Fenn2"), 48000.0, 256);
    drawOneBar(host);
    const float one = peakOf(host.render(4800, {noteOn(0, 36)}));
    ASSERT_GT(one, 0.01f);

    // Every 60 samples a voice is stolen and fades; every 12, the spare voices run out and fading ones are
    // cut.
    for (const int interval : {60, 12})
    {
        host.setFormat(48000.0, 256);
        std::vector<MidiEvent> events;
        for (int i = 0; i < 400; ++i)
            events.push_back(noteOn(interval * i, (7 * i) % 31));
        const auto audio = host.render(400 * interval, events);
        float steepest = 0.0f;
        for (std::size_t i = 1; i < audio.left.size(); ++i)
            steepest = std::max(steepest, std::abs(audio.left[i] - audio.left[i - 1]));
        // Highest note: 46.2 Hz. Attacks and fades take 2 ms and more, a dozen of them at once.
        const double slope = 2.0 * pi * 46.2 / 48000.0 * 32.0 + 12.0 / 96.0;
        EXPECT_LT(static_cast<double>(steepest), slope * static_cast<double>(one)) << interval;
    }
}

TEST(InstrumentSounds, sixteen_notes_sound_together)
{
    TemporaryBanks noBanks(false);
    RawVst2Host host(binaryOf("Fenn2"));
    drawOneBar(host);
    std::vector<MidiEvent> events;
    for (int i = 0; i < 16; ++i)
        events.push_back(noteOn(0, 45 + 2 * i));
    const auto audio = host.render(40000, events);
    EXPECT_LT(peakOf(audio), 1.4f);
    for (int note = 45; note < 77; note += 2)
    {
        const auto level = [&](int n)
        { return strength(audio.left, 4000, 32768, 440.0 * std::pow(2.0, (n - 69) / 12.0), 44100.0); };
        EXPECT_GT(level(note), 10.0 * level(note + 1)) << note;
    }
}

} // namespace quorel::test
