// SPDX-License-Identifier: GPL-3.0-or-later
// Preset files on disk: `<banks folder>/<folder name>/<preset name>.qrl`, each one a state chunk. Message
// thread.
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

constexpr const char* presetFileEnding = ".qrl";
constexpr const char* defaultFolderName = "99 Default Preset";
constexpr const char* defaultPresetName = "Default Preset";

/** The file of a preset, by exact names among what the banks folder lists. An empty file if there is none. */
juce::File findPresetFile(const juce::File& banksFolder, const juce::String& folderName,
                          const juce::String& presetName);

/** Where a preset of these names is to be saved. */
juce::File presetFileFor(const juce::File& banksFolder, const juce::String& folderName,
                         const juce::String& presetName);

/** Reads a whole file. False where it can't be opened or fewer bytes come than it has. */
bool readWholeFile(const juce::File& file, juce::MemoryBlock& bytes);

/** Writes `bytes` beside the file and moves them into place, with any missing folders: whatever goes wrong,
   the file holds its old content or the new one whole. */
bool replaceFile(const juce::File& file, const juce::MemoryBlock& bytes);

} // namespace quorel
