// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    return RUN_ALL_TESTS();
}
