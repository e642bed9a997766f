// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/LoadNote.h"

#include "platform/FileOperations.h"
#include "platform/PlatformSeam.h"

namespace quorel
{

namespace
{
constexpr const char* noteEnding = ".opening";

juce::String noteStart(const juce::File& pluginListFile)
{
    return pluginListFile.getFileName() + ".";
}

/** The process in the first line, the plug-in's path in the second. */
LeftNote readNote(const juce::File& file, juce::String& process)
{
    juce::StringArray lines;
    lines.addLines(file.loadFileAsString());
    process = lines[0];
    return {file, lines[1]};
}
} // namespace

LoadNote::LoadNote(const juce::File& pluginListFile, const juce::String& pluginPath)
{
    if (pluginListFile == juce::File())
        return;

    // Its own name for each, as processes, and instances in one, know nothing of each other.
    file = pluginListFile.getSiblingFile(noteStart(pluginListFile) + juce::Uuid().toString() + noteEnding);
    ended.emplace(file);
    const auto text = processIdentity() + "\n" + pluginPath + "\n";

    if (!replaceFile(file, juce::MemoryBlock(text.toRawUTF8(), text.getNumBytesAsUTF8())))
        file = juce::File();
}

LoadNote::~LoadNote()
{
    if (file != juce::File())
        file.deleteFile();
}

std::vector<LeftNote> findLeftNotes(const juce::File& pluginListFile)
{
    std::vector<LeftNote> left;

    if (pluginListFile == juce::File())
        return left;

    const auto pattern = noteStart(pluginListFile) + "*" + noteEnding;

    for (const auto& file :
         pluginListFile.getParentDirectory().findChildFiles(juce::File::findFiles, false, pattern))
    {
        juce::String process;
        const auto note = readNote(file, process);

        if (!isProcessRunning(process))
            left.push_back(note);
    }

    return left;
}

} // namespace quorel
