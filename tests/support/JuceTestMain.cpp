// SPDX-License-Identifier: GPL-3.0-or-later
// Runs all tests of a program on JUCE's message thread, away from the user's display and settings.
#include "support/ScratchFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

namespace
{
void setVariable(const char* name, const juce::String& value)
{
#if JUCE_WINDOWS
    _putenv_s(name, value.toRawUTF8());
#else
    setenv(name, value.toRawUTF8(), 1);
#endif
}
} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);

    // Without a display JUCE would still try ":0.0", so name one that can't exist. Tests with windows get
    // theirs in QUOREL_TEST_DISPLAY.
    setVariable("DISPLAY", juce::SystemStats::getEnvironmentVariable("QUOREL_TEST_DISPLAY", ":9999"));

    const quorel::test::ScratchFolder user;
    user.child("data").createDirectory();
    setVariable("XDG_CONFIG_HOME", user.path().getChildFile("config").getFullPathName());
    setVariable("XDG_DATA_HOME", user.path().getChildFile("data").getFullPathName());

    const juce::ScopedJuceInitialiser_GUI juce;
    return RUN_ALL_TESTS();
}
