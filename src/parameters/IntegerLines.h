// SPDX-License-Identifier: GPL-3.0-or-later
// Small text files of integers, one to a line: layouts and controller tables. A line is a decimal integer and
// one carriage return, with no line feed; files with other line ends are read as well. Message thread.
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** Integers that a line can hold: -32767 to 32767. */
constexpr int largestLineInteger = 32767;

/** The integer at the start of a line, held to its range; 0 where there is none. */
int integerOfLine(const juce::String& line) noexcept;

/** Reads the first lines of a file, at most `maxLines`. Of a file over 64 KiB, which can't be one of ours,
    only the whole lines within that size count. Fails, saying why, where it can't be read. */
juce::Result readIntegerLines(const juce::File& file, int maxLines, juce::StringArray& lines);

/** Replaces the file. Where that fails it is as it was. */
juce::Result writeIntegerLines(const juce::File& file, const juce::StringArray& lines);

} // namespace quorel
