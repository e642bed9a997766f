// SPDX-License-Identifier: GPL-3.0-or-later
// Preset files on disk: `<banks folder>/<folder name>/<preset name>.qrl`, each one a state chunk. Anything
// may lie in these folders: what isn't a regular file under a readable name doesn't count as a preset. Any
// thread but the audio thread.
#pragma once

#include <juce_core/juce_core.h>

#include <filesystem>

namespace quorel
{

constexpr const char* presetFileEnding = ".qrl";
constexpr const char* defaultFolderName = "99 Default Preset";
constexpr const char* defaultPresetName = "Default Preset";

/** No sound comes near this size; a larger file is refused before it is read into memory. */
constexpr juce::int64 largestPresetFile = 256 * 1024 * 1024;

/** The path as the standard library has it, and back. A name that isn't valid Unicode gives an empty text: it
   can't be told to JUCE. */
std::filesystem::path pathOf(const juce::File& file);
juce::String textOf(const std::filesystem::path& path);

/** Names of the folders in the banks folder, by code point. Hidden ones, those that begin with a point, don't
    count: desktops and sync programs keep their own folders under such names. */
juce::StringArray listPresetFolders(const juce::File& banksFolder);

/** Names, without ending, of the presets in a folder, by code point. The ending has to be ".qrl" in small
    letters. */
juce::StringArray listPresets(const juce::File& folder);

/** The file of a preset, by exact names among what the banks folder lists. An empty file if there is none. */
juce::File findPresetFile(const juce::File& banksFolder, const juce::String& folderName,
                          const juce::String& presetName);

/** Where a preset of these names is to be saved: always in a folder of the banks folder. An empty file where
   a name isn't a plain one. */
juce::File presetFileFor(const juce::File& banksFolder, const juce::String& folderName,
                         const juce::String& presetName);

/** Reads a whole file. False where it can't be opened, isn't a regular file, is larger than a preset can be,
   or fewer bytes come than it has. */
bool readWholeFile(const juce::File& file, juce::MemoryBlock& bytes);

/** Writes `bytes` beside the file, down to the disk, and moves them into place, with any missing folders:
   whatever goes wrong, a crash included, the file holds its old content or the new one whole. */
bool replaceFile(const juce::File& file, const juce::MemoryBlock& bytes);

/** Renames a file or folder. A file at the new place is replaced, in one step. */
bool moveFile(const juce::File& from, const juce::File& to);

/** Moves a file or folder to the desktop's trash; where there is none, or it won't take it, deletes it with
   all it holds. True if it is gone. Links go themselves, not what they lead to. */
bool discardFile(const juce::File& file);

} // namespace quorel
