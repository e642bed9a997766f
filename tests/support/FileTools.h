// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel::test
{

inline juce::MemoryBlock blockOf(const juce::String& text)
{
    return {text.toRawUTF8(), text.getNumBytesAsUTF8()};
}

/** Temporary files that a replacement hasn't taken away. */
inline int numLeftovers(const juce::File& folder)
{
    return folder.getNumberOfChildFiles(juce::File::findFiles, "*.tmp");
}

} // namespace quorel::test
