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

/** The first lines of a file, at most `maxLines`; none where it can't be read. Of a file over 64 KiB, which
    can't be one of ours, only the whole lines within that size count. */
juce::StringArray readIntegerLines(const juce::File& file, int maxLines);

/** Replaces the file; false where that fails, and the file is as it was. */
bool writeIntegerLines(const juce::File& file, const juce::StringArray& lines);

} // namespace quorel
