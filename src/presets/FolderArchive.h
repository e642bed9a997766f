// SPDX-License-Identifier: GPL-3.0-or-later
// One folder of presets as one zip file.
#pragma once

#include "presets/PresetDocument.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace quorel
{

/** Writes presets to a zip file, as "<folder>/<preset>.qrl", replaced as a whole. Fails, and writes nothing, where
    there are none, or one of them is no whole preset, or two have the same name. */
juce::Result exportPresets(const juce::Array<juce::File>& presets, const juce::String& folderName,
                           const juce::File& archive);

/** The presets of a zip file, all of them read and checked before anything is done with them. */
class FolderArchive
{
public:
    /** Fails, naming what is wrong, unless the whole archive is good. */
    static juce::Result read(const juce::File& file, FolderArchive& archive);

    /** The folder's name in the archive, or the archive's own. */
    const juce::String& folderName() const noexcept { return folder; }

    int numPresets() const noexcept { return static_cast<int>(arrivals.size()); }

    /** Entries that are no presets, by name. */
    const juce::StringArray& passedOver() const noexcept { return others; }

    /** Names of presets that a folder of `banksFolder` has already. */
    juce::StringArray namesTaken(const juce::File& banksFolder, const juce::String& folderName) const;

    /** Puts the presets into a folder below `banksFolder`, in place of those of the same names: all, or none of them.
        The names inside become those of their new place. */
    juce::Result importTo(const juce::File& banksFolder, const juce::String& folderName);

private:
    /** A preset on its way from an archive into a folder. */
    struct Arrival
    {
        juce::String name;
        PresetDocument document;
    };

    juce::Result readEntries(juce::ZipFile& zip);

    juce::String folder;
    juce::StringArray others;
    std::vector<Arrival> arrivals;
};

} // namespace quorel
