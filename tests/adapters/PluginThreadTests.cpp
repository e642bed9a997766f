// SPDX-License-Identifier: GPL-3.0-or-later
// Hosts call from several threads at once: audio from one, automation from another, state and questions from
// a third that isn't the plug-in's own message thread.
#include "RawVst2Host.h"
#include "SavedSound.h"
#include "ScratchUser.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <random>
#include <thread>

namespace quorel::test
{

/** Plays without a pause in a thread of its own, as an audio device does. */
class RunningAudio
{
public:
    explicit RunningAudio(RawVst2Host& playedHost)
        : host(playedHost)
        , thread([this] { run(); })
    {
    }

    ~RunningAudio() { stop(); }

    void stop()
    {
        if (thread.joinable())
        {
            stopping = true;
            thread.join();
        }
    }

    std::atomic<long> blocks{0};
    std::atomic<long> soundingBlocks{0};
    std::atomic<long> brokenSamples{0};

private:
    void run()
    {
        std::uint8_t note = 40;
        while (!stopping)
        {
            const auto audio =
                host.render(256, {{0, {0x90, note, 100}}, {80, {0xb0, 74, note}}, {200, {0x80, note, 0}}});
            note = static_cast<std::uint8_t>(note < 80 ? note + 1 : 40);
            bool sounds = false;
            for (const float x : audio.left)
            {
                sounds = sounds || x != 0.0f;
                if (!std::isfinite(x) || std::abs(x) > 100.0f)
                    ++brokenSamples;
            }
            ++blocks;
            soundingBlocks += sounds ? 1 : 0;
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    }

    RawVst2Host& host;
    std::atomic<bool> stopping{false};
    std::thread thread;
};

TEST(PluginThreads, restores_sounds_and_takes_every_call_while_audio_runs)
{
    RawVst2Host host(QUOREL_PLUGIN_FILE, 44100.0, 256);
    const SavedSound empty(host.chunk());
    const auto one = soundOf(host, {{{"Orlen"}, {"Hexley"}, {"Imre"}, {"Glasson"}}});
    const auto other = soundOf(host, {{{"Fenn2"}, {"Hexley", 2}, {"Dorvik-K"}, {"Zeph"}}});
    RunningAudio audio(host);
    const auto hearBlocks = [&audio]
    {
        const auto blocks = audio.blocks.load();
        while (audio.blocks.load() < blocks + 8)
            std::this_thread::yield();
    };
    for (int i = 0; i < 24; ++i)
    {
        const auto& sound = i % 4 == 0 ? empty : (i % 2 == 0 ? one : other);
        host.setChunk(sound.bytes());
        EXPECT_EQ(SavedSound(host.chunk()).layers, sound.layers) << i;
        hearBlocks();
    }
    EXPECT_EQ(audio.brokenSamples, 0);
    EXPECT_GT(audio.soundingBlocks.exchange(0), 0);

    // Everything at once.
    const auto sound = one.bytes();
    host.setChunk(sound);
    std::atomic<bool> stopping{false};
    std::thread automation(
        [&]
        {
            std::mt19937 random(3);
            while (!stopping)
            {
                const int index = static_cast<int>(random() % numHostParameters);
                host.setParameter(index, static_cast<float>(random() % 1001) / 1000.0f);
                host.parameter(index);
                if (index % 64 == 0)
                    std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
    std::mt19937 random(4);
    for (const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3);
         std::chrono::steady_clock::now() < end;)
    {
        const int index = static_cast<int>(random() % numHostParameters);
        host.text(effGetParamName, index);
        host.text(effGetParamDisplay, index);
        host.text(effGetParamLabel, index);
        host.programName(0);
        host.dispatch(effGetTailSize);
        host.dispatch(effEditIdle);
        if (const auto choice = random() % 16; choice == 0)
            host.setChunk(sound);
        else if (choice == 1)
            host.setChunk(Bytes(random() % 8000, static_cast<std::uint8_t>(random())));
        else if (choice == 2)
        {
            EXPECT_NO_THROW(SavedSound(host.chunk()));
        }
    }
    stopping = true;
    automation.join();
    hearBlocks();
    audio.stop();
    EXPECT_GT(audio.soundingBlocks, 0);

    host.setChunk(sound);
    EXPECT_EQ(SavedSound(host.chunk()).layers, one.layers);
}

} // namespace quorel::test
