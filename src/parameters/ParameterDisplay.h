// SPDX-License-Identifier: GPL-3.0-or-later
// What a parameter reads, in the host's automation lists and in the editor.
#pragma once

#include <juce_core/juce_core.h>

#include <functional>

namespace quorel
{

/** What a parameter's text depends on besides its index. */
struct ParameterTextSources
{
    /** Value, 0 to 1, of any parameter. */
    std::function<float(int index)> value;
    /** What the hosted instrument says of an Easy value's target: layer 0 to 3, Easy value 0 to 11. Empty
        where there is no instrument or no target. */
    std::function<juce::String(int layer, int easy)> easyText;
};

/** Text of a parameter's present value; empty where it has none. Any thread that the sources allow. */
juce::String parameterText(int index, const ParameterTextSources& sources);

/** Linear gain of a fader as it plays: a muted master is silent wherever its fader stands. `index` must be a
    fader's. */
float faderGain(int index, const ParameterTextSources& sources);

/** Whole decibels of a linear gain, without unit: "+6", "-20", "0" between -1 and +1 dB, "-100" for silence.
    Any thread. */
juce::String gainToText(float linearGain);

/** 0 to 100 of a value of 0 to 1, cut off. Any thread. */
int percentOf(float value) noexcept;

/** -100 to 100 of a value whose centre is 0.5, cut off towards zero. Any thread. */
int centredPercent(float value) noexcept;

} // namespace quorel
