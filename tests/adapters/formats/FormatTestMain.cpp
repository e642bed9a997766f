// SPDX-License-Identifier: GPL-3.0-or-later
// A host with a message loop, away from the user's own settings.
#include "adapters/ScratchUser.h"
#include "support/WindowErrors.h"

#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);

    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();

    quorel::test::surviveWindowErrors();
    const quorel::test::ScratchUser user;
    const juce::ScopedJuceInitialiser_GUI juce;
    return RUN_ALL_TESTS();
}
