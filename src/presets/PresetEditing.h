// SPDX-License-Identifier: GPL-3.0-or-later
// Changes to preset files. Each file is replaced as a whole or not at all; what a change doesn't name stays
// as it is, byte for byte.
#pragma once

#include "presets/PresetDocument.h"

#include "presets/PresetFiles.h"
#include "presets/PresetNotes.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <vector>

namespace quorel
{

/** Fails for a typed name that can't be used as it is, and suggests one that can. */
juce::Result checkTypedName(const juce::String& name, const char* what);

/** Where a copy or a renamed preset goes: fails for names that can't be, and for a preset that is there
    already unless it may be replaced or is `source` itself. */
juce::Result findTarget(const juce::File& banksFolder, const PresetPlace& to, const juce::File& source,
                        bool replace, juce::File& target);

/** Copies a preset; the names inside become those of its new place. */
juce::Result copyPreset(const juce::File& source, const juce::File& target, const PresetPlace& to);

/** Moves a preset. Its name inside follows, and, if it goes to another folder, that one's; nothing else
    changes. */
juce::Result renamePreset(const juce::File& source, const juce::File& target, const PresetPlace& to);

enum class CategoryChange
{
    /** Only the given ones. */
    set,
    add,
    remove
};

/** Changes presets' categories; each flag is 0 to 65. Those of one folder change all or none. */
juce::Result changeCategories(const juce::File& banksFolder, const std::vector<PresetPlace>& presets,
                              CategoryChange change, const std::vector<int>& flags);

/** Writes who made a preset, and what they say about it, into its file. */
juce::Result changeNotes(const juce::File& file, const PresetNotes& notes);

/** Where presets go that are moved to another folder: fails, before anything is done, where that has a preset of
    the same name, or two of them have. */
juce::Result checkMove(const juce::File& banksFolder, const std::vector<PresetPlace>& presets,
                       const juce::String& folder);

/** Copies preset files from anywhere into a folder, all or none, each under its own name or the first free one
    made of it, such as "Name 2". Fails, with nothing written, where one of them is no whole preset. `imported` takes
    their places. */
juce::Result importPresets(const juce::Array<juce::File>& files, const juce::File& banksFolder,
                           const juce::String& folder, std::vector<PresetPlace>& imported);

/** A name for a new file or folder: `wanted`, or with the first number behind it that makes it free. */
juce::String freeName(const juce::String& wanted,
                      const std::function<bool(const juce::String& name)>& isTaken);

} // namespace quorel
