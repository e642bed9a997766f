// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/IntegerLines.h"

#include "platform/FileOperations.h"

#include <string>

namespace quorel
{

namespace
{
constexpr int maxFileBytes = 65536;
constexpr const char* lineEnd = "\r";
} // namespace

int integerOfLine(const juce::String& line) noexcept
{
    auto text = line.getCharPointer().findEndOfWhitespace();
    const bool negative = *text == '-';

    if (negative)
        ++text;

    int number = 0;

    for (; *text >= '0' && *text <= '9'; ++text)
        number = juce::jmin(largestLineInteger, 10 * number + static_cast<int>(*text - '0'));

    return negative ? -number : number;
}

juce::Result readIntegerLines(const juce::File& file, int maxLines, juce::StringArray& lines)
{
    if (const auto result = checkReadable(file); result.failed())
        return result;

    juce::FileInputStream stream(file);

    if (!stream.openedOk())
        return stream.getStatus();

    std::string text(maxFileBytes, '\0');
    text.resize(static_cast<size_t>(juce::jmax(0, stream.read(text.data(), maxFileBytes))));

    // Whatever the bytes are, only digits and line ends matter.
    for (auto& character : text)
        if (character <= 0)
            character = '?';

    lines.clear();
    lines.addLines(text);

    // What follows the last line end isn't a line, and may be a number cut off in the middle.
    if (lines.size() > 0 && (lines[lines.size() - 1].isEmpty() || !stream.isExhausted()))
        lines.remove(lines.size() - 1);

    lines.removeRange(maxLines, lines.size());
    return stream.getStatus();
}

juce::Result writeIntegerLines(const juce::File& file, const juce::StringArray& lines)
{
    const auto text = lines.joinIntoString(lineEnd) + lineEnd;
    return replaceFile(file, juce::MemoryBlock(text.toRawUTF8(), text.getNumBytesAsUTF8()));
}

} // namespace quorel
