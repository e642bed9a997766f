// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineReading.h"

namespace quorel::bank
{

void fail(const TextLine& line, const juce::String& message)
{
    throw TextError(line.number, message);
}

void failUnknown(const TextLine& line)
{
    fail(line, "unknown: \"" + line.key + "\"");
}

bool is(const TextLine& line, const char* key)
{
    return line.key.equalsIgnoreCase(key);
}

int numberedFrom(const juce::String& text, const juce::String& prefix, int count)
{
    if (!text.startsWithIgnoreCase(prefix + " "))
        return -1;
    const auto digits = text.substring(prefix.length() + 1).trim();
    const int number = digits.length() <= 2 && digits.containsOnly("0123456789") ? digits.getIntValue() : 0;
    return number <= count ? number - 1 : -1;
}

juce::StringArray listOf(const juce::String& text)
{
    auto parts = juce::StringArray::fromTokens(text, ",", {});
    parts.trim();
    return parts;
}

} // namespace quorel::bank
