// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/MessagePump.h"
#include "engine/PluginProcessor.h"
#include "hosting/InstrumentTable.h"
#include "platform/PlatformSeam.h"
#include "support/RecordingInteraction.h"
#include "support/ScratchFolder.h"

#include <cmath>
#include <vector>

namespace quorel::test
{

/** A stereo block of output, with the figures that tests ask for. */
struct Sound
{
    juce::AudioBuffer<float> samples;

    float peak(int channel) const { return samples.getMagnitude(channel, 0, samples.getNumSamples()); }

    float peak() const { return samples.getMagnitude(0, samples.getNumSamples()); }

    float rms() const { return samples.getRMSLevel(0, 0, samples.getNumSamples()); }

    /** Amplitude of one frequency in the left channel, by correlation over the whole length. */
    double amplitudeAt(double hz, double sampleRate) const
    {
        double re = 0.0;
        double im = 0.0;
        const int length = samples.getNumSamples();

        for (int i = 0; i < length; ++i)
        {
            const double window = 0.5 - 0.5 * std::cos(juce::MathConstants<double>::twoPi * i / length);
            const double phase = juce::MathConstants<double>::twoPi * hz * i / sampleRate;
            re += static_cast<double>(samples.getSample(0, i)) * window * std::cos(phase);
            im += static_cast<double>(samples.getSample(0, i)) * window * std::sin(phase);
        }

        return 4.0 * std::sqrt(re * re + im * im) / length;
    }

    bool isFinite() const
    {
        for (int channel = 0; channel < samples.getNumChannels(); ++channel)
            for (int i = 0; i < samples.getNumSamples(); ++i)
                if (!std::isfinite(samples.getSample(channel, i)))
                    return false;

        return true;
    }
};

/** The folders and settings of one user, with the starter instruments of the build known to it. */
class UserRig
{
public:
    UserRig()
    {
        const auto data = scratch.child("data");
        auto store = makeStore();
        const auto set = [&](const char* name, const juce::File& file)
        { store->write(pathSetting::key, name, file.getFullPathName()); };
        set(pathSetting::banks, data.getChildFile("Banks"));
        set(pathSetting::layouts, data.getChildFile("Layouts"));
        set(pathSetting::help, data.getChildFile("Help"));
        set(pathSetting::ecs, data.getChildFile("ECS"));
        set(pathSetting::pluginList, listFile());
        set(pathSetting::pluginFolder, juce::File(QUOREL_TEST_INSTRUMENTS));
    }

    std::unique_ptr<UserStore> makeStore() const { return makeUserStore(userPlaces(scratch.path())); }

    juce::File listFile() const { return scratch.child("PluginList.xml"); }

    juce::File banksFolder() const { return scratch.child("data/Banks"); }

    ScratchFolder scratch;
};

/** A processor with a user of its own, driven as a host would drive it. Message thread. */
class ProcessorRig
{
public:
    explicit ProcessorRig(double sampleRate = 44100.0, int blockSize = 256)
        : rate(sampleRate)
        , block(blockSize)
    {
        processor.prepareToPlay(rate, block);
    }

    float get(int index) { return processor.readParameter(index); }

    void set(int index, float value) { processor.setParameter(index, value); }

    void setLayer(int layer, int n, float value) { set(layerParameter(layer, n), value); }

    float getLayer(int layer, int n) { return get(layerParameter(layer, n)); }

    /** Runs the message loop for some ticks of the 50 ms timers. */
    static void pump(int milliseconds)
    {
        pumpUntil([] { return false; }, milliseconds);
    }

    /** Loads a starter instrument and waits for it. */
    bool load(int layer, const juce::String& name)
    {
        for (const auto& description : processor.getKnownPlugins().getTypes())
        {
            if (description.name != name)
                continue;

            processor.chooseInstrument(layer, &description);
            const bool loaded =
                pumpUntil([&] { return processor.getLayer(layer).getPluginName() == name; }, 3000);
            // Resetting a layer writes its transpose, so its next block only silences it.
            play();
            return loaded;
        }

        return false;
    }

    /** Queues an event for sample `position` of the next block. */
    void send(const juce::MidiMessage& message, int position = 0) { midi.addEvent(message, position); }

    void noteOn(int note, float velocity = 0.8f, int channel = 1)
    {
        send(juce::MidiMessage::noteOn(channel, note, velocity));
    }

    void noteOff(int note, int channel = 1) { send(juce::MidiMessage::noteOff(channel, note)); }

    /** Plays `numBlocks` blocks without the message loop in between. */
    Sound play(int numBlocks = 1)
    {
        Sound sound;
        sound.samples.setSize(2, numBlocks * block);
        juce::AudioBuffer<float> buffer(2, block);

        for (int i = 0; i < numBlocks; ++i)
        {
            processor.processBlock(buffer, midi);

            for (int channel = 0; channel < 2; ++channel)
                sound.samples.copyFrom(channel, i * block, buffer, channel, 0, block);
        }

        midi.clear();
        return sound;
    }

    Sound playSeconds(double seconds) { return play(static_cast<int>(seconds * rate / block) + 1); }

    /** Plays and runs the message loop in turn until `done`. */
    bool playUntil(const std::function<bool()>& done, int timeoutMillis = 10000)
    {
        return pumpUntil(
            [&]
            {
                play(8);
                return done();
            },
            timeoutMillis);
    }

    juce::MemoryBlock state()
    {
        juce::MemoryBlock bytes;
        processor.getStateInformation(bytes);
        return bytes;
    }

    void restore(const juce::MemoryBlock& bytes)
    {
        processor.setStateInformation(bytes.getData(), static_cast<int>(bytes.getSize()));
    }

    const double rate;
    const int block;
    UserRig user;
    RecordingInteraction interaction;
    PluginProcessor processor{user.makeStore(), interaction};
    juce::MidiBuffer midi;
};

} // namespace quorel::test
