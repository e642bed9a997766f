// SPDX-License-Identifier: GPL-3.0-or-later
// What may stand as the name of a file, on every platform. Any thread.
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

juce::String withoutControlCharacters(const juce::String& text);

/** True where Windows takes the name for a device, with any ending and in every folder: "CON", "nul.txt". */
bool isDeviceName(const juce::String& name);

/** True where a path leads to the same place from every folder and drive. */
bool isWholePath(const juce::String& path);

/** True where the name is a single component of a path, so that a file of this name lies in its folder: not
    empty, not "." or "..", without this platform's separators and whatever else is special to it. To be
    checked for names that come from chunks and archives. */
bool isPlainName(const juce::String& name);

/** The file or folder `name` in `folder`; an empty file where the folder is empty or the name isn't a plain
    one. A leading "~" is part of the name. */
juce::File childNamed(const juce::File& folder, const juce::String& name);

} // namespace quorel
