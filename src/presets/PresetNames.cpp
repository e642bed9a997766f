// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetNames.h"

namespace quorel
{

namespace
{
constexpr const char* forbiddenCharacters = "\\/:*?\"<>|'";

bool isControlCharacter(juce::juce_wchar character) noexcept
{
    return character < 0x20 || (character >= 0x7f && character < 0xa0);
}

juce::String withoutControlCharacters(const juce::String& text)
{
    juce::String kept;

    for (auto p = text.getCharPointer(); !p.isEmpty();)
        if (const auto character = p.getAndAdvance(); !isControlCharacter(character))
            kept += character;

    return kept;
}

/** Windows takes these for devices, with any ending, in every folder. */
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

/** What both filters leave can still be a name that a platform treats in its own way. */
juce::String harmless(const juce::String& filtered, const juce::String& nothingLeft)
{
    const auto name = withoutControlCharacters(filtered).trimEnd();

    if (name.isEmpty())
        return nothingLeft;

    if (isDeviceName(name))
        return "_" + name;

    // A path that begins with "~" would be taken for somebody's home.
    return name.startsWithChar('~') ? "_" + name.substring(1) : name;
}
} // namespace

juce::String cleanPresetName(const juce::String& typed)
{
    if (typed.isEmpty())
        return typed;

    auto name = typed.trim().substring(0, longestTypedName);

    if (juce::CharacterFunctions::isDigit(name[0]))
        name = "_" + name.substring(1);

    return harmless(name.replaceCharacter('.', '_').removeCharacters(forbiddenCharacters), "_default");
}

juce::String cleanTypedName(const juce::String& typed)
{
    const auto trimmed = typed.trim();
    auto name = trimmed.substring(juce::jmax(0, trimmed.length() - longestTypedName));

    if (name.startsWithChar(' '))
        name = "_" + name.substring(1);

    return harmless(name.removeCharacters(".").removeCharacters(forbiddenCharacters), "default");
}

bool isPlainName(const juce::String& name)
{
    if (name.isEmpty() || name == "." || name == ".." || name.containsChar('/'))
        return false;

    // Where "\\" separates, ":" opens a stream within a file and devices have names.
    return juce::File::getSeparatorChar() != '\\' ||
           (!name.containsAnyOf("\\:*?\"<>|") && withoutControlCharacters(name) == name &&
            !isDeviceName(name));
}

juce::File childNamed(const juce::File& folder, const juce::String& name)
{
    if (folder == juce::File() || !isPlainName(name))
        return {};

    return juce::File::createFileWithoutCheckingPath(
        juce::File::addTrailingSeparator(folder.getFullPathName()) + name);
}

} // namespace quorel
