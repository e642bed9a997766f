// SPDX-License-Identifier: GPL-3.0-or-later
// Where LV2 hosts say they are in the song, and where that is some samples later.
#include <juce_audio_basics/juce_audio_basics.h>

#include "cmake/juce/Lv2Time.h"

#include <gtest/gtest.h>

namespace quorel::test
{

namespace
{
juce::AudioPlayHead::PositionInfo positionIn(int numerator, int denominator)
{
    juce::AudioPlayHead::PositionInfo position;
    position.setTimeSignature(juce::AudioPlayHead::TimeSignature{numerator, denominator});
    position.setBpm(120.0);
    return position;
}
} // namespace

TEST(Lv2Time, TakesTheBeatOfTheSongOrOfTheBar)
{
    // The fourth eighth of the third bar of 6/8: 15 eighths from the start, 3 from the bar.
    for (const bool isOfSong : {true, false})
    {
        auto position = positionIn(6, 8);
        setBeats(position, isOfSong ? juce::makeOptional(15.0) : juce::nullopt,
                 juce::makeOptional<juce::int64>(2), isOfSong ? juce::nullopt : juce::makeOptional(3.0));
        EXPECT_EQ(*position.getPpqPosition(), 7.5);
        EXPECT_EQ(*position.getPpqPositionOfLastBarStart(), 6.0);
    }

    juce::AudioPlayHead::PositionInfo unknown;
    setBeats(unknown, juce::nullopt, juce::makeOptional<juce::int64>(2), juce::makeOptional(3.0));
    EXPECT_FALSE(unknown.getPpqPosition().hasValue());
}

TEST(Lv2Time, CrossesBarsBothWays)
{
    constexpr double rate = 48000.0;

    for (const double speed : {1.0, -1.0})
    {
        // From the second quarter of the fourth bar, four and a half quarters on or back.
        auto position = positionIn(3, 4);
        setBeats(position, 10.0, juce::makeOptional<juce::int64>(3), 1.0);
        for (int block = 0; block < 225; ++block)
            advancePosition(position, 480.0, speed, rate);

        EXPECT_NEAR(*position.getPpqPosition(), 10.0 + 4.5 * speed, 1e-9);
        EXPECT_NEAR(*position.getPpqPositionOfLastBarStart(), speed > 0.0 ? 12.0 : 3.0, 1e-9);
        EXPECT_EQ(*position.getBarCount(), speed > 0.0 ? 4 : 1);
    }
}

} // namespace quorel::test
