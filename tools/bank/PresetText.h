// SPDX-License-Identifier: GPL-3.0-or-later
// The readable form of a preset: sections of "Key: Value" lines. `buildSound` knows what they mean.
#pragma once

#include <juce_core/juce_core.h>

#include <stdexcept>
#include <vector>

namespace quorel
{

/** What is wrong with a text, and on which line, counted from 1. */
class TextError : public std::runtime_error
{
public:
    TextError(int lineNumber, const juce::String& message)
        : std::runtime_error(message.toStdString())
        , line(lineNumber)
    {
    }

    const int line;
};

struct TextLine
{
    int number = 0;
    juce::String key;
    juce::String value;
};

struct TextSection
{
    /** Line of the heading. */
    int number = 0;
    /** Empty for the lines before the first heading. */
    juce::String name;
    std::vector<TextLine> lines;
};

/** Reads a text: "[Section]", "Key: Value", comments that start with "#", blank lines. No section comes
    twice. Throws a TextError. */
std::vector<TextSection> parsePresetText(const juce::String& text);

/** Reads a file of at most 64 KiB of UTF-8. Throws a TextError, with line 0 for the file as a whole. */
std::vector<TextSection> readPresetText(const juce::File& file);

} // namespace quorel
