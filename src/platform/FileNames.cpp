// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileNames.h"

#include "platform/PlatformSeamFiles.h"

namespace quorel
{

namespace
{
bool isControlCharacter(juce::juce_wchar character) noexcept
{
    return character < 0x20 || (character >= 0x7f && character < 0xa0);
}
} // namespace

juce::String withoutControlCharacters(const juce::String& text)
{
    juce::String kept;

    for (auto p = text.getCharPointer(); !p.isEmpty();)
        if (const auto character = p.getAndAdvance(); !isControlCharacter(character))
            kept += character;

    return kept;
}

bool isDeviceName(const juce::String& name)
{
    const auto stem = name.upToFirstOccurrenceOf(".", false, false).trimEnd().toUpperCase();

    if (juce::StringArray{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"}.contains(stem))
        return true;

    const bool isPort = stem.startsWith("COM") || stem.startsWith("LPT");
    // The superscript digits count as well.
    return isPort && stem.length() == 4 &&
           juce::String(juce::CharPointer_UTF8("0123456789\xc2\xb9\xc2\xb2\xc2\xb3")).containsChar(stem[3]);
}

bool isWholePath(const juce::String& path)
{
    if (juce::File::getSeparatorChar() != '\\')
        return juce::File::isAbsolutePath(path);

    // "C:x" and "\x" depend on a current folder or drive.
    const auto plain = path.replaceCharacter('/', '\\');
    return plain.startsWith("\\\\") || (plain[1] == ':' && plain[2] == '\\');
}

bool isPlainName(const juce::String& name)
{
    if (name.isEmpty() || name == "." || name == ".." || name.containsChar('/'))
        return false;

    // On Windows, where "\\" separates, ":" opens a stream within a file, devices have names, and dots and blanks at
    // the end don't count.
    return juce::File::getSeparatorChar() != '\\' ||
           (!name.containsAnyOf("\\:*?\"<>|") && withoutControlCharacters(name) == name &&
            !name.endsWithChar('.') && !name.endsWithChar(' ') && !isDeviceName(name));
}

juce::File childNamed(const juce::File& folder, const juce::String& name)
{
    if (folder == juce::File() || !isPlainName(name))
        return {};

    return reachable(juce::File::createFileWithoutCheckingPath(
        juce::File::addTrailingSeparator(folder.getFullPathName()) + name));
}

} // namespace quorel
