// SPDX-License-Identifier: GPL-3.0-or-later
// What hosts learn of the plug-in in each format.
#include "FormatHost.h"

#include <gtest/gtest.h>

#include <set>

namespace quorel::test
{

namespace
{
class EachFormat : public testing::TestWithParam<Format>
{
};

std::string nameOfParam(const testing::TestParamInfo<Format>& info)
{
    return nameOf(info.param);
}

/** The names of the groups around a parameter, from the outermost. */
juce::String groupsOf(const juce::AudioProcessor& plugin, juce::AudioProcessorParameter* wanted)
{
    juce::StringArray names;

    for (const auto* group : plugin.getParameterTree().getGroupsForParameter(wanted))
        if (group->getName().isNotEmpty())
            names.add(group->getName());

    return names.joinIntoString("/");
}
} // namespace

TEST_P(EachFormat, introduces_itself_as_a_stereo_instrument)
{
    const auto description = describe(GetParam());
    EXPECT_EQ(description.name, "Quorel");
    EXPECT_EQ(description.manufacturerName, "Ostrand");
    EXPECT_TRUE(description.isInstrument);
    const auto plugin = load(GetParam());
    EXPECT_EQ(plugin->getTotalNumOutputChannels(), 2);
    EXPECT_EQ(plugin->getTotalNumInputChannels(), GetParam() == Format::vst2 ? 2 : 0);
    EXPECT_EQ(plugin->getLatencySamples(), 0);
    EXPECT_TRUE(plugin->acceptsMidi());
    EXPECT_FALSE(plugin->producesMidi());
    EXPECT_TRUE(plugin->hasEditor());
}

TEST_P(EachFormat, names_its_parameters)
{
    const auto plugin = load(GetParam());
    std::set<juce::String> names;
    const bool isVst2 = GetParam() == Format::vst2;

    for (auto* p : plugin->getParameters())
    {
        const auto name = p->getName(128);
        const bool isOwn = name.startsWith("Layer") || name.startsWith("FX") || name.startsWith("M");

        if (p->isAutomatable() && isOwn && !isVst2)
        {
            EXPECT_TRUE(names.insert(name).second) << name << " is there twice";
        }
    }

    if (isVst2)
    {
        EXPECT_EQ(plugin->getParameters().size(), 1507);
    }

    // 55 of each layer, 15 of each effect block, four faders with four knobs each, and the master's volume.
    EXPECT_EQ(names.size(), isVst2 ? 0u : 4u * 55 + 4 * 15 + 4 + 16 + 1);
    auto* volume = parameter(*plugin, "Master Volume");
    ASSERT_NE(volume, nullptr);
    auto* eq = parameter(*plugin, "Layer2 EQ Band 1 Gain");
    ASSERT_NE(eq, nullptr);

    if (GetParam() == Format::vst3)
    {
        EXPECT_EQ(volume->getText(0.63f, 64), "0 db");
        EXPECT_EQ(volume->getText(1.0f, 64), "+12 db") << "not only of the present value";
        auto* lowest = parameter(*plugin, "Layer1 Keyboard Range Min");
        ASSERT_NE(lowest, nullptr);
        EXPECT_EQ(lowest->getText(lowest->getValueForText("f#3"), 64), "F#3");
        EXPECT_EQ(lowest->getText(lowest->getValueForText("127"), 64), "G8");
        EXPECT_EQ(groupsOf(*plugin, eq), "Layer 2/EQ");
        EXPECT_EQ(groupsOf(*plugin, parameter(*plugin, "FX3 Mix")), "Effects");
        EXPECT_EQ(groupsOf(*plugin, parameter(*plugin, "Multi Fader 1")), "Multi-Controls");
        auto* identified = dynamic_cast<juce::HostedAudioProcessorParameter*>(eq);
        ASSERT_NE(identified, nullptr);
        EXPECT_EQ(identified->getParameterID(), "584") << "the number that VST2 has";
    }
}

TEST_P(EachFormat, plays_at_any_rate_in_any_block)
{
    const auto plugin = load(GetParam());
    juce::Random random(3);

    for (const double rate : {8000.0, 22050.0, 44100.0, 48001.0, 96000.0, 192000.0, 384000.0})
    {
        for (const int size : {1, 13, 64, 480, 4096})
        {
            plugin->prepareToPlay(rate, size);
            juce::AudioBuffer<float> block(juce::jmax(plugin->getTotalNumInputChannels(), 2), size);

            for (int i = 0; i < 4; ++i)
            {
                juce::MidiBuffer midi;
                midi.addEvent(juce::MidiMessage::noteOn(1, 40 + random.nextInt(40), juce::uint8{90}),
                              size / 2);
                plugin->processBlock(block, midi);

                for (int channel = 0; channel < 2; ++channel)
                    for (int s = 0; s < size; ++s)
                        ASSERT_TRUE(std::isfinite(block.getSample(channel, s))) << rate << " " << size;
            }

            plugin->releaseResources();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, EachFormat, testing::ValuesIn(allFormats()), nameOfParam);

} // namespace quorel::test
