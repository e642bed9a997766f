// SPDX-License-Identifier: GPL-3.0-or-later
// The standalone program's command line, and what it keeps from one start to the next.
#include "platform/PlatformSeam.h"
#include "support/HostWindow.h"
#include "support/ProgramRun.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace quorel::test
{

class Standalone : public testing::Test
{
protected:
    Standalone()
    {
        adoptUserPlaces(scratch.path());
        const auto outcome = runProgram({QUOREL_TEST_SETUP, "--prefix", scratch.path().getFullPathName()});
        EXPECT_EQ(outcome.exitCode, 0) << outcome.text;
    }

    static ProgramOutcome run(juce::StringArray arguments)
    {
        arguments.insert(0, QUOREL_TEST_STANDALONE);
        return runProgram(arguments);
    }

    /** Starts, is closed as by its button a little later, and has kept this sound. */
    juce::String play(juce::StringArray arguments)
    {
        constexpr int patienceMillis = 30000;
        constexpr int settlesMillis = 2000;
        arguments.insert(0, QUOREL_TEST_STANDALONE);
        juce::ChildProcess program;
        EXPECT_TRUE(program.start(arguments));

        for (int waited = 0; waited < patienceMillis && numWindowsTitled("Quorel") == 0; waited += 100)
            juce::Thread::sleep(100);

        juce::Thread::sleep(settlesMillis);
        EXPECT_EQ(numWindowsTitled("Quorel"), 1);
        closeWindowsTitled("Quorel");
        EXPECT_TRUE(program.waitForProcessToFinish(patienceMillis));
        EXPECT_EQ(program.getExitCode(), 0u);

        const auto settings =
            juce::parseXML(userPlaces(scratch.path()).settingsFolder.getChildFile("Quorel.settings"));

        const auto* sound =
            settings != nullptr ? settings->getChildByAttribute("name", "filterState") : nullptr;

        if (sound != nullptr)
            return sound->getStringAttribute("val");

        ADD_FAILURE() << "no sound kept";
        return {};
    }

    ScratchFolder scratch;
};

TEST_F(Standalone, AnswersItsCallerAndRefusesWhatItDoesntKnow)
{
    EXPECT_TRUE(run({"--help"}).text.contains("--preset FOLDER/NAME"));
    EXPECT_TRUE(run({"--version"}).text.startsWith("quorel "));

    const std::vector<std::pair<juce::StringArray, int>> refused{{{"--nonsense"}, 2},
                                                                 {{"one", "surplus"}, 2},
                                                                 {{"--preset"}, 2},
                                                                 {{"--preset", "Nowhere/Nothing"}, 1}};

    for (const auto& [arguments, code] : refused)
    {
        const auto outcome = run(arguments);
        EXPECT_EQ(outcome.exitCode, code) << arguments.joinIntoString(" ");
        EXPECT_EQ(juce::StringArray::fromLines(outcome.text.trimEnd()).size(), 1) << outcome.text;
        EXPECT_TRUE(outcome.text.startsWith("quorel: ")) << outcome.text;
    }
}

TEST_F(Standalone, KeepsItsSoundForTheNextStart)
{
    const auto fresh = play({});
    const auto chosen = play({"--preset", "05 Leads and Basses/Hollow Soloist"});
    EXPECT_NE(chosen, fresh);
    EXPECT_EQ(play({}), chosen);
}

} // namespace quorel::test
