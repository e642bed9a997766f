// SPDX-License-Identifier: GPL-3.0-or-later
// What hosted instruments hear when they ask who hosts them.
#include <gtest/gtest.h>
#include <juce_audio_processors/juce_audio_processors.h>
#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel::test
{

namespace
{
/** The standalone is an application with a name of its own. */
class NamedApplication final : public juce::JUCEApplication
{
public:
    const juce::String getApplicationName() override { return "Somebody Else"; }

    const juce::String getApplicationVersion() override { return "1"; }

    void initialise(const juce::String&) override {}

    void shutdown() override {}
};

juce::StringArray answersOfTheHost()
{
    juce::PluginDescription description;
    description.pluginFormatName = "VST";
    description.fileOrIdentifier = QUOREL_TEST_HOST_PROBE;
    juce::VSTPluginFormat format;
    juce::String error;
    const auto instance = format.createInstanceFromDescription(description, 44100.0, 64, error);
    juce::StringArray answers;

    if (instance != nullptr)
        for (int i = 0; i < instance->getNumParameters(); ++i)
            answers.add(instance->getParameterName(i, 255));

    return answers;
}
} // namespace

TEST(HostIdentity, IsTheSameInEveryProgram)
{
    const juce::StringArray expected{"OS-QUOREL", "OS-QUOREL", "257"};
    EXPECT_EQ(answersOfTheHost(), expected);

    const NamedApplication application;
    ASSERT_NE(juce::JUCEApplicationBase::getInstance(), nullptr);
    EXPECT_EQ(answersOfTheHost(), expected);
}

} // namespace quorel::test
