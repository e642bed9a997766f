// SPDX-License-Identifier: GPL-3.0-or-later
// Preset files on disk: `<banks folder>/<folder name>/<preset name>.qrl`, each one a state chunk. Anything
// may lie in these folders: only regular files whose names are valid text count as presets. Any thread but
// the audio thread.
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

constexpr const char* presetFileEnding = ".qrl";
constexpr const char* defaultFolderName = "99 Default Preset";
constexpr const char* defaultPresetName = "Default Preset";

/** A preset by its names. */
struct PresetPlace
{
    juce::String folder;
    juce::String name;

    juce::String text() const { return folder + "/" + name; }

    bool operator==(const PresetPlace& other) const { return folder == other.folder && name == other.name; }
};

/** Names of the folders in the banks folder, by code point. Hidden ones, which begin with a dot, don't count:
    desktops and sync programs keep folders of their own under such names. */
juce::StringArray listPresetFolders(const juce::File& banksFolder);

/** Names, without ending, of the presets in a folder, by code point. The ending has to be ".qrl" in lower
    case. */
juce::StringArray listPresets(const juce::File& folder);

/** All presets that the banks folder lists, as "FOLDER/NAME". */
juce::StringArray listAllPresets(const juce::File& banksFolder);

/** Fails, saying why, for a folder that can't be read: to lists it looks empty. */
juce::Result checkListable(const juce::File& folder);

/** The file of a preset, by exact names among what the banks folder lists. An empty file if there is none. */
juce::File findPresetFile(const juce::File& banksFolder, const juce::String& folderName,
                          const juce::String& presetName);

/** The folder of the banks folder in which a file lies, reached by whatever path; empty for a file elsewhere. */
juce::String folderHolding(const juce::File& banksFolder, const juce::File& file);

/** Where a preset of these names is saved: always in a folder of the banks folder. An empty file if either
    name isn't a plain one. */
juce::File presetFileFor(const juce::File& banksFolder, const juce::String& folderName,
                         const juce::String& presetName);

} // namespace quorel
