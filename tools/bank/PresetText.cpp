// SPDX-License-Identifier: GPL-3.0-or-later
#include "PresetText.h"

namespace quorel
{

namespace
{
constexpr juce::int64 largestFile = 64 * 1024;

TextSection startSection(const juce::String& line, int number, const std::vector<TextSection>& earlier)
{
    if (!line.endsWithChar(']'))
        throw TextError(number, "a heading ends with \"]\"");
    TextSection section{number, line.substring(1, line.length() - 1).trim(), {}};
    if (section.name.isEmpty())
        throw TextError(number, "a heading without a name");
    for (const auto& other : earlier)
        if (other.name.equalsIgnoreCase(section.name))
            throw TextError(number, "[" + section.name + "] stands on line " + juce::String(other.number) +
                                        " already");
    return section;
}
} // namespace

std::vector<TextSection> parsePresetText(const juce::String& text)
{
    std::vector<TextSection> sections(1);
    int number = 0;
    for (const auto& rawLine : juce::StringArray::fromLines(text))
    {
        ++number;
        const auto line = rawLine.trim();
        if (line.isEmpty() || line.startsWithChar('#'))
            continue;
        if (line.startsWithChar('['))
        {
            sections.push_back(startSection(line, number, sections));
            continue;
        }
        TextLine entry{number, line.upToFirstOccurrenceOf(":", false, false).trim(),
                       line.fromFirstOccurrenceOf(":", false, false).trim()};
        if (entry.key.isEmpty() || entry.value.isEmpty())
            throw TextError(number,
                            "expected \"Key: Value\", \"[Section]\" or \"# comment\", not \"" + line + "\"");
        sections.back().lines.push_back(entry);
    }
    return sections;
}

std::vector<TextSection> readPresetText(const juce::File& file)
{
    juce::MemoryBlock bytes;
    if (file.getSize() > largestFile || !file.loadFileAsData(bytes))
        throw TextError(0, "cannot be read, or is larger than 64 KiB");
    const auto* characters = static_cast<const char*>(bytes.getData());
    const auto size = static_cast<int>(bytes.getSize());
    if (!juce::CharPointer_UTF8::isValidString(characters, size))
        throw TextError(0, "is no UTF-8 text");
    return parsePresetText(juce::String::fromUTF8(characters, size));
}

} // namespace quorel
