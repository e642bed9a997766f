// SPDX-License-Identifier: GPL-3.0-or-later
// Changes to preset files. Each file is replaced as a whole or not at all; what a change doesn't name stays
// as it is, byte for byte.
#pragma once

#include "PresetDocument.h"

#include "presets/PresetFiles.h"

#include <juce_core/juce_core.h>

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

/** Changes a preset's categories; each flag is 0 to 65. `words` is what it has afterwards. */
juce::Result changeCategories(const juce::File& file, CategoryChange change, const std::vector<int>& flags,
                              juce::StringArray& words);

} // namespace quorel
