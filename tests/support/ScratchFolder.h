// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel::test
{

/** A new, empty folder that is deleted with everything in it. */
class ScratchFolder
{
public:
    ScratchFolder()
        : folder(juce::File::getSpecialLocation(juce::File::tempDirectory)
                     .getChildFile("quorel-test-" + juce::Uuid().toString()))
    {
        folder.createDirectory();
    }

    ~ScratchFolder() { folder.deleteRecursively(); }

    const juce::File& path() const noexcept { return folder; }

    juce::File child(const juce::String& relativePath) const { return folder.getChildFile(relativePath); }

    /** Writes a file below it with this text, creating the folders on the way. */
    juce::File write(const juce::String& relativePath, const juce::String& text) const
    {
        const auto file = child(relativePath);
        file.create();
        file.replaceWithText(text);
        return file;
    }

private:
    JUCE_DECLARE_NON_COPYABLE(ScratchFolder)

    juce::File folder;
};

} // namespace quorel::test
