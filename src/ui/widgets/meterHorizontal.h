// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** A stereo level meter of two thin bars, from -70 to 0 decibels. Message thread. */
class meterHorizontal : public juce::Component, private juce::Timer
{
public:
    explicit meterHorizontal(juce::Rectangle<int> bounds);

    /** Levels to show, as amplitudes: read every 50 milliseconds. */
    float left = 0.0f;
    float right = 0.0f;

    void paint(juce::Graphics& g) override;

private:
    void timerCallback() override;
    int barLength(float level) const;
    void paintBar(juce::Graphics& g, int y, int length) const;

    int leftLength = 0;
    int rightLength = 0;
};

} // namespace quorel
