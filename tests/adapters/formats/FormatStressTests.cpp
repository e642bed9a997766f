// SPDX-License-Identifier: GPL-3.0-or-later
// What hosts do in any order, on any thread: nothing of it may break a plug-in.
#include "FormatHost.h"
#include "adapters/SavedSound.h"
#include "common/MessagePump.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace quorel::test
{

namespace
{
/** An editor in a window. */
struct ShownEditor
{
    explicit ShownEditor(juce::AudioProcessor& plugin)
        : editor(plugin.createEditorIfNeeded())
    {
        window.setContentNonOwned(editor.get(), true);
        window.setVisible(true);
    }

    ~ShownEditor() { window.clearContentComponent(); }

    juce::DocumentWindow window{"A host", juce::Colours::black, 0};
    std::unique_ptr<juce::AudioProcessorEditor> editor;
};

class Stressed : public testing::TestWithParam<Format>
{
};
} // namespace

TEST_P(Stressed, bears_a_hosts_threads_all_at_once_with_its_editor_open)
{
    const auto plugin = load(GetParam());
    const ShownEditor shown(*plugin);
    ASSERT_NE(shown.editor, nullptr);
    std::atomic<bool> ends{false};
    std::thread audio(
        [&]
        {
            juce::AudioBuffer<float> block(juce::jmax(plugin->getTotalNumInputChannels(), 2), 256);
            juce::Random random(1);

            while (!ends)
            {
                juce::MidiBuffer midi;
                midi.addEvent(juce::MidiMessage::noteOn(1, random.nextInt(128), juce::uint8{100}), 3);
                midi.addEvent(juce::MidiMessage::controllerEvent(1, random.nextInt(120), random.nextInt(128)),
                              9);
                plugin->processBlock(block, midi);
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
    std::thread writer(
        [&]
        {
            juce::Random random(2);

            while (!ends)
            {
                const auto& parameters = plugin->getParameters();
                parameters[random.nextInt(parameters.size())]->setValueNotifyingHost(random.nextFloat());
                std::this_thread::sleep_for(std::chrono::microseconds(300));
            }
        });
    juce::MemoryBlock state;
    plugin->getStateInformation(state);

    for (int i = 0; i < 40; ++i)
    {
        plugin->setStateInformation(state.getData(), static_cast<int>(state.getSize()));
        pumpUntil([] { return false; }, 50);

        if (i % 8 == 0)
            plugin->getStateInformation(state);
    }

    ends = true;
    audio.join();
    writer.join();
    EXPECT_GT(shown.editor->getWidth(), 100);
}

// A sound that comes with instruments is still being looked after when its instance goes.
TEST_P(Stressed, closes_as_soon_as_it_has_a_sound)
{
    RawVst2Host host(QUOREL_PLUGIN_FILE);
    const auto sound = soundOf(host, {{{"Orlen"}, {"Hexley2"}, {"Imre"}, {"Dorvik"}}}).bytes();

    // At once, or when it tells the host of the sound, four times a second.
    for (const int earliest : {0, 240})
        for (int millis = earliest; millis < earliest + 20; ++millis)
        {
            const auto plugin = load(GetParam());
            restore(GetParam(), *plugin, {sound.data(), sound.size()});
            pumpUntil([] { return false; }, millis);
        }
}

TEST_P(Stressed, opens_and_closes_100_times)
{
    for (int i = 0; i < 100; ++i)
    {
        const auto plugin = load(GetParam());

        if (i % 5 == 0)
        {
            const ShownEditor shown(*plugin);
            EXPECT_TRUE(pumpUntil([&] { return shown.editor->getWidth() > 100; }, 5000)) << i;
        }

        juce::AudioBuffer<float> block(juce::jmax(plugin->getTotalNumInputChannels(), 2), 512);
        juce::MidiBuffer midi;
        plugin->processBlock(block, midi);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, Stressed, testing::ValuesIn(newerFormats()),
                         [](const auto& given) { return nameOf(given.param); });

} // namespace quorel::test
