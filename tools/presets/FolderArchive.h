// SPDX-License-Identifier: GPL-3.0-or-later
// One folder of presets as one zip file.
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** Writes all presets of a folder to a zip file, as "<folder>/<preset>.qrl", replaced as a whole. Fails, and
    writes nothing, where the folder has none or one of them is no whole preset. `numPresets` is how many went
    in. */
juce::Result exportFolder(const juce::File& folder, const juce::File& archive, int& numPresets);

struct ImportOptions
{
    /** Name for the folder; empty to take that of the archive. */
    juce::String folderName;
    /** Presets of the same name in the folder give way. */
    bool replace = false;
};

struct ImportReport
{
    juce::String folderName;
    int numPresets = 0;
    /** Entries that are no presets, by name. */
    juce::StringArray passedOver;
};

/** Puts the presets of a zip file into a folder below `banksFolder`. Nothing is written before the whole
    archive is known to be good, and what was written is taken back where a file can't be. The names inside
    the presets become those of their new place. */
juce::Result importFolder(const juce::File& archive, const juce::File& banksFolder,
                          const ImportOptions& options, ImportReport& report);

} // namespace quorel
