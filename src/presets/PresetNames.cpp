// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetNames.h"

#include "platform/FileNames.h"

namespace quorel
{

namespace
{
constexpr const char* forbiddenCharacters = "\\/:*?\"<>|'";

/** What the filters leave can still be a name that some platform treats specially. */
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

} // namespace quorel
