// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-render as a user starts it.
#include "CommandRuns.h"

#include "parameters/ParameterLayout.h"
#include "presets/StateChunk.h"
#include "support/ScratchFolder.h"
#include "support/SmallDisk.h"

#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>
#include <juce_events/juce_events.h>

#include <algorithm>
#include <cmath>

namespace quorel
{
namespace
{

struct RenderCommand : testing::Test
{
    /** Sets a user up once for all tests: that takes longer than a render. */
    static void SetUpTestSuite()
    {
        prefix = std::make_unique<test::ScratchFolder>();
        const auto outcome =
            test::runCommand(QUOREL_TEST_SETUP, {"--prefix", prefix->path().getFullPathName()});
        ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    }

    static void TearDownTestSuite() { prefix.reset(); }

    static juce::StringArray commandLine(const juce::StringArray& arguments)
    {
        juce::StringArray whole{QUOREL_TEST_RENDER, "--prefix", prefix->path().getFullPathName()};
        whole.addArray(arguments);
        return whole;
    }

    static test::ProgramOutcome render(const juce::StringArray& arguments)
    {
        return test::runProgram(commandLine(arguments));
    }

    /** Two quarter notes at 120, the second an octave higher. */
    juce::String song() const
    {
        juce::MidiMessageSequence sequence;
        for (const int note : {0, 1})
        {
            sequence.addEvent(juce::MidiMessage::noteOn(1, 60 + 12 * note, juce::uint8(100)), note * 96.0);
            sequence.addEvent(juce::MidiMessage::noteOff(1, 60 + 12 * note), note * 96.0 + 90.0);
        }
        juce::MidiFile file;
        file.setTicksPerQuarterNote(96);
        file.addTrack(sequence);
        juce::MemoryOutputStream bytes;
        file.writeTo(bytes);
        const auto target = scratch.child("song.mid");
        target.replaceWithData(bytes.getData(), bytes.getDataSize());
        return target.getFullPathName();
    }

    /** What a render writes to the standard output. */
    static std::string soundOf(const juce::StringArray& arguments)
    {
        juce::ChildProcess process;
        EXPECT_TRUE(process.start(commandLine(arguments), juce::ChildProcess::wantStdOut));
        std::string bytes;
        char part[4096];
        for (int size = 0; (size = process.readProcessOutput(part, sizeof(part))) > 0;)
            bytes.append(part, static_cast<size_t>(size));
        EXPECT_TRUE(process.waitForProcessToFinish(60000));
        EXPECT_EQ(process.getExitCode(), 0u);
        return bytes;
    }

    juce::String path(const char* name) const { return scratch.child(name).getFullPathName(); }

    /** A sound file's samples, its format checked; none if it isn't one. */
    juce::AudioBuffer<float> samplesOf(const char* name, double rate, int bits, double seconds) const
    {
        juce::AudioFormatManager formats;
        formats.registerBasicFormats();
        const std::unique_ptr<juce::AudioFormatReader> reader(formats.createReaderFor(scratch.child(name)));
        if (reader == nullptr)
        {
            ADD_FAILURE() << name << " is no sound file";
            return {2, 0};
        }
        EXPECT_EQ(reader->sampleRate, rate);
        EXPECT_EQ(reader->numChannels, 2u);
        EXPECT_EQ(static_cast<int>(reader->bitsPerSample), bits);
        EXPECT_NEAR(static_cast<double>(reader->lengthInSamples) / rate, seconds, 0.001);
        juce::AudioBuffer<float> samples(2, static_cast<int>(reader->lengthInSamples));
        reader->read(&samples, 0, samples.getNumSamples(), 0, true, true);
        return samples;
    }

    test::ScratchFolder scratch;
    static std::unique_ptr<test::ScratchFolder> prefix;
};

std::unique_ptr<test::ScratchFolder> RenderCommand::prefix;

TEST_F(RenderCommand, RendersLayersAndGetsThemBackFromAPreset)
{
    const auto midi = song();
    // The second layer plays program 3 by number, takes the low note alone and is panned hard.
    const juce::StringArray sound{"--layer",
                                  "1=Hexley:tine piano",
                                  "--param",
                                  "Layer1 Keyboard Range Min=72.5/127",
                                  "--layer=2=Glasson:3",
                                  "--param",
                                  "633=0",
                                  "--param",
                                  "layer1 pan=1",
                                  "--save-preset",
                                  path("made.qrl")};
    const juce::StringArray shape{"--rate", "44100", "--tail", "0.5", "--bits", "32", midi};

    juce::StringArray made(sound), kept(shape);
    made.addArray(shape);
    made.addArray({"-o", path("made.wav")});
    kept.addArray({"--preset", path("made.qrl"), "-o", path("kept.wav")});
    auto outcome = render(made);
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    const auto report = outcome.text;
    outcome = render(kept);
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;

    const auto samples = samplesOf("made.wav", 44100.0, 32, 1.5 - 6.0 / 192.0);
    const float peak = samples.getMagnitude(0, samples.getNumSamples());
    EXPECT_GT(peak, 0.01f);
    EXPECT_LT(peak, 4.0f);
    const auto decibels = [](double level)
    { return juce::String(juce::Decibels::gainToDecibels(level), 1) + " dBFS"; };
    const double left = static_cast<double>(samples.getRMSLevel(0, 0, samples.getNumSamples()));
    const double right = static_cast<double>(samples.getRMSLevel(1, 0, samples.getNumSamples()));
    const auto told = "length 1.47 s, peak " + decibels(static_cast<double>(peak)) + ", RMS " +
                      decibels(std::sqrt((left * left + right * right) / 2.0)) + ", ";
    EXPECT_TRUE(report.contains(told) && report.contains(" times real time")) << told << "\n" << report;
    EXPECT_FALSE(report.contains("no layer")) << report;

    // The same bytes go down a pipe, and nothing else.
    auto piped = kept;
    piped.set(piped.size() - 1, "-");
    EXPECT_TRUE(soundOf(piped) == test::bytesOf(scratch.child("kept.wav")));

    // For a user who hasn't got the instruments it fails.
    scratch.child("nobody").createDirectory();
    outcome = test::runCommand(QUOREL_TEST_RENDER, {"--prefix", path("nobody"), "--preset", path("made.qrl"),
                                                    midi, "-o", path("nobody.wav")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.text.contains("needs an instrument that is not here")) << outcome.text;
    EXPECT_TRUE(scratch.child("made.wav").hasIdenticalContentTo(scratch.child("kept.wav")));

    // By its name, through the fades that a player hears.
    const auto folder =
        prefix->child("data/Ostrand/Quorel/Banks").getChildFile(juce::CharPointer_UTF8("\xc3\x89t\xc3\xa9"));
    ASSERT_TRUE(folder.createDirectory() &&
                scratch.child("made.qrl").copyFileTo(folder.getChildFile("Two Layers.qrl")));
    juce::StringArray named(shape);
    named.addArray({"--preset", folder.getFileName() + "/Two Layers", "-o", path("named.wav"),
                    "--save-preset", path("named.qrl")});
    outcome = render(named);
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    const auto namedSamples = samplesOf("named.wav", 44100.0, 32, 1.5 - 6.0 / 192.0);
    for (const int channel : {0, 1})
        EXPECT_NEAR(namedSamples.getRMSLevel(channel, 0, namedSamples.getNumSamples()),
                    samples.getRMSLevel(channel, 0, samples.getNumSamples()), 0.01f * peak)
            << "the fade-in wasn't over, or another sound plays";

    // Another format and block size, a fixed tempo, an argument file.
    const auto arguments =
        scratch.write("sound.args", "# a comment\n\n--layer\n1= Zeph : Morning Pad\n--rate=48000\n");
    outcome = render({"@" + arguments.getFullPathName(), "--block", "37", "--bits", "16", "--tempo", "60",
                      "--tail", "1", midi, "-o", path("slow.flac")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    const auto slow = samplesOf("slow.flac", 48000.0, 16, 3.0 - 6.0 / 96.0);
    EXPECT_GT(slow.getMagnitude(0, slow.getNumSamples()), 0.01f);
}

TEST_F(RenderCommand, APresetSoundsTheSameEachTime)
{
    const auto midi = song();
    // Its free-running modulation goes on from where the change of presets has left it.
    for (const char* name : {"one.wav", "two.wav"})
        ASSERT_EQ(
            render({midi, "--preset", "06 Motion and Rhythm/Music Box Orbit", "-o", path(name)}).exitCode, 0);
    EXPECT_TRUE(scratch.child("one.wav").hasIdenticalContentTo(scratch.child("two.wav")));
}

TEST_F(RenderCommand, FeedsASoundFileToTheEffects)
{
    // One channel with a click of 0.5 at 0.1 s. Block 1 delays by 2^6 ms and 2^3 ms at no feedback; the line
    // adds a sample, and on the right 4 for its widening. Block 2 passes the dry click to the left alone at
    // -10 dB.
    const juce::StringArray arguments{"--tail", "0.25",
                                      "--bits", "32",
                                      "--fx",   "1=stereo DELAY:0.5,1/4,0,0.5,0.5,0,1,0",
                                      "--fx",   " 2 = 0 : mix=0,pan=0,LEVEL=0.625"};
    for (const double rate : {48000.0, 24000.0})
    {
        SCOPED_TRACE(rate);
        juce::AudioBuffer<float> click(1, static_cast<int>(rate / 2.0));
        click.clear();
        click.setSample(0, static_cast<int>(rate / 10.0), 0.5f);
        std::unique_ptr<juce::AudioFormatWriter> writer(juce::WavAudioFormat().createWriterFor(
            new juce::FileOutputStream(scratch.child("click.wav")), rate, 1, 24, {}, 0));
        ASSERT_TRUE(writer->writeFromAudioSampleBuffer(click, 0, click.getNumSamples()));
        writer.reset();

        auto all = arguments;
        all.addArray({"--input", path("click.wav"), "-o", path("out.wav")});
        const auto outcome = render(all);
        ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
        const auto out = samplesOf("out.wav", 48000.0, 32, 0.75);
        const auto loudest = [&](int channel, int from, int to)
        {
            const auto* samples = out.getReadPointer(channel);
            return static_cast<int>(std::max_element(samples + from, samples + to,
                                                     [](float a, float b)
                                                     { return std::abs(a) < std::abs(b); }) -
                                    samples);
        };
        // Conversion spreads the click over a few samples.
        const bool converted = rate != 48000.0;
        EXPECT_NEAR(loudest(0, 0, 6000), 4800, converted ? 2 : 0);
        EXPECT_NEAR(loudest(0, 6000, out.getNumSamples()), 4800 + 3072 + 1, converted ? 2 : 0);
        EXPECT_NEAR(loudest(1, 0, out.getNumSamples()), 4800 + 384 + 5, converted ? 2 : 0);
        EXPECT_LT(out.getMagnitude(0, 9000, out.getNumSamples() - 9000), 0.001f) << "no feedback";
        if (!converted)
        {
            EXPECT_NEAR(out.getSample(0, 4800), 0.5f * std::pow(10.0f, -0.5f), 0.001f);
        }
    }

    // Raised by 20 dB it clips in an integer format, and a warning says so.
    for (const char* bits : {"24", "32"})
    {
        const auto outcome = render({"--input", path("click.wav"), "--rate", "24000", "--bits", bits, "--fx",
                                     "1=0:mix=0,level=1", "-o", path("loud.wav")});
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.text.contains("the sound is clipped"), juce::String(bits) == "24") << outcome.text;
    }
}

TEST_F(RenderCommand, PutsASoundTogetherWithoutPlayingIt)
{
    const auto outcome = render({"--send", "3:2=0.5pre", "--send", "1:4=1/4 pre", "--send", "2:1=1",
                                 "--param", "Layer1 Pan=0.75", "--fx", "4=chorus / delay : 0.25, 1/4",
                                 "--save-preset", path("sound.qrl")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    const auto bytes = test::bytesOf(scratch.child("sound.qrl"));
    StateChunk chunk;
    ASSERT_EQ(readStateChunk(bytes.data(), bytes.size(), chunk), ChunkStatus::valid);
    const auto expectValue = [&chunk](int index, float value)
    { EXPECT_EQ(chunk.parameters[static_cast<std::size_t>(index)], value) << index; };
    expectValue(layerParameter(2, layerSlot::sendLevel + 1), 0.5f);
    expectValue(layerParameter(2, layerSlot::sendPreFader + 1), 1.0f);
    expectValue(layerParameter(0, layerSlot::sendLevel + 3), 0.25f);
    expectValue(layerParameter(0, layerSlot::sendPreFader + 3), 1.0f);
    expectValue(layerParameter(1, layerSlot::sendPreFader), 0.0f);
    expectValue(layerParameter(0, layerSlot::pan), 0.75f);
    expectValue(fxParameter(3, 0), 0.25f);
    expectValue(fxParameter(3, 1), 0.25f);
}

TEST_F(RenderCommand, ListsWhatThereIsToChooseFrom)
{
    const auto list = [](const juce::StringArray& arguments)
    {
        const auto outcome = render(arguments);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.text;
        return outcome.text;
    };
    const auto effects = juce::StringArray::fromLines(list({"--list-effects"}));
    int numTypes = 0;
    for (const auto& line : effects)
    {
        EXPECT_LE(line.length(), 100) << line;
        numTypes += line.trimStart().startsWith(juce::String(numTypes) + "  ") ? 1 : 0;
    }
    EXPECT_EQ(numTypes, 33) << effects.joinIntoString("\n");

    const auto instruments = list({"--list-instruments"});
    EXPECT_EQ(juce::StringArray::fromLines(instruments.trim()).size(), 14) << instruments;
    EXPECT_TRUE(instruments.contains("Dorvik-K\n"));
    EXPECT_TRUE(list({"--list-presets"}).contains("01 Keys and Splits/Four Corners\n"));
    const auto programs = list({"--list-programs", "--layer", "2=Hexley"});
    EXPECT_TRUE(programs.startsWith("Layer 2: Hexley\n    1  ")) << programs;
    EXPECT_TRUE(programs.contains("  Tine Piano\n")) << programs;
    const auto parameters = list({"--list-parameters", "--param", "Layer1 Pan=0.75"});
    EXPECT_TRUE(parameters.contains(" 233  Layer1 Pan                        0.7500  50  (-100 to 100)\n"))
        << parameters;
    EXPECT_FALSE(parameters.contains("Layer1 200 ")) << "a character of a name";

    // What can't sound warns.
    const auto silent = render({song(), "-o", path("silent.wav"), "--tail", "0"});
    EXPECT_EQ(silent.exitCode, 0);
    EXPECT_TRUE(silent.text.contains("no layer has an instrument")) << silent.text;
}

TEST_F(RenderCommand, RefusesBadInputInOneLineAndLeavesNothing)
{
    const auto midi = song();
    const auto wav = path("out.wav");
    const auto text = scratch.write("text.mid", "not music").getFullPathName();
    const auto empty = scratch.write("empty.mid", "").getFullPathName();
    const auto before = scratch.path().getNumberOfChildFiles(juce::File::findFilesAndDirectories);

    struct Case
    {
        juce::StringArray arguments;
        const char* expected;
    };

    const auto expectRefusals = [](const std::vector<Case>& cases, int exitCode)
    {
        for (const auto& c : cases)
        {
            SCOPED_TRACE(c.arguments.joinIntoString(" "));
            test::expectRefusal(render(c.arguments), exitCode, c.expected);
        }
    };
    constexpr int failed = 1, badUsage = 2;
    expectRefusals(
        {
            {{}, "no MIDI file"},
            {{"--no-such-option"}, "no-such-option"},
            {{midi}, "no output"},
            {{midi, "-o", path("out.mp3")}, ".wav or .flac"},
            {{midi, "-o", path("out.flac"), "--bits", "32"}, "FLAC"},
            {{midi, "-o", wav, "--layer", "5=Tarn"}, "N from 1 to 4"},
            {{midi, "-o", wav, "--param", "1=1.5"}, "from 0 to 1"},
            {{midi, "-o", wav, "--param", "1=nan"}, "from 0 to 1"},
            {{midi, "-o", wav, "--param", "1=1/0"}, "from 0 to 1"},
            {{midi, "-o", wav, "--fx", "5=Chorus"}, "N from 1 to 4"},
            {{midi, "-o", wav, "--fx", "1=33"}, "unknown effect \"33\""},
            {{midi, "-o", wav, "--fx", "1=HQ Revrb"}, "did you mean HQ Reverb?"},
            {{midi, "-o", wav, "--fx", "1=1:0,0,0,0,0,0,0,0,0,0,0"}, "at most 10"},
            {{midi, "-o", wav, "--fx", "1=1:0.5,,0"}, "from 0 to 1"},
            {{midi, "-o", wav, "--fx", "1=1:0.5:mix=inf"}, "from 0 to 1"},
            {{midi, "-o", wav, "--fx", "1=1:wet=1"}, "mix, pan and level"},
            {{midi, "-o", wav, "--fx", "1=1:mix=1:0.5"}, "values first"},
            {{midi, "-o", wav, "--send", "1:5=0.5"}, "LAYER:N=LEVEL"},
            {{midi, "-o", wav, "--send", "1:2=0.5post"}, "LAYER:N=LEVEL"},
            {{midi, "-o", wav, "--preset", "../Banks/99 Default Preset/Default Preset"}, "FOLDER/NAME"},
            {{midi, "-o", wav, "--rate", "0"}, "--rate"},
            {{midi, "-o", wav, "--tempo", "0"}, "--tempo"},
            {{"@" + path("missing.args")}, "missing.args"},
            {{"@" + scratch.path().getFullPathName()}, "(it is a folder)"},
            {{midi, "-o", scratch.path().getFullPathName()}, "the output is a folder"},
            {{midi, "-o", "-", "--list-effects"}, "list by a run of its own"},
        },
        badUsage);
    expectRefusals(
        {
            {{path("missing.mid"), "-o", wav}, "missing.mid"},
            {{text, "-o", wav}, "not a Standard MIDI File"},
            {{empty, "-o", wav}, "not a Standard MIDI File"},
            {{scratch.path().getFullPathName(), "-o", wav}, "(it is a folder)"},
            {{midi, "-o", path("no/such/folder/out.wav")}, "cannot write"},
            {{midi, "-o", wav, "--layer", "1=Theremin"}, "unknown instrument \"Theremin\""},
            {{midi, "-o", wav, "--layer", "1=Tarn:9"}, "no program \"9\""},
            {{midi, "-o", wav, "--param", "Mastr-volume=1"}, ": did you mean Master Volume? (see"},
            {{midi, "-o", wav, "--param", "1507=1"}, "unknown parameter \"1507\""},
            {{"--input", text, "-o", wav}, "no WAV, AIFF or FLAC file"},
            {{midi, "-o", wav, "--preset", scratch.path().getFullPathName()}, "(it is a folder)"},
            {{midi, "-o", wav, "--preset", "01 Keys & Splits/Four Corner"},
             "did you mean 01 Keys and Splits/Four Corners?"},
            {{"--list-programs"}, "give --layer or --preset"},
            {{midi, "-o", wav, "--preset", text}, "not a preset"},
            {{midi, "-o", wav, "--preset", "No Such Folder/Init"}, "no preset \"No Such Folder/Init\" in "},
            {{midi, "-o", wav, "--save-preset", path("no/such/folder/a.qrl")}, "cannot write"},
        },
        failed);
    EXPECT_EQ(scratch.path().getNumberOfChildFiles(juce::File::findFilesAndDirectories), before);
}

TEST_F(RenderCommand, AFailedRenderKeepsTheOldFile)
{
    const auto old = scratch.write("out.wav", "what was here before");
    EXPECT_NE(render({song(), "-o", old.getFullPathName(), "--layer", "1=Theremin"}).exitCode, 0);
    EXPECT_EQ(old.loadFileAsString(), "what was here before");

    // A disk that fills up.
    const test::SmallDisk disk(200);
    if (!disk.isThere())
        GTEST_SKIP() << "no disk can be mounted here";
    for (const char* name : {"out.wav", "out.flac", "out.qrl"})
    {
        const auto file = disk.child(name);
        file.replaceWithText("what was here before");
        for (const int free : {0, 4096})
        {
            SCOPED_TRACE(name);
            disk.fill(free);
            const auto outcome =
                file.hasFileExtension("qrl")
                    ? render({"--layer", "1=Tarn", "--save-preset", file.getFullPathName()})
                    : render({song(), "--layer", "1=Tarn", "--rate", "48000", "-o", file.getFullPathName()});
            EXPECT_EQ(outcome.exitCode, 1) << outcome.text;
            EXPECT_TRUE(outcome.text.contains("cannot write ") || outcome.text.contains("disk full"))
                << outcome.text;
            EXPECT_EQ(file.loadFileAsString(), "what was here before");
        }
    }
}

} // namespace
} // namespace quorel
