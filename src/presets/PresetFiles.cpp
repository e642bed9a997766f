// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetFiles.h"

namespace quorel
{

juce::File findPresetFile(const juce::File& banksFolder, const juce::String& folderName,
                          const juce::String& presetName)
{
    for (const auto& folder : banksFolder.findChildFiles(juce::File::findDirectories, false, "*"))
    {
        if (folder.getFileName() != folderName)
            continue;

        for (const auto& file : folder.findChildFiles(juce::File::findFiles, false, "*"))
            if (file.getFileName() == presetName + presetFileEnding)
                return file;
    }

    return {};
}

juce::File presetFileFor(const juce::File& banksFolder, const juce::String& folderName,
                         const juce::String& presetName)
{
    if (banksFolder == juce::File())
        return {};

    return banksFolder.getChildFile(folderName).getChildFile(presetName + presetFileEnding);
}

bool readWholeFile(const juce::File& file, juce::MemoryBlock& bytes)
{
    juce::FileInputStream stream(file);

    if (!stream.openedOk())
        return false;

    bytes.reset();
    const auto length = stream.getTotalLength();
    return static_cast<juce::int64>(stream.readIntoMemoryBlock(bytes)) == length;
}

bool replaceFile(const juce::File& file, const juce::MemoryBlock& bytes)
{
    if (file == juce::File() || !file.getParentDirectory().createDirectory())
        return false;

    // The temporary file lies in the same folder, so that the move is one step of the file system.
    const juce::TemporaryFile temporary(file, juce::TemporaryFile::useHiddenFile);
    {
        juce::FileOutputStream stream(temporary.getFile());

        if (!stream.openedOk() || !stream.write(bytes.getData(), bytes.getSize()))
            return false;

        stream.flush();

        if (stream.getStatus().failed())
            return false;
    }

    return temporary.overwriteTargetFileWithTemporary();
}

} // namespace quorel
