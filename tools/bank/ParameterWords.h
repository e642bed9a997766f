// SPDX-License-Identifier: GPL-3.0-or-later
// Parameter values, 0 to 1, from the words that people use for them. Each function answers nothing for words
// that it doesn't understand or that lie outside the range.
#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <optional>

namespace quorel
{

/** A whole text that is one decimal number, a sign allowed. */
std::optional<double> numberOf(const juce::String& text);

/** The number in front of a unit such as "db" or "%", in any letter case; the unit may be missing. */
std::optional<double> numberWithUnit(const juce::String& text, const juce::String& unit);

/** "C3" is key 60, as the keyboard's labels have it; also plain numbers. 0 to 127. */
std::optional<int> keyNumber(const juce::String& text);

/** Two of `read`'s numbers parted by "-", the lower first; or one alone, which is both ends. */
std::optional<std::pair<int, int>>
rangeOf(const juce::String& text, const std::function<std::optional<int>(const juce::String&)>& read);

/** Middle of the step that stands for `number` where a parameter counts from `low` to `high`. */
float stepValue(int number, int low, int high);

/** Fader position of a level in dB, up to +12, or of "off". */
std::optional<float> faderValue(const juce::String& text);

/** Position of an effect block's output level in dB, -60 to +20. */
std::optional<float> effectLevelValue(const juce::String& text);

/** "-30" or "+30 %" of a control whose centre is 0.5 and whose ends are -100 and 100. */
std::optional<float> centredValue(const juce::String& text);

/** "30 %" of a control from 0 to 100. */
std::optional<float> percentValue(const juce::String& text);

/** Position at which a parameter shows `wanted`, where `textAt` is what it shows at a position: the middle
    of where it shows just that, or the place that comes nearest, within 2 %, where the text is a number with
    a unit. */
std::optional<float> valueShowing(const juce::String& wanted,
                                  const std::function<juce::String(float)>& textAt);

/** Where a parameter rests: its centre if that shows 0 and its lower end something negative, else 0. */
float restingValue(const std::function<juce::String(float)>& textAt);

} // namespace quorel
