// SPDX-License-Identifier: GPL-3.0-or-later
// Helpers for reading the lines of any section.
#pragma once

#include "PresetText.h"

#include <optional>

namespace quorel::bank
{

[[noreturn]] void fail(const TextLine& line, const juce::String& message);

/** For a key that the section doesn't have. */
[[noreturn]] void failUnknown(const TextLine& line);

/** The value, or a failure that says what the line's key takes. */
template <typename Value>
Value need(const std::optional<Value>& value, const TextLine& line, const char* expected)
{
    if (!value)
        fail(line, line.key + " takes " + expected + ", not \"" + line.value + "\"");
    return *value;
}

/** True where this is the line's key, in any letter case. */
bool is(const TextLine& line, const char* key);

/** 0 to `count` - 1 for "Prefix 1" and so on, else -1. */
int numberedFrom(const juce::String& text, const juce::String& prefix, int count);

/** The parts between commas. */
juce::StringArray listOf(const juce::String& text);

} // namespace quorel::bank
