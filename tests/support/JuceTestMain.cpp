// SPDX-License-Identifier: GPL-3.0-or-later
// Runs all tests of a program on JUCE's message thread, away from the user's display and settings.
#include "platform/PlatformSeam.h"
#include "support/EnvironmentVariable.h"
#include "support/ScratchFolder.h"
#include "support/WindowErrors.h"

#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);

    // Without a display JUCE would still try ":0.0", so name one that can't exist. Tests with windows get
    // theirs in QUOREL_TEST_DISPLAY.
    quorel::test::setVariable("DISPLAY",
                              juce::SystemStats::getEnvironmentVariable("QUOREL_TEST_DISPLAY", ":9999"));

    quorel::test::surviveWindowErrors();

    const quorel::test::ScratchFolder user;
    user.child("data").createDirectory();
    quorel::adoptUserPlaces(user.path());

    const juce::ScopedJuceInitialiser_GUI juce;
    return RUN_ALL_TESTS();
}
