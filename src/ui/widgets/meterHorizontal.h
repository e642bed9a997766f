// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** A stereo level meter of two thin bars, from -70 to 0 decibels. Message thread. */
class meterHorizontal : public juce::Component
{
public:
    explicit meterHorizontal(juce::Rectangle<int> bounds);

    /** Levels to show, as amplitudes. */
    float left = 0.0f;
    float right = 0.0f;

    /** Takes up the levels. Called in each pass of the editor, every 50 milliseconds. */
    void follow();

    void paint(juce::Graphics& g) override;

private:
    int barLength(float level) const;
    void paintBar(juce::Graphics& g, int y, int length) const;

    int leftLength = 0;
    int rightLength = 0;
};

} // namespace quorel
