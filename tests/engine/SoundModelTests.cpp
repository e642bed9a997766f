// SPDX-License-Identifier: GPL-3.0-or-later
// A minute of everything that changes a sound, at random and on three threads, held to a model of what must
// be heard and what must be saved. Meant for the sanitizers, too.
#include "parameters/ParameterCodings.h"
#include "presets/StateChunk.h"
#include "support/OpenWindow.h"
#include "support/ProcessorRig.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

#include <map>
#include <mutex>
#include <thread>

namespace quorel::test
{

namespace
{
constexpr int seconds = 60;
constexpr const char* bank = "Model";

/** What a listener or a saved project can tell of a sound. */
struct ModelSound
{
    std::array<juce::String, numLayers> instruments;
    std::array<float, numLayers> pans{0.5f, 0.5f, 0.5f, 0.5f};
    float volume = 0.63f;

    bool operator==(const ModelSound& other) const
    {
        return instruments == other.instruments && pans == other.pans && volume == other.volume;
    }

    friend std::ostream& operator<<(std::ostream& out, const ModelSound& sound)
    {
        for (size_t layer = 0; layer < sound.instruments.size(); ++layer)
            out << (sound.instruments[layer].isEmpty() ? "-" : sound.instruments[layer]) << "@"
                << sound.pans[layer] << " ";

        return out << "volume " << sound.volume;
    }
};

ModelSound soundOf(const juce::MemoryBlock& bytes)
{
    StateChunk chunk;
    EXPECT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);
    const auto valueOf = [&](int index) { return chunk.parameters[static_cast<size_t>(index)]; };
    ModelSound sound;
    sound.volume = valueOf(slot::masterVolume);

    for (int layer = 0; layer < numLayers; ++layer)
    {
        const auto l = static_cast<size_t>(layer);
        sound.pans[l] = valueOf(layerParameter(layer, layerSlot::pan));
        int at = layerParameter(layer, layerSlot::pluginNameText);

        for (; chunk.layerSizes[l] != 0 && decodeParamChar(valueOf(at)) != 0; ++at)
            sound.instruments[l] << decodeParamChar(valueOf(at));
    }

    return sound;
}
} // namespace

/** A processor, its model, and who else is at work on it. */
class ModelledProcessor
{
public:
    explicit ModelledProcessor(int seed)
        : random(seed)
    {
        rig.interaction.confirmAnswer = true;
        // What the first start made.
        presets["Default Preset"] = {};
        folderOf["Default Preset"] = "99 Default Preset";
    }

    void act()
    {
        using Act = void (ModelledProcessor::*)();
        constexpr std::array<Act, 14> acts{
            &ModelledProcessor::choosePreset,     &ModelledProcessor::choosePreset,
            &ModelledProcessor::restoreProject,   &ModelledProcessor::restoreProject,
            &ModelledProcessor::saveAsProject,    &ModelledProcessor::chooseInstrument,
            &ModelledProcessor::chooseInstrument, &ModelledProcessor::chooseInstrument,
            &ModelledProcessor::openWindow,       &ModelledProcessor::edit,
            &ModelledProcessor::compare,          &ModelledProcessor::savePreset,
            &ModelledProcessor::startOrStopAudio, &ModelledProcessor::prepare};
        (this->*acts[static_cast<size_t>(random.nextInt(14))])();
    }

    /** Waits until everything asked for has come, and compares. */
    void check()
    {
        const auto atRest = [this]
        {
            for (int layer = 0; layer < numLayers; ++layer)
                if (const auto state = rig.processor.getLayer(layer).getState();
                    state == LayerState::loading || state == LayerState::leaving)
                    return false;

            return !rig.processor.getSoundChange().isUnderWay();
        };
        ASSERT_TRUE(pumpUntil(atRest, 60000)) << history;
        EXPECT_EQ(soundOf(rig.state()), expected) << history;
        bool anyPlays = false;

        for (int layer = 0; layer < numLayers; ++layer)
        {
            auto& instrument = rig.processor.getLayer(layer);
            const auto& name = expected.instruments[static_cast<size_t>(layer)];
            EXPECT_EQ(instrument.getPluginName(), name) << layer << history;
            EXPECT_EQ(instrument.getState(), name.isEmpty() ? LayerState::empty : LayerState::playing)
                << layer << history;
            anyPlays = anyPlays || name.isNotEmpty();
        }

        const std::scoped_lock guard(blockLock, automationLock);
        // Automation may have closed an equaliser; these and effects may ring with what was there before.
        for (int i = 0; i < numLayers; ++i)
        {
            rig.setLayer(i, layerSlot::eq + eqSlot::on, 0.0f);
            rig.set(slot::fxOn + i, 0.0f);
        }

        rig.playSeconds(2.0);
        rig.noteOn(60);
        const float peak = rig.play(60).peak();
        rig.noteOff(60);
        rig.play(2);
        EXPECT_EQ(peak > 1e-7f, anyPlays && expected.volume > 0.0f) << peak << history;

        // Whatever it has gone through, from now on it sounds like one that has gone through nothing.
        const auto state = rig.state();
        rig.restore(state);
        ASSERT_TRUE(pumpUntil(atRest, 60000)) << history;
        take(expected);
        ProcessorRig fresh(rig.processor.getSampleRate(), rig.block);
        fresh.restore(state);
        const auto heard = soundOfNote(rig);
        const auto wanted = soundOfNote(fresh);

        for (int i = 0; i < wanted.getNumSamples(); ++i)
            ASSERT_NEAR(heard.getSample(0, i), wanted.getSample(0, i), 1e-4f) << i << history;

        EXPECT_TRUE(rig.interaction.alerts.isEmpty()) << rig.interaction.alerts[0] << history;
        history.clear();
    }

    /** The audio thread. */
    void block()
    {
        if (!audioRuns.load())
            return;

        const std::lock_guard<std::mutex> guard(blockLock);
        juce::MidiBuffer midi;
        midi.addEvent(juce::MidiMessage::noteOn(1, 40 + blockCount % 40, 0.5f), 0);
        midi.addEvent(juce::MidiMessage::noteOff(1, 40 + (blockCount + 39) % 40), 1);
        ++blockCount;
        juce::AudioBuffer<float> buffer(2, rig.block);
        rig.processor.processBlock(buffer, midi);
    }

    /** The host's automation, of what the model doesn't look at. */
    void automate(juce::Random& automation)
    {
        const std::lock_guard<std::mutex> guard(automationLock);
        const int layer = automation.nextInt(numLayers);
        const float value = automation.nextFloat();

        switch (automation.nextInt(4))
        {
        case 0:
            // An instrument's level may be among its Easy values: it is to be heard.
            rig.setLayer(layer, layerSlot::easyValue + automation.nextInt(numEasyParameters),
                         0.3f + 0.7f * value);
            break;
        case 1:
            rig.setLayer(layer, layerSlot::eq + automation.nextInt(17), value);
            break;
        case 2:
            rig.setLayer(layer, layerSlot::sendLevel + automation.nextInt(numFxBlocks), value);
            break;
        default:
            // The effect blocks' own parameters follow their switches, types, levels, mixes and places.
            rig.set(slot::fxOn + automation.nextInt(60), value);
            break;
        }
    }

private:
    bool isAwaited() { return rig.processor.getSoundChange().awaitedReason().has_value(); }

    void onAnyThread(const std::function<void()>& work)
    {
        if (random.nextBool())
            work();
        else
            onOtherThread(work);
    }

    void note(const juce::String& text) { history << "\n" << text; }

    static juce::AudioBuffer<float> soundOfNote(ProcessorRig& player)
    {
        // Until what a restore leaves behind has died away.
        player.play(3);
        player.noteOn(60);
        return player.play(50).samples;
    }

    void startOrStopAudio() { audioRuns.store(random.nextInt(3) != 0); }

    void choosePreset()
    {
        auto entry = presets.begin();
        std::advance(entry, random.nextInt(static_cast<int>(presets.size())));
        note("preset " + entry->first);
        ASSERT_TRUE(rig.processor.getSoundChange().requestPreset(folderOf[entry->first], entry->first));
        take(entry->second);
    }

    void take(const ModelSound& sound)
    {
        expected = sound;
        original = sound;
    }

    void restoreProject()
    {
        if (projects.empty())
            return;

        const auto& [bytes, sound] =
            projects[static_cast<size_t>(random.nextInt(static_cast<int>(projects.size())))];
        note("project");
        onAnyThread([this, &bytes = bytes] { rig.restore(bytes); });
        take(sound);
    }

    void saveAsProject()
    {
        juce::MemoryBlock bytes;
        onAnyThread([&] { bytes = rig.state(); });
        note("save");
        EXPECT_EQ(soundOf(bytes), expected) << history;
        projects.emplace_back(bytes, expected);
    }

    void chooseInstrument()
    {
        const auto& types = rig.processor.getKnownPlugins().getTypes();
        const int layer = random.nextInt(numLayers);
        const bool none = random.nextInt(4) == 0;
        // The drums don't answer every note.
        const juce::StringArray choice{"Orlen", "Tarn", "Tarn2", "Hexley", "Imre", "Glasson"};
        const auto name = none ? juce::String() : choice[random.nextInt(choice.size())];
        const juce::PluginDescription* description = nullptr;

        for (const auto& type : types)
            if (type.name == name)
                description = &type;

        note("layer " + juce::String(layer) + " " + name + (isAwaited() ? " (overtaken)" : ""));

        if (!isAwaited())
        {
            expected.instruments[static_cast<size_t>(layer)] = name;
            expected.pans[static_cast<size_t>(layer)] = 0.5f;
        }

        rig.processor.chooseInstrument(layer, description);
    }

    void openWindow()
    {
        auto& layer = rig.processor.getLayer(random.nextInt(numLayers));

        if (layer.getState() == LayerState::playing)
        {
            note("window " + juce::String(layer.getLayerIndex()));
            layer.setWindow(std::make_unique<OpenWindow>(windowClosed));
        }
    }

    void edit()
    {
        const int layer = random.nextInt(numLayers);
        const float value = static_cast<float>(1 + random.nextInt(9)) / 16.0f;
        const bool isPan = random.nextBool();
        note(isPan ? "pan" : "volume");

        // Before a load it belongs to the sound that goes.
        if (!isAwaited())
            (isPan ? expected.pans[static_cast<size_t>(layer)] : expected.volume) = value;

        rig.processor.setParameterFromUi(isPan ? layerParameter(layer, layerSlot::pan) : slot::masterVolume,
                                         value);
    }

    void compare()
    {
        auto& comparison = rig.processor.getOriginalComparison();
        note("compare");
        const auto before = expected;

        if (comparison.showOriginal())
        {
            edited = before;
            expected = original;
        }
        else if (comparison.showEdited())
        {
            expected = edited;
        }
    }

    void savePreset()
    {
        // A project on its way has no preset's name yet.
        if (rig.processor.getSoundChange().awaitedReason() == ChangeReason::project)
            return;

        const auto name = "P" + juce::String(random.nextInt(6));
        note("save preset " + name);
        rig.processor.setNames(rig.processor.getPresetName(), bank);
        ASSERT_TRUE(rig.processor.getPresetStorage().save(name, true)) << history;
        presets[name] = expected;
        folderOf[name] = bank;
        original = expected;
    }

    void prepare()
    {
        note("prepare");
        // As hosts do it: blocks have stopped, and the call may come on any thread.
        const std::lock_guard<std::mutex> guard(blockLock);
        const double rate = random.nextBool() ? 44100.0 : 48000.0;
        onAnyThread([&] { rig.processor.prepareToPlay(rate, rig.block); });
    }

    ProcessorRig rig;
    juce::Random random;
    ModelSound expected;
    ModelSound original;
    ModelSound edited;
    std::map<juce::String, ModelSound> presets;
    std::map<juce::String, juce::String> folderOf;
    std::vector<std::pair<juce::MemoryBlock, ModelSound>> projects;
    juce::String history;
    bool windowClosed = false;
    std::atomic<bool> audioRuns{true};
    std::mutex blockLock;
    std::mutex automationLock;
    int blockCount = 0;
};

TEST(SoundModelTest, AMinuteOfEverythingAtOnceKeepsToTheModel)
{
    const int seed = static_cast<int>(juce::Time::currentTimeMillis() & 0xffffff);
    RecordProperty("seed", seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    juce::Random random(seed);
    std::vector<std::unique_ptr<ModelledProcessor>> processors;

    for (int i = 0; i < 4; ++i)
        processors.push_back(std::make_unique<ModelledProcessor>(seed + i));

    std::atomic<bool> done{false};
    std::thread audio(
        [&]
        {
            while (!done.load())
            {
                for (auto& processor : processors)
                    processor->block();

                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
        });
    std::thread automation(
        [&]
        {
            juce::Random values(seed);

            while (!done.load())
            {
                processors[static_cast<size_t>(values.nextInt(4))]->automate(values);
                std::this_thread::sleep_for(std::chrono::microseconds(500));
            }
        });

    const auto end = juce::Time::getMillisecondCounter() + 1000 * seconds;

    for (int round = 0; juce::Time::getMillisecondCounter() < end && !testing::Test::HasFailure(); ++round)
    {
        processors[static_cast<size_t>(random.nextInt(4))]->act();

        if (random.nextInt(3) == 0)
            pumpFor(random.nextInt(120));

        if (round % 40 == 39)
            for (auto& processor : processors)
                processor->check();
    }

    if (!testing::Test::HasFailure())
        for (auto& processor : processors)
            processor->check();

    done.store(true);
    audio.join();
    automation.join();
}

} // namespace quorel::test
